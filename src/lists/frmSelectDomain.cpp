#include "lists/frmSelectDomain.h"

#include "core/Literals.h"

#include <QHBoxLayout>
#include <QListWidget>
#include <QLocale>
#include <QPushButton>
#include <QVBoxLayout>

namespace varlo {

frmSelectDomain::frmSelectDomain(const QList<DomainCount> &domains, QWidget *parent)
    : QDialog(parent), domains_(domains) {
    setObjectName(u"frmSelectDomain"_s);
    setWindowTitle(u"Select by Domain"_s);
    CreateControls();
    LayOut();
}

void frmSelectDomain::CreateControls() {
    lstDomains = new QListWidget;
    lstDomains->setObjectName(u"lstDomains"_s);
    lstDomains->setAccessibleName(u"Domains of the current list"_s);
    lstDomains->setSelectionMode(QAbstractItemView::ExtendedSelection);
    lstDomains->setUniformItemSizes(true);
    for (const DomainCount &domain : domains_) {
        const QString name = domain.Domain.isEmpty() ? u"(no domain)"_s : domain.Domain;
        lstDomains->addItem(name + u" ("_s + QLocale().toString(domain.Count) + u')');
    }
    cmdOK = new QPushButton(u"OK"_s);
    cmdOK->setObjectName(u"cmdOK"_s);
    cmdOK->setDefault(true);
    cmdOK->setEnabled(false);
    cmdCancel = new QPushButton(u"Cancel"_s);
    cmdCancel->setObjectName(u"cmdCancel"_s);
    cmdCancel->setAutoDefault(false);
    connect(lstDomains, &QListWidget::itemSelectionChanged, this,
            [this] { cmdOK->setEnabled(lstDomains->selectionModel()->hasSelection()); });
    connect(lstDomains, &QListWidget::itemActivated, this, &frmSelectDomain::accept);
    connect(cmdOK, &QPushButton::clicked, this, &frmSelectDomain::accept);
    connect(cmdCancel, &QPushButton::clicked, this, &frmSelectDomain::reject);
}

void frmSelectDomain::LayOut() {
    auto *buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(cmdOK);
    buttons->addWidget(cmdCancel);
    auto *all = new QVBoxLayout(this);
    all->addWidget(lstDomains, 1);
    all->addLayout(buttons);
    resize(320, 360);
}

QSet<QString> frmSelectDomain::SelectedDomains() const {
    QSet<QString> domains;
    for (const QModelIndex &index : lstDomains->selectionModel()->selectedIndexes())
        domains.insert(domains_.at(index.row()).Domain);
    return domains;
}

} // namespace varlo

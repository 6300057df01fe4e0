#include "compose/frmCompRecip.h"

#include "compose/ElidedRows.h"
#include "core/Literals.h"
#include "core/MenuEntries.h"
#include "core/PlainToolTip.h"

#include <QHBoxLayout>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QShortcut>
#include <QVBoxLayout>

namespace varlo {

frmCompRecip::frmCompRecip(const QStringList &listNames, QWidget *parent)
    : QDialog(parent), listNames_(listNames) {
    CreateControls();
    LayOut();
    ConnectControls();
}

QStringList frmCompRecip::SelectedLists() const {
    QStringList names;
    for (int i = 0; i < lstRecipients->count(); ++i)
        if (lstRecipients->item(i)->isSelected())
            names << lstRecipients->item(i)->text();
    return names;
}

void frmCompRecip::CreateControls() {
    setObjectName(u"frmCompRecip"_s);
    setWindowTitle(u"Select Recipient Lists"_s);
    lstRecipients = new QListWidget;
    lstRecipients->setObjectName(u"lstRecipients"_s);
    lstRecipients->setAccessibleName(u"Mailing lists"_s);
    // A click picks a list or drops it again.
    lstRecipients->setSelectionMode(QAbstractItemView::MultiSelection);
    lstRecipients->setUniformItemSizes(true);
    new ElidedRows(lstRecipients, Qt::ElideRight);
    for (const QString &name : listNames_) {
        auto *row = new QListWidgetItem(name, lstRecipients);
        row->setToolTip(PlainToolTip(name));
    }
    lstRecipients->setContextMenuPolicy(Qt::CustomContextMenu);
    mnuListFunctions = new QMenu(this);
    mnuListFunctions->setObjectName(u"mnuListFunctions"_s);
    mnuSelectNone = AddEntry(mnuListFunctions, u"mnuSelectNone"_s, u"Select &no lists"_s);
    mnuSelectAll = AddEntry(mnuListFunctions, u"mnuSelectAll"_s, u"Select &all lists"_s);
    mnuSelectInvert = AddEntry(mnuListFunctions, u"mnuSelectInvert"_s, u"&Invert list selection"_s);
    cmdListFunctions = new QPushButton(u"&Select"_s);
    cmdListFunctions->setObjectName(u"cmdListFunctions"_s);
    cmdListFunctions->setAutoDefault(false);
    cmdListFunctions->setMenu(mnuListFunctions);
    cmdOK = new QPushButton(u"OK"_s);
    cmdOK->setObjectName(u"cmdOK"_s);
    cmdOK->setDefault(true);
}

void frmCompRecip::LayOut() {
    auto *buttons = new QHBoxLayout;
    buttons->addWidget(cmdListFunctions);
    buttons->addStretch(1);
    buttons->addWidget(cmdOK);
    auto *all = new QVBoxLayout(this);
    all->addWidget(lstRecipients, 1);
    all->addLayout(buttons);
    resize(320, 300);
}

void frmCompRecip::ConnectControls() {
    connect(mnuSelectNone, &QAction::triggered, this, &frmCompRecip::mnuSelectNone_Click);
    connect(mnuSelectAll, &QAction::triggered, this, &frmCompRecip::mnuSelectAll_Click);
    connect(mnuSelectInvert, &QAction::triggered, this, &frmCompRecip::mnuSelectInvert_Click);
    connect(cmdOK, &QPushButton::clicked, this, &frmCompRecip::accept);
    const auto popUp = [this](const QPoint &at) {
        mnuListFunctions->popup(lstRecipients->viewport()->mapToGlobal(at));
    };
    connect(lstRecipients, &QListWidget::customContextMenuRequested, this, popUp);
    auto *menuKey = new QShortcut(QKeySequence(Qt::SHIFT | Qt::Key_F10), lstRecipients);
    menuKey->setContext(Qt::WidgetShortcut);
    connect(menuKey, &QShortcut::activated, this, [this, popUp] {
        popUp(lstRecipients->visualItemRect(lstRecipients->currentItem()).bottomLeft());
    });
}

void frmCompRecip::mnuSelectNone_Click() {
    lstRecipients->clearSelection();
}

void frmCompRecip::mnuSelectAll_Click() {
    lstRecipients->selectAll();
}

void frmCompRecip::mnuSelectInvert_Click() {
    for (int i = 0; i < lstRecipients->count(); ++i)
        lstRecipients->item(i)->setSelected(!lstRecipients->item(i)->isSelected());
}

} // namespace varlo

#include "compose/frmCompRecip.h"

#include <QHBoxLayout>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QVBoxLayout>

namespace varlo {

namespace {

QAction *NewEntry(QMenu *menu, const QString &name, const QString &caption) {
    QAction *entry = menu->addAction(caption);
    entry->setObjectName(name);
    return entry;
}

} // namespace

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
    setObjectName(QStringLiteral("frmCompRecip"));
    setWindowTitle(QStringLiteral("Select Recipient Lists"));
    lstRecipients = new QListWidget;
    lstRecipients->setObjectName(QStringLiteral("lstRecipients"));
    lstRecipients->setAccessibleName(QStringLiteral("Mailing lists"));
    lstRecipients->setSelectionMode(
        QAbstractItemView::MultiSelection); // a click picks a list or drops it again
    lstRecipients->setUniformItemSizes(true);
    lstRecipients->addItems(listNames_);
    mnuListFunctions = new QMenu(this);
    mnuListFunctions->setObjectName(QStringLiteral("mnuListFunctions"));
    mnuSelectNone =
        NewEntry(mnuListFunctions, QStringLiteral("mnuSelectNone"), QStringLiteral("Select &no lists"));
    mnuSelectAll =
        NewEntry(mnuListFunctions, QStringLiteral("mnuSelectAll"), QStringLiteral("Select &all lists"));
    mnuSelectInvert = NewEntry(mnuListFunctions, QStringLiteral("mnuSelectInvert"),
                               QStringLiteral("&Invert list selection"));
    cmdListFunctions = new QPushButton(QStringLiteral("&Select"));
    cmdListFunctions->setObjectName(QStringLiteral("cmdListFunctions"));
    cmdListFunctions->setAutoDefault(false);
    cmdListFunctions->setMenu(mnuListFunctions);
    cmdOK = new QPushButton(QStringLiteral("OK"));
    cmdOK->setObjectName(QStringLiteral("cmdOK"));
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

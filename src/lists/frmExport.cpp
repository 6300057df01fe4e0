#include "lists/frmExport.h"

#include "core/Buttons.h"
#include "core/Literals.h"
#include "core/Reporting.h"
#include "lists/ListStore.h"

#include <QBoxLayout>
#include <QClipboard>
#include <QComboBox>
#include <QGridLayout>
#include <QGuiApplication>
#include <QLabel>
#include <QPushButton>

namespace varlo {

namespace {

enum What { kOpenList, kSelection, kRequests };

} // namespace

frmExport::frmExport(Session &session, const ListStore &lists, QWidget *parent)
    : QDialog(parent), session_(session), lists_(lists) {
    CreateControls();
    LayOutControls();
    ConnectControls();
}

void frmExport::CreateControls() {
    setObjectName(u"frmExport"_s);
    setWindowTitle(u"Export"_s);
    lblExportWhat = new QLabel(u"&What:"_s, this);
    cmbExportWhat = new QComboBox(this);
    cmbExportWhat->setObjectName(u"cmbExportWhat"_s);
    lblExportWhat->setBuddy(cmbExportWhat);
    AddChoices();
    lblExportForm = new QLabel(u"&Form:"_s, this);
    cmbExportForm = new QComboBox(this);
    cmbExportForm->setObjectName(u"cmbExportForm"_s);
    cmbExportForm->addItems({u"Text, one a line"_s, u"Table (CSV)"_s, u"Address cards (vCard)"_s});
    lblExportForm->setBuddy(cmbExportForm);
    cmdExportSave = NewButton(this, "cmdExportSave", u"&Save As..."_s, u"Write a file"_s);
    cmdExportSave->setDefault(true);
    cmdExportCopy = NewButton(this, "cmdExportCopy", u"&Copy"_s, u"Copy to the clipboard"_s);
    cmdCancel = NewButton(this, "cmdCancel", u"Cancel"_s);
}

// The selection first: who has selected means that.
void frmExport::AddChoices() {
    const auto add = [this](What what, const QString &words, int count) {
        if (count > 0)
            cmbExportWhat->addItem(words + u" (%1)"_s.arg(count), what);
    };
    add(kSelection, u"What is selected of the current list"_s, lists_.SelectedCount(lists_.VisibleBox()));
    add(kOpenList, u"The current list"_s, lists_.lstEmailList(kChronological).Count());
    add(kRequests, u"The Pending list"_s, lists_.Pending.Count());
}

void frmExport::LayOutControls() {
    auto *choices = new QGridLayout;
    choices->addWidget(lblExportWhat, 0, 0);
    choices->addWidget(cmbExportWhat, 0, 1);
    choices->addWidget(lblExportForm, 1, 0);
    choices->addWidget(cmbExportForm, 1, 1);
    choices->setColumnStretch(1, 1);
    auto *buttons = new QHBoxLayout;
    buttons->addStretch(1);
    for (QPushButton *button : {cmdExportSave, cmdExportCopy, cmdCancel})
        buttons->addWidget(button);
    auto *column = new QVBoxLayout(this);
    column->addLayout(choices);
    column->addStretch(1);
    column->addLayout(buttons);
}

void frmExport::ConnectControls() {
    connect(cmdExportSave, &QPushButton::clicked, this, &frmExport::cmdExportSave_Click);
    connect(cmdExportCopy, &QPushButton::clicked, this, &frmExport::cmdExportCopy_Click);
    connect(cmdCancel, &QPushButton::clicked, this, &frmExport::reject);
}

QList<ExportEntry> frmExport::Entries() const {
    switch (cmbExportWhat->currentData().toInt()) {
    case kSelection:
        return EntriesOf(lists_.SelectedEntries(lists_.VisibleBox()));
    case kRequests:
        return EntriesOf(lists_.Pending.Requests());
    default:
        return EntriesOf(lists_.lstEmailList(kChronological).Entries());
    }
}

ExportForm frmExport::Form() const {
    return static_cast<ExportForm>(cmbExportForm->currentIndex());
}

// After a failure, and a file chooser that was left, the window stays for another try.
void frmExport::cmdExportSave_Click() {
    if (ExportToFile(session_, Entries(), Form()))
        accept();
}

void frmExport::cmdExportCopy_Click() {
    const QList<ExportEntry> entries = Entries();
    QGuiApplication::clipboard()->setText(ExportText(entries, Form()));
    Trapped(session_, u"Export.cmdExportCopy"_s,
            [&] { StatusMessage(session_, u"Copied "_s + AddressesText(entries.size()).toLower()); });
    accept();
}

} // namespace varlo

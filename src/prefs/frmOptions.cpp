#include "prefs/frmOptions.h"

#include "core/Literals.h"
#include "core/Reporting.h"
#include "prefs/Maintenance.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStackedWidget>
#include <QTextDocument>

namespace varlo {

struct frmOptions::SwitchField {
    bool Options::*Value;
    QCheckBox *frmOptions::*Control;
};

struct frmOptions::LineField {
    QString Options::*Value;
    QLineEdit *frmOptions::*Control;
};

struct frmOptions::TextField {
    QString Options::*Value;
    QPlainTextEdit *frmOptions::*Control;
};

const std::array<frmOptions::SwitchField, 5> frmOptions::kSwitchFields{{
    {&Options::Notify, &frmOptions::chkNotify},
    {&Options::LogStatus, &frmOptions::chkLogStatus},
    {&Options::LogEmails, &frmOptions::chkLogEmails},
    {&Options::POPDeleteAll, &frmOptions::chkPOPDeleteAll},
    {&Options::SignatureOn, &frmOptions::chkSignatureOn},
}};

const std::array<frmOptions::LineField, 11> frmOptions::kLineFields{{
    {&Options::SMTPServer, &frmOptions::txtSMTPServer},
    {&Options::SMTPPort, &frmOptions::txtSMTPPort},
    {&Options::SMTPFrom, &frmOptions::txtSMTPFrom},
    {&Options::SMTPEmail, &frmOptions::txtSMTPEmail},
    {&Options::SMTPWrap, &frmOptions::txtSMTPWrap},
    {&Options::POPServer, &frmOptions::txtPOPServer},
    {&Options::POPPort, &frmOptions::txtPOPPort},
    {&Options::POPUsername, &frmOptions::txtPOPUsername},
    {&Options::POPPassword, &frmOptions::txtPOPPassword},
    {&Options::SubSubject, &frmOptions::txtNotifySubSubject},
    {&Options::UnsubSubject, &frmOptions::txtNotifyUnsubSubject},
}};

const std::array<frmOptions::TextField, 3> frmOptions::kTextFields{{
    {&Options::SubBody, &frmOptions::txtNotifySubBody},
    {&Options::UnsubBody, &frmOptions::txtNotifyUnsubBody},
    {&Options::Signature, &frmOptions::txtSignature},
}};

namespace {

// The box's text with CR LF line ends. Its plain text would turn no-break spaces into blanks; the raw text
// keeps them.
QString TypedText(const QPlainTextEdit *box) {
    QString text = box->document()->toRawText();
    text.replace(QChar::ParagraphSeparator, u'\n').replace(QChar::LineSeparator, u'\n');
    return text.replace(u'\n', u"\r\n"_s);
}

bool IsNumber(const QLineEdit *box) {
    try {
        TypedNumber(box->text());
    } catch (const RuntimeError &) { // the answer, not an error
        return false;
    }
    return true;
}

} // namespace

frmOptions::frmOptions(Session &session, QWidget *parent) : QDialog(parent), session_(session) {
    CreateControls();
    LayOut();
    Connect();
    Fill(LoadOptions(session));
    lstOptions->setCurrentRow(0);
}

void frmOptions::Connect() {
    connect(lstOptions, &QListWidget::currentRowChanged, this, &frmOptions::lstOptions_Click);
    connect(cmdWrapDefault, &QPushButton::clicked, this, &frmOptions::cmdWrapDefault_Click);
    connect(cmdLogGo, &QPushButton::clicked, this, &frmOptions::cmdLogGo_Click);
    connect(cmdOK, &QPushButton::clicked, this, &frmOptions::cmdOK_Click);
    connect(cmdCancel, &QPushButton::clicked, this, &frmOptions::reject);
}

void frmOptions::Fill(const Options &options) {
    for (const SwitchField &field : kSwitchFields)
        (this->*field.Control)->setChecked(options.*field.Value);
    for (const LineField &field : kLineFields)
        (this->*field.Control)->setText(options.*field.Value);
    for (const TextField &field : kTextFields)
        (this->*field.Control)->setPlainText(options.*field.Value);
}

Options frmOptions::Typed() const {
    Options options;
    for (const SwitchField &field : kSwitchFields)
        options.*field.Value = (this->*field.Control)->isChecked();
    for (const LineField &field : kLineFields)
        options.*field.Value = (this->*field.Control)->text();
    for (const TextField &field : kTextFields)
        options.*field.Value = TypedText(this->*field.Control);
    return options;
}

// The report of the failed conversion does not say which field it was; the caret does.
void frmOptions::ShowFieldThatIsNoNumber() {
    QLineEdit *box = IsNumber(txtSMTPPort) ? txtSMTPWrap : txtSMTPPort;
    lstOptions->setCurrentRow(1);
    box->setFocus();
    box->selectAll();
}

void frmOptions::lstOptions_Click() {
    if (lstOptions->currentRow() >= 0)
        pages_->setCurrentIndex(lstOptions->currentRow());
}

void frmOptions::cmdWrapDefault_Click() {
    txtSMTPWrap->setText(u"72"_s);
}

void frmOptions::cmdLogGo_Click() {
    RunMaintenance(session_, cmbMaintenance->currentText());
}

void frmOptions::cmdOK_Click() {
    bool saved = false;
    LastResort(session_, [&] {
        SaveOptions(session_, Typed());
        saved = true;
    });
    if (saved)
        accept();
    else
        ShowFieldThatIsNoNumber();
}

} // namespace varlo

// The controls of the Preferences window, page by page.

#include "core/Literals.h"
#include "prefs/Maintenance.h"
#include "prefs/WrapValidator.h"
#include "prefs/frmOptions.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStackedWidget>

namespace varlo {

namespace {

template<typename Control> Control *Named(const char *name, const QString &tip = {}) {
    auto *control = new Control;
    control->setObjectName(QString::fromLatin1(name));
    control->setToolTip(tip);
    return control;
}

// A check box or push button.
template<typename Button> Button *NewButton(const char *name, const QString &caption, const QString &tip) {
    auto *button = Named<Button>(name, tip);
    button->setText(caption);
    return button;
}

QPlainTextEdit *NewTextBox(const char *name) {
    auto *box = Named<QPlainTextEdit>(name);
    QFont font(QStringList{u"Courier New"_s, u"monospace"_s}, box->font().pointSize());
    font.setStyleHint(QFont::Monospace);
    font.setFixedPitch(true);
    box->setFont(font);
    box->setTabChangesFocus(true);
    return box;
}

// A port or a column: no wider than its digits, so that the eye sees what belongs in it.
QLineEdit *NewNumberBox(const char *name, const QString &tip = {}) {
    auto *box = Named<QLineEdit>(name, tip);
    box->setFixedWidth(box->fontMetrics().horizontalAdvance(u"0000000"_s) + 16);
    return box;
}

} // namespace

void frmOptions::CreateControls() {
    setObjectName(u"frmOptions"_s);
    setWindowTitle(u"Preferences"_s);
    lstOptions = Named<QListWidget>("lstOptions");
    lstOptions->setAccessibleName(u"Pages"_s);
    lstOptions->addItems(
        {u"General"_s, u"E-mail Sending"_s, u"E-mail Receiving"_s, u"E-mail Notification"_s, u"Compose"_s});
    pages_ = new QStackedWidget;
    CreateGeneral();
    CreateSending();
    CreateReceiving();
    CreateNotification();
    CreateCompose();
    lblTitle = Named<QLabel>("lblTitle");
    lblTitle->setText(kApplicationTitle);
    lblTitle->setFont(QFont(QStringList{u"Verdana"_s, u"sans-serif"_s}));
    cmdOK = NewButton<QPushButton>("cmdOK", u"OK"_s, u"Save and exit options"_s);
    cmdOK->setDefault(true);
    cmdCancel = NewButton<QPushButton>("cmdCancel", u"Cancel"_s, u"Exit options without saving"_s);
}

void frmOptions::CreateGeneral() {
    chkNotify = NewButton<QCheckBox>("chkNotify", u"Enable e-mail &notification"_s,
                                     u"Check this box to notify subscribers/unsubscribers via e-mail"_s);
    chkLogStatus = NewButton<QCheckBox>("chkLogStatus", u"&Log status messages"_s,
                                        u"Log Varlo Pro events to text files"_s);
    chkLogEmails = NewButton<QCheckBox>("chkLogEmails", u"&Save sent e-mails"_s,
                                        u"Save all sent messages to text files"_s);
    cmbMaintenance = Named<QComboBox>("cmbMaintenance");
    cmbMaintenance->addItems(MaintenanceItems());
    cmdLogGo = NewButton<QPushButton>("cmdLogGo", u"&Go"_s, u"Activate the selected maintenance function"_s);
}

void frmOptions::CreateSending() {
    // Both account pages say "SMTP" over their ports; the words are wanted so.
    txtSMTPServer = Named<QLineEdit>("txtSMTPServer", u"Your SMTP server"_s);
    txtSMTPPort = NewNumberBox("txtSMTPPort", u"Your SMTP server"_s);
    txtSMTPFrom = Named<QLineEdit>("txtSMTPFrom", u"Your name as it will appear on sent messages"_s);
    txtSMTPEmail =
        Named<QLineEdit>("txtSMTPEmail", u"Your e-mail address as it will appear on sent messages"_s);
    txtSMTPWrap = NewNumberBox("txtSMTPWrap");
    txtSMTPWrap->setValidator(new WrapValidator(txtSMTPWrap));
    cmdWrapDefault = NewButton<QPushButton>("cmdWrapDefault", u"&Default"_s, u"Set default wrap column"_s);
}

void frmOptions::CreateReceiving() {
    txtPOPServer = Named<QLineEdit>("txtPOPServer", u"Your POP3 server"_s);
    txtPOPPort = NewNumberBox("txtPOPPort", u"Your SMTP server"_s);
    txtPOPUsername = Named<QLineEdit>("txtPOPUsername", u"Your POP3 account username"_s);
    txtPOPPassword = Named<QLineEdit>("txtPOPPassword", u"Your POP3 account password"_s);
    txtPOPPassword->setEchoMode(QLineEdit::Password);
    txtPOPPassword->setStyleSheet(u"lineedit-password-character: 42"_s); // "*"
    chkPOPDeleteAll = NewButton<QCheckBox>(
        "chkPOPDeleteAll", u"&Delete unrelated messages during POP3 check"_s,
        u"Check this box to delete all non-mailing list related messages on the server"_s);
}

void frmOptions::CreateNotification() {
    txtNotifySubSubject = Named<QLineEdit>("txtNotifySubSubject");
    txtNotifySubBody = NewTextBox("txtNotifySubBody");
    txtNotifyUnsubSubject = Named<QLineEdit>("txtNotifyUnsubSubject");
    txtNotifyUnsubBody = NewTextBox("txtNotifyUnsubBody");
}

void frmOptions::CreateCompose() {
    chkSignatureOn = NewButton<QCheckBox>("chkSignatureOn", u"&Add signature when composing messages"_s,
                                          u"Check this box to automatically add your signature to e-mails"_s);
    txtSignature = NewTextBox("txtSignature");
}

} // namespace varlo

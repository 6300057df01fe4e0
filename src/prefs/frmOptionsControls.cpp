// The controls of the Preferences window, page by page.

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
    QFont font(QStringList{QStringLiteral("Courier New"), QStringLiteral("monospace")},
               box->font().pointSize());
    font.setStyleHint(QFont::Monospace);
    font.setFixedPitch(true);
    box->setFont(font);
    box->setTabChangesFocus(true);
    return box;
}

// A port or a column: no wider than its digits, so that the eye sees what belongs in it.
QLineEdit *NewNumberBox(const char *name, const QString &tip = {}) {
    auto *box = Named<QLineEdit>(name, tip);
    box->setFixedWidth(box->fontMetrics().horizontalAdvance(QStringLiteral("0000000")) + 16);
    return box;
}

} // namespace

void frmOptions::CreateControls() {
    setObjectName(QStringLiteral("frmOptions"));
    setWindowTitle(QStringLiteral("Preferences"));
    lstOptions = Named<QListWidget>("lstOptions");
    lstOptions->setAccessibleName(QStringLiteral("Pages"));
    lstOptions->addItems({QStringLiteral("General"), QStringLiteral("E-mail Sending"),
                          QStringLiteral("E-mail Receiving"), QStringLiteral("E-mail Notification"),
                          QStringLiteral("Compose")});
    pages_ = new QStackedWidget;
    CreateGeneral();
    CreateSending();
    CreateReceiving();
    CreateNotification();
    CreateCompose();
    lblTitle = Named<QLabel>("lblTitle");
    lblTitle->setText(kApplicationTitle);
    lblTitle->setFont(QFont(QStringList{QStringLiteral("Verdana"), QStringLiteral("sans-serif")}));
    cmdOK = NewButton<QPushButton>("cmdOK", QStringLiteral("OK"), QStringLiteral("Save and exit options"));
    cmdOK->setDefault(true);
    cmdCancel = NewButton<QPushButton>("cmdCancel", QStringLiteral("Cancel"),
                                       QStringLiteral("Exit options without saving"));
}

void frmOptions::CreateGeneral() {
    chkNotify =
        NewButton<QCheckBox>("chkNotify", QStringLiteral("Enable e-mail &notification"),
                             QStringLiteral("Check this box to notify subscribers/unsubscribers via e-mail"));
    chkLogStatus = NewButton<QCheckBox>("chkLogStatus", QStringLiteral("&Log status messages"),
                                        QStringLiteral("Log Varlo Pro events to text files"));
    chkLogEmails = NewButton<QCheckBox>("chkLogEmails", QStringLiteral("&Save sent e-mails"),
                                        QStringLiteral("Save all sent messages to text files"));
    cmbMaintenance = Named<QComboBox>("cmbMaintenance");
    cmbMaintenance->addItems(MaintenanceItems());
    cmdLogGo = NewButton<QPushButton>("cmdLogGo", QStringLiteral("&Go"),
                                      QStringLiteral("Activate the selected maintenance function"));
}

void frmOptions::CreateSending() {
    // Both account pages say "SMTP" over their ports; the words are wanted so.
    txtSMTPServer = Named<QLineEdit>("txtSMTPServer", QStringLiteral("Your SMTP server"));
    txtSMTPPort = NewNumberBox("txtSMTPPort", QStringLiteral("Your SMTP server"));
    txtSMTPFrom =
        Named<QLineEdit>("txtSMTPFrom", QStringLiteral("Your name as it will appear on sent messages"));
    txtSMTPEmail = Named<QLineEdit>("txtSMTPEmail",
                                    QStringLiteral("Your e-mail address as it will appear on sent messages"));
    txtSMTPWrap = NewNumberBox("txtSMTPWrap");
    txtSMTPWrap->setValidator(new WrapValidator(txtSMTPWrap));
    cmdWrapDefault = NewButton<QPushButton>("cmdWrapDefault", QStringLiteral("&Default"),
                                            QStringLiteral("Set default wrap column"));
}

void frmOptions::CreateReceiving() {
    txtPOPServer = Named<QLineEdit>("txtPOPServer", QStringLiteral("Your POP3 server"));
    txtPOPPort = NewNumberBox("txtPOPPort", QStringLiteral("Your SMTP server"));
    txtPOPUsername = Named<QLineEdit>("txtPOPUsername", QStringLiteral("Your POP3 account username"));
    txtPOPPassword = Named<QLineEdit>("txtPOPPassword", QStringLiteral("Your POP3 account password"));
    txtPOPPassword->setEchoMode(QLineEdit::Password);
    txtPOPPassword->setStyleSheet(QStringLiteral("lineedit-password-character: 42")); // "*"
    chkPOPDeleteAll = NewButton<QCheckBox>(
        "chkPOPDeleteAll", QStringLiteral("&Delete unrelated messages during POP3 check"),
        QStringLiteral("Check this box to delete all non-mailing list related messages on the server"));
}

void frmOptions::CreateNotification() {
    txtNotifySubSubject = Named<QLineEdit>("txtNotifySubSubject");
    txtNotifySubBody = NewTextBox("txtNotifySubBody");
    txtNotifyUnsubSubject = Named<QLineEdit>("txtNotifyUnsubSubject");
    txtNotifyUnsubBody = NewTextBox("txtNotifyUnsubBody");
}

void frmOptions::CreateCompose() {
    chkSignatureOn =
        NewButton<QCheckBox>("chkSignatureOn", QStringLiteral("&Add signature when composing messages"),
                             QStringLiteral("Check this box to automatically add your signature to e-mails"));
    txtSignature = NewTextBox("txtSignature");
}

} // namespace varlo

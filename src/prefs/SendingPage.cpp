#include "prefs/SendingPage.h"

#include "core/Buttons.h"
#include "core/Literals.h"
#include "prefs/PageControls.h"
#include "prefs/WrapValidator.h"

#include <QPushButton>

namespace varlo {

SendingPage::SendingPage()
    : PreferencesPage(Page::Sending, u"E-mail Sending"_s, u"Configure your SMTP e-mail account"_s) {
    AddSecurity(AddAccount());
    AddFormatting();
    AddStretch();
}

QLineEdit *SendingPage::AddAccount() {
    // Both account pages say "SMTP" over their ports; the words are wanted so.
    auto *txtSMTPServer = NewLine("txtSMTPServer", u"Your SMTP server"_s);
    auto *txtSMTPPort = NewNumberBox("txtSMTPPort", u"Your SMTP server"_s);
    auto *txtSMTPFrom = NewLine("txtSMTPFrom", u"Your name as it will appear on sent messages"_s);
    auto *txtSMTPEmail = NewLine("txtSMTPEmail", u"Your e-mail address as it will appear on sent messages"_s);
    QFormLayout *rows = NewRows(AddGroup(Group::SendingAccount, u"Account"_s));
    AddServer(rows, u"SMTP &server:"_s, txtSMTPServer, txtSMTPPort);
    rows->addRow(NewLabel(u"Your &name:"_s, txtSMTPFrom), txtSMTPFrom);
    rows->addRow(NewLabel(u"Your &e-mail:"_s, txtSMTPEmail), txtSMTPEmail);
    Tie(txtSMTPServer, &Preferences::SMTPServer);
    Tie(txtSMTPPort, &Preferences::SMTPPort);
    Tie(txtSMTPFrom, &Preferences::SMTPFrom);
    Tie(txtSMTPEmail, &Preferences::SMTPEmail);
    return txtSMTPPort;
}

void SendingPage::AddSecurity(QLineEdit *port) {
    auto *cmbSMTPSecurity = NewChoice("cmbSMTPSecurity", {u"Automatic"_s, u"STARTTLS"_s, u"TLS"_s},
                                      u"How the connection to your SMTP server is encrypted"_s);
    auto *txtSMTPUsername =
        NewLine("txtSMTPUsername", u"Your SMTP account username, empty when the server asks for none"_s);
    auto *txtSMTPPassword = NewPasswordBox("txtSMTPPassword", u"Your SMTP account password or token"_s);
    auto *cmbSMTPSignIn =
        NewChoice("cmbSMTPSignIn", {u"Password"_s, u"Token"_s}, u"What stands in the password box"_s);
    SuggestPorts(cmbSMTPSecurity, port, {u"25"_s, u"587"_s, u"465"_s});
    auto *choices = new QHBoxLayout;
    choices->addWidget(cmbSMTPSecurity);
    choices->addWidget(NewLabel(u"Si&gn in with:"_s, cmbSMTPSignIn));
    choices->addWidget(cmbSMTPSignIn);
    choices->addStretch();
    auto *last = new QHBoxLayout;
    last->addWidget(txtSMTPPassword, 1);
    last->addWidget(NewTestButton("cmdSMTPTest", u"Connect and sign in without sending anything"_s));
    QFormLayout *rows = NewRows(AddGroup(Group::SendingSecurity, u"Security"_s));
    rows->addRow(NewLabel(u"En&cryption:"_s, cmbSMTPSecurity), choices);
    rows->addRow(NewLabel(u"&Username:"_s, txtSMTPUsername), txtSMTPUsername);
    rows->addRow(NewLabel(u"P&assword:"_s, txtSMTPPassword), last);
    Tie(cmbSMTPSecurity, &Preferences::SMTPSecurity);
    Tie(txtSMTPUsername, &Preferences::SMTPUsername);
    Tie(txtSMTPPassword, &Preferences::SMTPPassword);
    Tie(cmbSMTPSignIn, &Preferences::SMTPSignIn);
}

void SendingPage::AddFormatting() {
    auto *txtSMTPWrap = NewNumberBox("txtSMTPWrap");
    txtSMTPWrap->setValidator(new WrapValidator(txtSMTPWrap));
    auto *cmdWrapDefault = NewButton(nullptr, "cmdWrapDefault", u"&Default"_s, u"Set default wrap column"_s);
    connect(cmdWrapDefault, &QPushButton::clicked, txtSMTPWrap,
            [txtSMTPWrap] { txtSMTPWrap->setText(u"72"_s); });
    auto *formatting = NewLayout<QHBoxLayout>(AddGroup(Group::Formatting, u"Formatting"_s));
    formatting->addWidget(NewLabel(u"&Wrap messages to"_s, txtSMTPWrap));
    formatting->addWidget(txtSMTPWrap);
    formatting->addWidget(NewLabel(u"characters per line"_s));
    formatting->addWidget(cmdWrapDefault);
    formatting->addStretch();
    Tie(txtSMTPWrap, &Preferences::SMTPWrap);
}

} // namespace varlo

#include "prefs/ReceivingPage.h"

#include "core/Literals.h"
#include "prefs/PageControls.h"

namespace varlo {

ReceivingPage::ReceivingPage()
    : PreferencesPage(Page::Receiving, u"E-mail Receiving"_s, u"Configure your POP3 e-mail account"_s) {
    AddAccount();
    auto *chkPOPDeleteAll =
        NewCheckBox("chkPOPDeleteAll", u"&Delete unrelated messages during POP3 check"_s,
                    u"Check this box to delete all non-mailing list related messages on the server"_s);
    auto *extras = NewLayout<QVBoxLayout>(AddGroup(Group::ReceivingOptions, u"Options"_s));
    extras->addWidget(chkPOPDeleteAll);
    AddStretch();
    Tie(chkPOPDeleteAll, &Preferences::POPDeleteAll);
}

void ReceivingPage::AddAccount() {
    auto *txtPOPServer = NewLine("txtPOPServer", u"Your POP3 server"_s);
    auto *txtPOPPort = NewNumberBox("txtPOPPort", u"Your SMTP server"_s);
    auto *txtPOPUsername = NewLine("txtPOPUsername", u"Your POP3 account username"_s);
    auto *txtPOPPassword = NewLine("txtPOPPassword", u"Your POP3 account password"_s);
    txtPOPPassword->setEchoMode(QLineEdit::Password);
    txtPOPPassword->setStyleSheet(u"lineedit-password-character: 42"_s); // "*"
    QFormLayout *rows = NewRows(AddGroup(Group::ReceivingAccount, u"Account"_s));
    AddServer(rows, u"POP3 &server:"_s, txtPOPServer, txtPOPPort);
    rows->addRow(NewLabel(u"&Username:"_s, txtPOPUsername), txtPOPUsername);
    rows->addRow(NewLabel(u"Pass&word:"_s, txtPOPPassword), txtPOPPassword);
    Tie(txtPOPServer, &Preferences::POPServer);
    Tie(txtPOPPort, &Preferences::POPPort);
    Tie(txtPOPUsername, &Preferences::POPUsername);
    Tie(txtPOPPassword, &Preferences::POPPassword);
}

} // namespace varlo

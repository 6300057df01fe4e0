#include "prefs/ReceivingPage.h"

#include "core/Literals.h"
#include "prefs/PageControls.h"

#include <QPushButton>

namespace varlo {

ReceivingPage::ReceivingPage()
    : PreferencesPage(Page::Receiving, u"E-mail Receiving"_s, u"Configure your POP3 e-mail account"_s) {
    AddSecurity(AddAccount());
    auto *chkPOPDeleteAll =
        NewCheckBox("chkPOPDeleteAll", u"&Delete unrelated messages during POP3 check"_s,
                    u"Check this box to delete all non-mailing list related messages on the server"_s);
    auto *extras = NewLayout<QVBoxLayout>(AddGroup(Group::ReceivingOptions, u"Options"_s));
    extras->addWidget(chkPOPDeleteAll);
    AddStretch();
    Tie(chkPOPDeleteAll, &Preferences::POPDeleteAll);
}

QLineEdit *ReceivingPage::AddAccount() {
    auto *txtPOPServer = NewLine("txtPOPServer", u"Your POP3 server"_s);
    auto *txtPOPPort = NewNumberBox("txtPOPPort", u"Your SMTP server"_s);
    auto *txtPOPUsername = NewLine("txtPOPUsername", u"Your POP3 account username"_s);
    auto *txtPOPPassword = NewPasswordBox("txtPOPPassword", u"Your POP3 account password"_s);
    QFormLayout *rows = NewRows(AddGroup(Group::ReceivingAccount, u"Account"_s));
    AddServer(rows, u"POP3 &server:"_s, txtPOPServer, txtPOPPort);
    rows->addRow(NewLabel(u"&Username:"_s, txtPOPUsername), txtPOPUsername);
    rows->addRow(NewLabel(u"Pass&word:"_s, txtPOPPassword), txtPOPPassword);
    Tie(txtPOPServer, &Preferences::POPServer);
    Tie(txtPOPPort, &Preferences::POPPort);
    Tie(txtPOPUsername, &Preferences::POPUsername);
    Tie(txtPOPPassword, &Preferences::POPPassword);
    return txtPOPPort;
}

void ReceivingPage::AddSecurity(QLineEdit *port) {
    auto *cmbPOPSecurity = NewChoice("cmbPOPSecurity", {u"None"_s, u"STLS"_s, u"TLS"_s},
                                     u"How the connection to your POP3 server is encrypted"_s);
    SuggestPorts(cmbPOPSecurity, port, {u"110"_s, u"110"_s, u"995"_s});
    QHBoxLayout *row = NewLayout<QHBoxLayout>(AddGroup(Group::ReceivingSecurity, u"Security"_s));
    row->addWidget(NewLabel(u"En&cryption:"_s, cmbPOPSecurity));
    row->addWidget(cmbPOPSecurity);
    row->addStretch();
    row->addWidget(NewTestButton("cmdPOPTest", u"Connect and sign in without fetching anything"_s));
    Tie(cmbPOPSecurity, &Preferences::POPSecurity);
}

} // namespace varlo

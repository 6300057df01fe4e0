#include "prefs/SendingPage.h"

#include "core/Buttons.h"
#include "core/Literals.h"
#include "prefs/PageControls.h"
#include "prefs/WrapValidator.h"

#include <QPushButton>

namespace varlo {

SendingPage::SendingPage()
    : PreferencesPage(Page::Sending, u"E-mail Sending"_s, u"Configure your SMTP e-mail account"_s) {
    AddAccount();
    AddFormatting();
    AddStretch();
}

void SendingPage::AddAccount() {
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

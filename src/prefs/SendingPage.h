// The page "E-mail Sending" of the Preferences window.
#pragma once

#include "prefs/PreferencesPage.h"

namespace varlo {

class SendingPage : public PreferencesPage {
    Q_OBJECT

public:
    SendingPage();

private:
    // Returns the box of the port, which goes with the encryption.
    QLineEdit *AddAccount();
    void AddSecurity(QLineEdit *port);
    void AddFormatting();
};

} // namespace varlo

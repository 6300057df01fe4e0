// The page "E-mail Receiving" of the Preferences window.
#pragma once

#include "prefs/PreferencesPage.h"

namespace varlo {

class ReceivingPage : public PreferencesPage {
    Q_OBJECT

public:
    ReceivingPage();

private:
    // Returns the box of the port, which goes with the encryption.
    QLineEdit *AddAccount();
    void AddSecurity(QLineEdit *port);
};

} // namespace varlo

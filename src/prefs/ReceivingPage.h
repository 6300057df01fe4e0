// The page "E-mail Receiving" of the Preferences window.
#pragma once

#include "prefs/PreferencesPage.h"

namespace varlo {

class ReceivingPage : public PreferencesPage {
    Q_OBJECT

public:
    ReceivingPage();

private:
    void AddAccount();
};

} // namespace varlo

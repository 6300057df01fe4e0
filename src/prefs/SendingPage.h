// The page "E-mail Sending" of the Preferences window.
#pragma once

#include "prefs/PreferencesPage.h"

namespace varlo {

class SendingPage : public PreferencesPage {
    Q_OBJECT

public:
    SendingPage();

private:
    void AddAccount();
    void AddFormatting();
};

} // namespace varlo

// The page "E-mail Notification" of the Preferences window.
#pragma once

#include "prefs/PreferencesPage.h"

namespace varlo {

class NotificationPage : public PreferencesPage {
    Q_OBJECT

public:
    NotificationPage();

private:
    void AddSubscriptions();
    void AddUnsubscriptions();
};

} // namespace varlo

// The page "General" of the Preferences window: switches, and the maintenance of logs and sent messages.
#pragma once

#include "prefs/PreferencesPage.h"

namespace varlo {

struct Session;

class GeneralPage : public PreferencesPage {
    Q_OBJECT

public:
    explicit GeneralPage(Session &session);

private:
    QWidget *NewMaintenance(Session &session);
};

} // namespace varlo

// The page "Compose" of the Preferences window.
#pragma once

#include "prefs/PreferencesPage.h"

namespace varlo {

class ComposePage : public PreferencesPage {
    Q_OBJECT

public:
    ComposePage();
};

} // namespace varlo

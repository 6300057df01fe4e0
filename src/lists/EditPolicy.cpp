#include "lists/EditPolicy.h"

#include "core/Preferences.h"
#include "core/Settings.h"

namespace varlo {

EditPolicy EditPolicyOf(Session &session) {
    const bool isCareful = session.AllSettings.Read(&Preferences::Careful) == 1;
    return {isCareful, isCareful};
}

} // namespace varlo

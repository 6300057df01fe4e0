// How an edit of an entry is taken that is refused as things are.
#pragma once

#include "core/Session.h"

namespace varlo {

struct EditPolicy {
    // An edit that only changes letter case is no duplicate of the entry itself.
    bool MayChangeCase = false;
    // What is refused is asked for again, with what was typed, until it is taken or the box is cancelled.
    bool AsksAgain = false;
};

// As the open profile wants it at this moment: both in careful mode, else neither. Throws RuntimeError 13 or 6
// when the setting cannot be read.
EditPolicy EditPolicyOf(Session &session);

} // namespace varlo

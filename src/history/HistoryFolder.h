// Where the versions of a list lie.
#pragma once

#include "core/Session.h"

namespace varlo::History {

// The folder of the list `name`, whether or not it exists: the name itself, with "%" and two hexadecimal digits for
// what a folder cannot be called (a name of dots alone, control characters, a blank or a dot at the end).
QString Folder(const Session &session, const QString &name);

// The lists that have a history, also those that were deleted, in no order.
QStringList Names(const Session &session);

} // namespace varlo::History

// Keeps what a change of a list file replaces.
#pragma once

#include "core/Session.h"

#include <functional>

namespace varlo::History {

// Whether versions are kept ("History" in [General]); also when the file has something else than a number.
bool IsOn(const Session &session);

// Runs `change`, which gives the list's file these entries, or deletes it; what the file held until then becomes
// a version, with `cause` as what replaced it. Not so when nothing changes, there was no file or no version is
// wanted. The version is on the disk before the change begins and goes again when that throws, which is passed on;
// a version that cannot be written never stands in the way of the change, and goes to "ErrorLog.txt". A kill at
// any moment leaves the list as it was or as it is to be, and every version whole.
void ReplaceKeeping(const Session &session, const QString &name, const QString &cause,
                    const QStringList &entries, const std::function<void()> &change);

// The versions go with their list to its new name, behind those of an earlier list of that name. What fails goes to
// "ErrorLog.txt"; the versions that have not gone yet stay where they are.
void Rename(const Session &session, const QString &oldName, const QString &newName);

} // namespace varlo::History

// What is kept of a list when the program had to end before anybody could say whether to save it.
#pragma once

#include "core/Session.h"

namespace varlo {

class OpenList;

namespace UnsavedList {

// "LIST.vlo.unsaved", beside the list's file.
QString Path(const Session &session, const QString &name);

// Writes the unsaved entries of the open list, whole or not at all. False when there is nothing unsaved or the
// disk does not take it; nobody is asked, the failure goes to "ErrorLog.txt".
bool Keep(const Session &session, const OpenList &list);

// Puts what was kept of the open list in its place, as changes that are not saved yet, and removes the kept
// file. Throws RuntimeError; the list then stays as it was.
void Restore(const Session &session, OpenList &list);

// The kept file goes with its list under a new name. Throws RuntimeError.
void Rename(const Session &session, const QString &name, const QString &newName);

// Removes the kept file, if there is one. Throws RuntimeError.
void Discard(const Session &session, const QString &name);

} // namespace UnsavedList

} // namespace varlo

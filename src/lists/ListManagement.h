// Creating, renaming and deleting mailing list files, with the questions that go with it.
#pragma once

#include "core/Session.h"

#include <optional>

namespace varlo {

class OpenList;

// Whether there is a list to work on; says so in a box when there is none.
bool HasList(Session &session, const QString &name);

// Asks for a name and creates an empty list file; one of the same name is emptied without a question (wanted:
// there is no existence check). The name, or nothing when the box was left empty. A failure is reported as
// "Main.cmdFileNew", after which the new name still counts.
std::optional<QString> CreateList(Session &session);

// Offers to save, asks for the new name of the list `current` and renames its file. The new name, or nothing
// when the name is empty or unchanged, or on a failure, reported as "Main.cmdFileRename".
std::optional<QString> RenameList(Session &session, OpenList &lists, const QString &current);

// Asks whether to delete the list `name` and deletes its file; its unsaved changes are dropped. False on No
// or a failure, reported as "Main.cmdFileDelete".
bool DeleteList(Session &session, const QString &name);

} // namespace varlo

#include "lists/ListManagement.h"

#include "core/Literals.h"
#include "core/Reporting.h"
#include "core/TextFile.h"
#include "core/modPublic.h"
#include "lists/ListFile.h"
#include "lists/ListStore.h"
#include "lists/UnsavedList.h"

namespace varlo {

std::optional<QString> CreateList(Session &session) {
    const QString name = StripChars(
        session.Boxes.InputBox(u"Please enter a name for the new mailing list:"_s, u"Create New List"_s),
        kForbiddenInNames);
    if (name.isEmpty())
        return std::nullopt;
    Trapped(session, u"Main.cmdFileNew"_s, [&] { ListFile::Write(session, name, {}); });
    return name;
}

std::optional<QString> RenameList(Session &session, ListStore &lists, const QString &current) {
    if (!lists.PromptSaveList())
        return std::nullopt;
    const QString name =
        StripChars(session.Boxes.InputBox(u"Please enter the new name for ["_s + current + u"]:"_s,
                                          u"Rename List"_s, current),
                   kForbiddenInNames);
    if (name.isEmpty() || name == current)
        return std::nullopt;
    const bool renamed = Trapped(session, u"Main.cmdFileRename"_s, [&] {
        RenamePath(ListFile::Path(session, current), ListFile::Path(session, name));
        UnsavedList::Rename(session, current, name);
    });
    if (!renamed)
        return std::nullopt;
    lists.CurrentListName = name; // changes that are still unsaved belong to the file under its new name
    return name;
}

bool DeleteList(Session &session, const QString &name) {
    const QString question = u"Are you sure you want to delete mailing list ["_s + name + u"]?"_s;
    if (session.Boxes.AskToDestroy(question, BoxIcon::Question, u"Confirm Delete"_s) != BoxAnswer::Yes)
        return false;
    return Trapped(session, u"Main.cmdFileDelete"_s, [&] {
        DeleteFile(ListFile::Path(session, name));
        UnsavedList::Discard(session, name);
    });
}

} // namespace varlo

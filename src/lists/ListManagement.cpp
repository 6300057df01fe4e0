#include "lists/ListManagement.h"

#include "core/Literals.h"
#include "core/Reporting.h"
#include "core/modPublic.h"
#include "history/KeepVersion.h"
#include "lists/ListLibrary.h"
#include "lists/OpenList.h"
#include "lists/UnsavedList.h"

namespace varlo {

bool HasList(Session &session, const QString &name) {
    if (name.isEmpty())
        session.Boxes.MsgBox(u"Please create or choose a mailing list first."_s, BoxButtons::Ok,
                             BoxIcon::Exclamation);
    return !name.isEmpty();
}

std::optional<QString> CreateList(Session &session) {
    const QString name = StripChars(
        session.Boxes.InputBox(u"Please enter a name for the new mailing list:"_s, u"Create New List"_s),
        kForbiddenInNames);
    if (name.isEmpty())
        return std::nullopt;
    Trapped(session, u"Main.cmdFileNew"_s, [&] {
        History::ReplaceKeeping(session, name, u"New List"_s, {},
                                [&] { ListLibrary::Create(session, name); });
    });
    return name;
}

std::optional<QString> RenameList(Session &session, OpenList &lists, const QString &current) {
    if (!lists.PromptSaveList())
        return std::nullopt;
    const QString name =
        StripChars(session.Boxes.InputBox(u"Please enter the new name for ["_s + current + u"]:"_s,
                                          u"Rename List"_s, current),
                   kForbiddenInNames);
    if (name.isEmpty() || name == current)
        return std::nullopt;
    const bool renamed = Trapped(session, u"Main.cmdFileRename"_s, [&] {
        ListLibrary::Rename(session, current, name);
        History::Rename(session, current, name);
        UnsavedList::Rename(session, current, name);
    });
    if (!renamed)
        return std::nullopt;
    lists.Rename(name);
    return name;
}

bool DeleteList(Session &session, const QString &name) {
    const QString question = u"Are you sure you want to delete mailing list ["_s + name + u"]?"_s;
    if (session.Boxes.AskToDestroy(question, BoxIcon::Question, u"Confirm Delete"_s) != BoxAnswer::Yes)
        return false;
    return Trapped(session, u"Main.cmdFileDelete"_s, [&] {
        History::ReplaceKeeping(session, name, u"Delete List"_s, {},
                                [&] { ListLibrary::Delete(session, name); });
        UnsavedList::Discard(session, name);
    });
}

} // namespace varlo

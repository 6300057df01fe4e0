#include "lists/ListManagement.h"

#include "core/Reporting.h"
#include "core/TextFile.h"
#include "core/modPublic.h"
#include "lists/ListFile.h"
#include "lists/ListStore.h"

namespace varlo {

std::optional<QString> CreateList(Session &session) {
    const QString name =
        StripChars(session.Boxes.InputBox(QStringLiteral("Please enter a name for the new mailing list:"),
                                          QStringLiteral("Create New List")),
                   kForbiddenInNames);
    if (name.isEmpty())
        return std::nullopt;
    Trapped(session, QStringLiteral("Main.cmdFileNew"), [&] { ListFile::Write(session, name, {}); });
    return name;
}

std::optional<QString> RenameList(Session &session, ListStore &lists, const QString &current) {
    if (!lists.PromptSaveList())
        return std::nullopt;
    const QString name = StripChars(session.Boxes.InputBox(QStringLiteral("Please enter the new name for [") +
                                                               current + QStringLiteral("]:"),
                                                           QStringLiteral("Rename List"), current),
                                    kForbiddenInNames);
    if (name.isEmpty() || name == current)
        return std::nullopt;
    const bool renamed = Trapped(session, QStringLiteral("Main.cmdFileRename"), [&] {
        RenamePath(ListFile::Path(session, current), ListFile::Path(session, name));
    });
    if (!renamed)
        return std::nullopt;
    lists.CurrentListName = name; // changes that are still unsaved belong to the file under its new name
    return name;
}

bool DeleteList(Session &session, const QString &name) {
    const QString question =
        QStringLiteral("Are you sure you want to delete mailing list [") + name + QStringLiteral("]?");
    if (session.Boxes.MsgBox(question, BoxButtons::YesNo, BoxIcon::Question,
                             QStringLiteral("Confirm Delete")) != BoxAnswer::Yes)
        return false;
    return Trapped(session, QStringLiteral("Main.cmdFileDelete"),
                   [&] { DeleteFile(ListFile::Path(session, name)); });
}

} // namespace varlo

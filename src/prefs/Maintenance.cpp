#include "prefs/Maintenance.h"

#include "core/Literals.h"
#include "core/ProfileLayout.h"
#include "core/Reporting.h"
#include "core/modPublic.h"

#include <QDir>
#include <QUrl>

#include <array>

namespace varlo {

namespace {

struct Function {
    QString Item;
    QString (*Folder)(const Session &);
    QString Question; // empty: the folder is opened, not emptied
    QString Closing;
};

const std::array<Function, 4> &Functions() {
    static const std::array<Function, 4> functions{{
        {u"Open log files folder"_s, ProfileLayout::LogsFolder, {}, {}},
        {u"Open sent messages folder"_s, ProfileLayout::SentFolder, {}, {}},
        {u"Delete log files"_s, ProfileLayout::LogsFolder,
         u"Are you sure you want to delete all log files?"_s, u"Log files deleted"_s},
        {u"Delete sent messages"_s, ProfileLayout::SentFolder,
         u"Are you sure you want to delete all sent messages?"_s, u"Sent messages deleted"_s},
    }};
    return functions;
}

void OpenFolder(Session &session, const QString &folder) {
    if (session.Boxes.OpenUrl(QUrl::fromLocalFile(folder)))
        return;
    if (!PathExists(folder))
        throw RuntimeError(FileNotFound);
    throw RuntimeError(InvalidProcedureCall,
                       u"No program opens the folder "_s + QDir::toNativeSeparators(folder));
}

void EmptyFolder(Session &session, const QString &folder, const Function &function) {
    if (session.Boxes.AskToDestroy(function.Question) != BoxAnswer::Yes)
        return;
    DeleteAllFiles(folder);
    session.Boxes.MsgBox(function.Closing, BoxButtons::Ok, BoxIcon::Information);
}

void Run(Session &session, const Function &function) {
    const QString folder = function.Folder(session);
    try {
        if (function.Question.isEmpty())
            OpenFolder(session, folder);
        else
            EmptyFolder(session, folder, function);
    } catch (const RuntimeError &error) {
        if (error.Number() != FileNotFound) // an empty or missing folder is what the operator asked for
            throw;
    }
}

} // namespace

const QStringList &MaintenanceItems() {
    static const QStringList items = [] {
        QStringList texts;
        for (const Function &function : Functions())
            texts << function.Item;
        return texts;
    }();
    return items;
}

void RunMaintenance(Session &session, const QString &item) {
    Trapped(session, u"Preferences.cmdLogGo"_s, [&] {
        for (const Function &function : Functions())
            if (function.Item == item)
                Run(session, function);
    });
}

void DeleteAllFiles(const QString &folder) {
    const QDir directory(folder);
    // "System" brings in the links that lead nowhere.
    const QStringList names = directory.entryList(QDir::Files | QDir::Hidden | QDir::System);
    if (names.isEmpty())
        throw RuntimeError(FileNotFound);
    for (const QString &name : names) {
        const QString path = directory.filePath(name);
        if (!QFile::remove(path) && PathExists(path))
            throw RuntimeError(PermissionDenied);
    }
}

} // namespace varlo

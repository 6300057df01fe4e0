#include "app/StartUp.h"

#include "core/Literals.h"
#include "core/Product.h"
#include "core/modPublic.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

namespace varlo {

namespace {

void CreateFolder(const QString &path) {
    if (PathExists(path))
        return;
    if (!QDir().mkdir(path))
        throw QFileInfo(path).dir().exists() ? RuntimeError(PathFileAccess) : RuntimeError(PathNotFound);
}

} // namespace

QString FindProgramFolder(const QString &executableFolder) {
    // The administrator can write below /usr, but no data of ours belongs there.
    const bool installed = executableFolder.startsWith(u"/usr/"_s);
    if (!installed && QFileInfo(executableFolder).isWritable())
        return executableFolder;
    const QString folder = QDir(QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation))
                               .filePath(kApplicationTitle);
    QDir().mkpath(folder); // when that fails, the first file that is written reports it
    return folder;
}

QStringList FindDocumentFolders(const QString &executableFolder) {
    const QString shared = u"../share/"_s + Product::kExecutableName;
    return {executableFolder, QDir::cleanPath(QDir(executableFolder).filePath(shared))};
}

void PrepareProfile(Session &session, ErrorTrap &trap) {
    session.INI.SetFile(session.ProfileFile(u"prefs.ini"_s));
    trap([&] { CreateFolder(session.ProfilePath); });
    for (const char *folder : {"lists", "sent", "logs"})
        trap([&] { CreateFolder(session.ProfileFile(QString::fromLatin1(folder))); });
}

void WriteSessionMarkers(Session &session, const QString &words, ErrorTrap &trap) {
    for (const char *log : {"ErrorLog.txt", "StatusLog.txt", "PendingLog.txt"})
        trap([&] { WriteSessionMarker(session, QString::fromLatin1(log), words); });
}

} // namespace varlo

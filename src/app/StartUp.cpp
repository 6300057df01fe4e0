#include "app/StartUp.h"

#include "core/Literals.h"
#include "core/Product.h"
#include "core/ProfileLayout.h"
#include "core/SystemFile.h"
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

// The administrator can write below /usr, but no data of ours belongs there.
bool IsInstalled(const QString &executableFolder) {
    return executableFolder.startsWith(u"/usr/"_s);
}

QString ProfilesBeside(const QString &executableFolder) {
    return QDir(executableFolder).filePath(u"profiles"_s);
}

bool HasProfiles(const QString &executableFolder) {
    return QFileInfo(ProfilesBeside(executableFolder)).isDir();
}

} // namespace

bool HasReadOnlyProfiles(const QString &executableFolder) {
    return !IsInstalled(executableFolder) && HasProfiles(executableFolder) &&
           !SystemFile::CanWriteIn(ProfilesBeside(executableFolder));
}

void ShowReadOnlyProfiles(Dialogs &boxes, const QString &executableFolder) {
    boxes.MsgBox(
        u"The lists of "_s + kApplicationTitle + u" lie in a folder that cannot be written:\r\n\r\n"_s +
            QDir::toNativeSeparators(ProfilesBeside(executableFolder)) +
            u"\r\n\r\nNothing was changed. Make the folder writable, or copy the program folder to a "
            "place of your own, and start again."_s,
        BoxButtons::Ok, BoxIcon::Critical, kErrorTitle);
}

QString FindProgramFolder(const QString &executableFolder) {
    if (!IsInstalled(executableFolder) &&
        (HasProfiles(executableFolder) || SystemFile::CanWriteIn(executableFolder)))
        return executableFolder;
    QString folder = QDir(QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation))
                         .filePath(kApplicationTitle);
    QDir().mkpath(folder); // when that fails, the first file that is written reports it
    return folder;
}

QStringList FindDocumentFolders(const QString &executableFolder) {
    const QString shared = u"../share/"_s + Product::kExecutableName;
    return {executableFolder, QDir::cleanPath(QDir(executableFolder).filePath(shared))};
}

void PrepareProfile(Session &session, ErrorTrap &trap) {
    session.INI.SetFile(ProfileLayout::Settings(session));
    trap([&] { CreateFolder(session.ProfilePath); });
    for (const QString &folder : ProfileLayout::Folders(session))
        trap([&] { CreateFolder(folder); });
}

void WriteSessionMarkers(Session &session, const QString &words, ErrorTrap &trap) {
    for (const char *log : {"ErrorLog.txt", "StatusLog.txt", "PendingLog.txt"})
        trap([&] { WriteSessionMarker(session, QString::fromLatin1(log), words); });
}

} // namespace varlo

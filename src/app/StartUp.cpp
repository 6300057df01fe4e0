#include "app/StartUp.h"

#include "core/Literals.h"
#include "core/PreferenceKeys.h"
#include "core/Product.h"
#include "core/ProfileLayout.h"
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
    session.INI.SetFile(ProfileLayout::Settings(session));
    trap([&] { CreateFolder(session.ProfilePath); });
    for (const QString &folder : ProfileLayout::Folders(session))
        trap([&] { CreateFolder(folder); });
}

void LoadPreferences(Session &session, ErrorTrap &trap) {
    clsINIFile &ini = session.INI;
    Preferences &prefs = session.Prefs;
    trap([&] { prefs.Notify = ReadNumber(ini, Keys::Notify); });
    prefs.SMTPServer = ReadText(ini, Keys::SMTPServer);
    trap([&] { prefs.SMTPPort = To16Bit(ReadNumber(ini, Keys::SMTPPort)); });
    prefs.SMTPFrom = ReadText(ini, Keys::SMTPFrom);
    prefs.SMTPEmail = ReadText(ini, Keys::SMTPEmail);
    trap([&] { prefs.SMTPWrap = To16Bit(ReadNumber(ini, Keys::SMTPWrap)); });
    prefs.SubSubject = ReadText(ini, Keys::SubSubject);
    prefs.SubBody = ReadText(ini, Keys::SubBody);
    prefs.UnsubSubject = ReadText(ini, Keys::UnsubSubject);
    prefs.UnsubBody = ReadText(ini, Keys::UnsubBody);
}

void WriteSessionMarkers(Session &session, const QString &words, ErrorTrap &trap) {
    for (const char *log : {"ErrorLog.txt", "StatusLog.txt", "PendingLog.txt"})
        trap([&] { WriteSessionMarker(session, QString::fromLatin1(log), words); });
}

} // namespace varlo

#include "core/Reporting.h"

#include "core/Literals.h"
#include "core/Preferences.h"
#include "core/Product.h"
#include "core/ProfileLayout.h"
#include "core/TextFile.h"
#include "core/modPublic.h"

#include <QDir>
#include <QFileInfo>
#include <QLocale>

#include <filesystem>
#include <utility>

namespace varlo {

namespace {

// The system's short time format leaves the seconds out; they are put behind the minutes with the same
// separator.
QString TimeFormatWithSeconds(const QLocale &locale) {
    QString format = locale.timeFormat(QLocale::ShortFormat);
    const qsizetype minutes = format.indexOf(u"mm"_s);
    if (minutes < 1 || format.contains(u's'))
        return format;
    return format.insert(minutes + 2, format.at(minutes - 1) + u"ss"_s);
}

} // namespace

QString TimeText(const Session &session) {
    static const QLocale locale = QLocale::system();
    static const QString format = TimeFormatWithSeconds(locale);
    static int shownSecond = -1;
    static QString text; // a mail check logs some ten thousand lines a second
    const QTime now = session.Now().time();
    const int second = now.msecsSinceStartOfDay() / 1000;
    if (std::exchange(shownSecond, second) != second)
        text = locale.toString(now, format);
    return text;
}

QString DateTimeText(const Session &session) {
    return QLocale::system().toString(session.Now().date(), QLocale::ShortFormat) + u' ' + TimeText(session);
}

namespace {

const QString kStatusLog = u"StatusLog.txt"_s;

// A log that a server fills is no reason for a full disk. Where the file cannot be renamed, it grows on: a
// line is worth more than the limit.
void PutAside(const QString &log) {
    const QString older = QFileInfo(log).dir().filePath(u"StatusLog.1.txt"_s);
    std::error_code ignored; // see above
    std::filesystem::rename(log.toStdU16String(), older.toStdU16String(), ignored);
}

void Append(const Session &session, const QString &file, const QString &line) {
    if (!session.ProfilePath.isEmpty()) {
        const QString path = ProfileLayout::Log(session, file);
        try {
            if (AppendLine(path, line) >= kLongestStatusLog && file == kStatusLog)
                PutAside(path);
            return;
        } catch (const RuntimeError &) {
            if (PathExists(session.ProfilePath))
                throw;
        }
    }
    AppendLine(QDir(session.ProfilesFolder()).filePath(file), line); // no profile is open, or it is gone
}

QString OrUnknown(const QString &label) {
    return label.isEmpty() ? u"Unknown"_s : label;
}

} // namespace

void WriteLog(const Session &session, const QString &file, const QString &line) {
    try {
        Append(session, file, line);
        if (!session.LogTrouble.isEmpty())
            session.LogTrouble.remove(file); // mended: the next trouble is news
    } catch (const RuntimeError &error) {
        const bool isKnown = session.LogTrouble.values().contains(error.Number());
        session.LogTrouble[file] = error.Number();
        if (!isKnown)
            throw;
    }
}

void LogError(const Session &session, const QString &label, const RuntimeError &error) noexcept {
    const QString line = TimeText(session) + u" Error "_s + QString::number(error.Number()) + u" in "_s +
                         OrUnknown(label) + u" - "_s + error.Description();
    const QString early = QDir(session.ProfilesFolder()).filePath(u"ErrorLog.txt"_s);
    try {
        Append(session, u"ErrorLog.txt"_s, line);
    } catch (const RuntimeError &) { // the profile has no folder for logs, or has lost it
        try {
            AppendLine(early, line);
        } catch (const RuntimeError &) {
            // Nowhere to write: where there is a box, it still tells the operator of the error that matters.
        }
    }
}

void ShowError(Session &session, const QString &label, const RuntimeError &error) noexcept {
    if (error.Number() == 0 || error.Number() == ResumeWithoutError)
        return;
    LogError(session, label, error);
    const QString routine = OrUnknown(label);
    const QString number = QString::number(error.Number());
    session.Boxes.MsgBox(u"The following error has occured:\r\n[ "_s + error.Description() +
                             u" ]\rPlease report errors to "_s + Product::kSupportAddress + u"\r\n"_s,
                         BoxButtons::Ok, BoxIcon::Critical,
                         Product::kExecutableName + u" Error "_s + number + u" in "_s + routine);
    session.Boxes.SetHourglass(false);
}

void StatusMessage(Session &session, const QString &message, bool NoLog, bool NoStatusBar) {
    const QString line = NoLog ? QString() : TimeText(session) + u" | "_s + message;
    if (!NoLog)
        Q_EMIT session.Status.ConsoleLine(line);
    if (!NoStatusBar)
        Q_EMIT session.Status.StatusText(message);
    if (!NoLog && session.Prefs.LogStatus == 1)
        WriteLog(session, kStatusLog, line);
}

void WriteSessionMarker(const Session &session, const QString &file, const QString &words) {
    WriteLog(session, file, DateTimeText(session) + words);
    WriteLog(session, file, QString(70, u'-'));
}

} // namespace varlo

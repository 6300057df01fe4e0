#include "core/Reporting.h"

#include "core/Literals.h"
#include "core/Product.h"
#include "core/ProfileLayout.h"
#include "core/TextFile.h"
#include "core/modPublic.h"

#include <QDir>
#include <QLocale>

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

void WriteLog(const Session &session, const QString &file, const QString &line) {
    if (!session.ProfilePath.isEmpty()) {
        try {
            return AppendLine(ProfileLayout::Log(session, file), line);
        } catch (const RuntimeError &) {
            if (PathExists(session.ProfilePath))
                throw;
        }
    }
    AppendLine(QDir(session.ProfilesFolder()).filePath(file), line); // no profile is open, or it is gone
}

void ShowError(Session &session, const QString &label, const RuntimeError &error) noexcept {
    if (error.Number() == 0 || error.Number() == ResumeWithoutError)
        return;
    const QString routine = label.isEmpty() ? u"Unknown"_s : label;
    const QString number = QString::number(error.Number());
    try {
        WriteLog(session, u"ErrorLog.txt"_s,
                 TimeText(session) + u" Error "_s + number + u" in "_s + routine + u" - "_s +
                     error.Description());
    } catch (const RuntimeError &) {
        // The box below still tells the operator of the error that matters.
    }
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
        WriteLog(session, u"StatusLog.txt"_s, line);
}

void WriteSessionMarker(const Session &session, const QString &file, const QString &words) {
    WriteLog(session, file, DateTimeText(session) + words);
    WriteLog(session, file, QString(70, u'-'));
}

} // namespace varlo

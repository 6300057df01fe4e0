// The error reporter, the status routine and the logs of the open profile.
#pragma once

#include "core/RuntimeError.h"
#include "core/Session.h"

namespace varlo {

// The line with which "StatusLog.txt" reaches this size, in bytes, is its last: it is kept as "StatusLog.1.txt",
// and the next line starts a new one.
constexpr qint64 kLongestStatusLog = qint64(64) * 1024 * 1024;

// Appends `line` to the log `file` of the open profile; before a profile is open (or after its folder
// vanished), to a file of that name in the profiles folder itself, so that early errors are kept. Throws
// RuntimeError, the same one once for each action of the operator: while the logs folder is gone, a run of a
// thousand lines is not a thousand boxes.
void WriteLog(const Session &session, const QString &file, const QString &line);

// The line of "ErrorLog.txt" alone, for an error that is told otherwise or that nobody is there to be told of. It
// goes to the profiles folder when the profile cannot take it.
void LogError(const Session &session, const QString &label, const RuntimeError &error) noexcept;

// Reports an error of the routine `label` ("Main.Load"): one line in "ErrorLog.txt", a box, and the default
// mouse pointer. An empty label is reported as "Unknown"; the numbers 0 and 20 are ignored. Never throws:
// where the log cannot be written, the box still tells.
void ShowError(Session &session, const QString &label, const RuntimeError &error) noexcept;

// Shows and records one status message: in the console and, when "LogStatus" is 1, in "StatusLog.txt" unless
// `NoLog`; in the status bar unless `NoStatusBar`. Throws what WriteLog throws, after the message has been
// shown.
void StatusMessage(Session &session, const QString &message, bool NoLog = false, bool NoStatusBar = false);

// Writes the two marker lines (" SESSION STARTED" or " SESSION ENDED", then 70 hyphens) to one log.
void WriteSessionMarker(const Session &session, const QString &file, const QString &words);

// The current time of day in the system's format, with seconds; and the general date format: the date, then
// that.
QString TimeText(const Session &session);
QString DateTimeText(const Session &session);

// Carry on with the next statement: each call runs one statement, reports its failure under the label and
// returns whether it succeeded.
class ErrorTrap {
public:
    ErrorTrap(Session &session, QString label) : session_(session), label_(std::move(label)) {}

    template<typename Statement> bool operator()(Statement &&statement) {
        try {
            statement();
            return true;
        } catch (const RuntimeError &error) {
            ShowError(session_, label_, error);
        }
        return false;
    }

private:
    Session &session_;
    QString label_;
};

// Leave the routine: runs the whole body, reports its failure under the label and returns whether it
// succeeded.
template<typename Body> bool Trapped(Session &session, const QString &label, Body &&body) {
    ErrorTrap trap(session, label);
    return trap(std::forward<Body>(body));
}

// The last resort around an event that no routine traps: the event ends, the error is reported with an empty
// label, the program goes on.
template<typename Event> void LastResort(Session &session, Event &&event) {
    try {
        event();
    } catch (const RuntimeError &error) {
        ShowError(session, QString(), error);
    } catch (const std::exception &exception) {
        ShowError(session, QString(),
                  RuntimeError(InvalidProcedureCall, QString::fromUtf8(exception.what())));
    }
}

} // namespace varlo

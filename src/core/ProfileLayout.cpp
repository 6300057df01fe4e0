#include "core/ProfileLayout.h"

namespace varlo::ProfileLayout {

QString Settings(const Session &session) {
    return session.ProfileFile(u"prefs.ini"_s);
}

QString Draft(const Session &session) {
    return session.ProfileFile(u"draft.txt"_s);
}

QString Unsent(const Session &session) {
    return session.ProfileFile(u"unsent.ini"_s);
}

QString ListsFolder(const Session &session) {
    return session.ProfileFile(u"lists"_s);
}

QString ListFile(const Session &session, const QString &name) {
    return session.ProfileFile(u"lists"_s, name + kListExtension);
}

QString SentFolder(const Session &session) {
    return session.ProfileFile(u"sent"_s);
}

QString SentCopy(const Session &session, const QString &file) {
    return session.ProfileFile(u"sent"_s, file);
}

QString LogsFolder(const Session &session) {
    return session.ProfileFile(u"logs"_s);
}

// By hand: two lines of a log are written for each request of a run, and a QDir costs more than the line.
QString Log(const Session &session, const QString &file) {
    return session.ProfilePath + u"/logs/"_s + file;
}

QStringList Folders(const Session &session) {
    return {ListsFolder(session), SentFolder(session), LogsFolder(session)};
}

} // namespace varlo::ProfileLayout

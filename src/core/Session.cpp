#include "core/Session.h"

#include "core/Literals.h"
#include "core/Settings.h"

#include <QDir>

#include <utility>

namespace varlo {

// The system looks for the file of its time zone whenever it is asked for the local time, and every line of a
// log has one. Clocks are put forward and back at full seconds, so asking once in each is enough.
QDateTime LocalTime() {
    static qint64 askedAt = -1;
    static int offset = 0;
    const QDateTime utc = QDateTime::currentDateTimeUtc();
    const qint64 second = utc.toSecsSinceEpoch();
    if (std::exchange(askedAt, second) != second)
        offset = utc.toLocalTime().offsetFromUtc();
    return utc.toOffsetFromUtc(offset);
}

Session::Session(QString programFolder, Dialogs &boxes)
    : ProgramFolder(std::move(programFolder)), settings_(std::make_unique<Settings>(INI)),
      AllSettings(*settings_), Prefs(settings_->Held), Boxes(boxes) {
}

Session::~Session() = default;

QString Session::ProfileFile(const QString &folder, const QString &name) const {
    const QString path = QDir(ProfilePath).filePath(folder);
    return name.isEmpty() ? path : QDir(path).filePath(name);
}

QString Session::ProfilesFolder() const {
    return QDir(ProgramFolder).filePath(u"profiles"_s);
}

} // namespace varlo

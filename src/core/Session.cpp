#include "core/Session.h"

#include <QDir>

namespace varlo {

QString Session::ProfileFile(const QString &folder, const QString &name) const {
    const QString path = QDir(ProfilePath).filePath(folder);
    return name.isEmpty() ? path : QDir(path).filePath(name);
}

QString Session::ProfilesFolder() const {
    return QDir(ProgramFolder).filePath(QStringLiteral("profiles"));
}

} // namespace varlo

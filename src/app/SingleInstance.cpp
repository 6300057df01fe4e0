#include "app/SingleInstance.h"

#include "core/Literals.h"

#include <QCryptographicHash>
#include <QDir>
#include <QStandardPaths>

namespace varlo {

namespace {

QString PathInCacheFolder(const QString &programFolder) {
    const QString canonical = QDir(programFolder).canonicalPath();
    const QString &folder = canonical.isEmpty() ? programFolder : canonical;
    const QByteArray hash = QCryptographicHash::hash(folder.toUtf8(), QCryptographicHash::Sha1).toHex();
    const QDir cache(QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation));
    cache.mkpath(u"."_s); // a failure shows when the lock is taken
    return cache.filePath(u"varlo-pro-%1.lock"_s.arg(QString::fromLatin1(hash)));
}

} // namespace

SingleInstance::SingleInstance(const QString &programFolder) {
    Outcome outcome = Take(QDir(programFolder).filePath(u"varlo-pro.lock"_s));
    if (outcome == Outcome::Unusable)
        outcome = Take(PathInCacheFolder(programFolder));
    isFirst_ = outcome != Outcome::HeldByOther;
}

SingleInstance::Outcome SingleInstance::Take(const QString &path) {
    auto lock = std::make_unique<QLockFile>(path);
    lock->setStaleLockTime(0); // never by its age: a copy may run for months
    bool held = lock->tryLock(0);
    if (!held && lock->error() == QLockFile::LockFailedError) {
        qint64 pid = 0;
        QString host;
        QString program;
        // A lock file without contents was cut short by a power failure, or is being made this very moment:
        // then its owner holds it open and the removal fails.
        if (!lock->getLockInfo(&pid, &host, &program) && lock->removeStaleLockFile())
            held = lock->tryLock(0);
        if (!held)
            return Outcome::HeldByOther;
    }
    if (!held)
        return Outcome::Unusable;
    lock_ = std::move(lock);
    return Outcome::Held;
}

QString SingleInstance::LockPath() const {
    return lock_ ? lock_->fileName() : QString();
}

void ShowAlreadyRunning(Dialogs &boxes) {
    boxes.MsgBox(kApplicationTitle +
                     u" is already running. Please close the other instance before starting "_s +
                     kApplicationTitle + u" again."_s,
                 BoxButtons::Ok, BoxIcon::Exclamation, kErrorTitle);
}

} // namespace varlo

#include "app/SingleInstance.h"

#include "core/Literals.h"
#include "core/RuntimeError.h"
#include "core/TextFile.h"

#include <QCryptographicHash>
#include <QDir>
#include <QStandardPaths>
#include <QSysInfo>

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

// The fourth line of a lock file is the number of the owner's machine; names of machines are seldom unique.
bool IsOfThisMachine(const QString &path, const QString &machine) {
    QStringList lines;
    try {
        lines = ReadLines(path);
    } catch (const RuntimeError &) {
        return true; // unreadable: as good as held
    }
    const QString number = lines.value(3);
    const QString own = QString::fromLatin1(QSysInfo::machineUniqueId());
    return number.isEmpty() || own.isEmpty() ? machine == QSysInfo::machineHostName() : number == own;
}

// Qt has looked for an owner on this machine already, and found it alive.
bool MayBeRemoved(const QLockFile &lock, const SingleInstance::Question &mayTakeOver) {
    qint64 pid = 0;
    QString machine;
    QString program;
    // A lock file without contents was cut short by a power failure, or is being made this very moment.
    if (!lock.getLockInfo(&pid, &machine, &program))
        return true;
    return mayTakeOver && !IsOfThisMachine(lock.fileName(), machine) &&
           mayTakeOver({lock.fileName(), machine});
}

} // namespace

SingleInstance::SingleInstance(const QString &programFolder, const Question &mayTakeOver) {
    Outcome outcome = Take(QDir(programFolder).filePath(u"varlo-pro.lock"_s), mayTakeOver);
    if (outcome == Outcome::Unusable)
        outcome = Take(PathInCacheFolder(programFolder), mayTakeOver);
    isFirst_ = outcome != Outcome::HeldByOther;
}

SingleInstance::Outcome SingleInstance::Take(const QString &path, const Question &mayTakeOver) {
    auto lock = std::make_unique<QLockFile>(path);
    lock->setStaleLockTime(0); // never by its age: a copy may run for months
    bool held = lock->tryLock(0);
    if (!held && lock->error() == QLockFile::LockFailedError) {
        // An owner on this machine holds the file open: then the removal fails.
        if (MayBeRemoved(*lock, mayTakeOver) && lock->removeStaleLockFile())
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

bool AsksToTakeOver(Dialogs &boxes, const DoubtfulLock &lock) {
    const QString question =
        u"The lists in this folder were last open on the computer ["_s + lock.Machine + u"], and "_s +
        kApplicationTitle + u" did not end there, or is still running.\r\n\r\nLock file: "_s +
        QDir::toNativeSeparators(lock.Path) + u"\r\n\r\nIf it is not running there any more, start here?"_s;
    return boxes.AskToDestroy(question, BoxIcon::Exclamation) == BoxAnswer::Yes;
}

void ShowAlreadyRunning(Dialogs &boxes) {
    boxes.MsgBox(kApplicationTitle +
                     u" is already running. Please close the other instance before starting "_s +
                     kApplicationTitle + u" again."_s,
                 BoxButtons::Ok, BoxIcon::Exclamation, kErrorTitle);
}

} // namespace varlo

// One running copy of the program for each program folder.
#pragma once

#include "core/Dialogs.h"

#include <QLockFile>
#include <QString>

#include <functional>
#include <memory>

namespace varlo {

// A lock that another machine has left, or holds: this one cannot tell.
struct DoubtfulLock {
    QString Path;
    QString Machine; // its name
};

// Holds a lock file while it lives, so that two copies never write to the same lists. The lock of a copy that
// crashed, or whose machine lost its power, is taken over. Copies in different folders do not know of each
// other. A lock of another machine (the folder lies on a memory stick, or is kept in step by a service) is
// taken over when `mayTakeOver` says so; without it, and where the system itself knows of the owner, never.
//
// Where the program folder cannot be written (a read-only place, a full disk), the lock lies in the user's
// cache folder under a name made of the program folder: two copies of the same user still exclude each other.
// Where that fails, too, the program starts without a lock: a guard that cannot be set must not keep the
// operator from his lists.
class SingleInstance {
public:
    using Question = std::function<bool(const DoubtfulLock &)>;
    explicit SingleInstance(const QString &programFolder, const Question &mayTakeOver = {});

    // False while another copy holds the lock.
    bool IsFirst() const { return isFirst_; }
    // The path of the lock file that this copy holds; empty without one.
    QString LockPath() const;

private:
    enum class Outcome { Held, HeldByOther, Unusable };
    Outcome Take(const QString &path, const Question &mayTakeOver);

    std::unique_ptr<QLockFile> lock_;
    bool isFirst_ = true;
};

// Asks whether to start in spite of such a lock, and names the file.
bool AsksToTakeOver(Dialogs &boxes, const DoubtfulLock &lock);

// Tells the operator of a second copy why it ends.
void ShowAlreadyRunning(Dialogs &boxes);

} // namespace varlo

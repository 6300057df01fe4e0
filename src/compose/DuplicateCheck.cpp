#include "compose/DuplicateCheck.h"

#include "core/Literals.h"
#include "core/modPublic.h"

namespace varlo {

bool DuplicateCheck::IsNew(const QString &address) {
    const qsizetype before = seen_.size();
    seen_.insert(LowerCased(address));
    if (seen_.size() > before)
        return true;
    ++count_;
    return false;
}

QString DuplicateCheck::StatusText(const QString &address) {
    return u"Duplicate recipient ["_s + address + u"] ignored"_s;
}

} // namespace varlo

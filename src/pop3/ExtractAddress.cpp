#include "pop3/ExtractAddress.h"

#include "core/RuntimeError.h"

namespace varlo {

QString ExtractAddress(const QString &From) {
    const int lt = To16Bit(From.indexOf(u'<') + 1);
    const int gt = To16Bit(From.indexOf(u'>') + 1);
    // Wanted: the bits of the positions, not their truth. Brackets whose positions share no bit leave the
    // value whole, which then fails the address check; lists that were captured so far rely on who is
    // dropped.
    if ((lt & gt) == 0)
        return From;
    if (gt < lt)
        throw RuntimeError(InvalidProcedureCall);
    return From.sliced(lt, gt - lt - 1);
}

} // namespace varlo

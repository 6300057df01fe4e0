#include "prefs/TypedNumber.h"

#include "core/Literals.h"
#include "core/RuntimeError.h"
#include "core/ValueText.h"

#include <QRegularExpression>

namespace varlo {

qint16 TypedNumber(const QString &typed) {
    // Stricter than what is read from a file: "2.5" or "1e3" in a port field is a slip, not a number.
    static const QRegularExpression whole(u"\\A\\s*[+-]?[0-9]+\\s*\\z"_s);
    if (!whole.match(typed).hasMatch())
        throw RuntimeError(TypeMismatch);
    return ToWhole16(typed);
}

} // namespace varlo

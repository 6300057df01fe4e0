// A number as it is typed into a field.
#pragma once

#include <QString>

namespace varlo {

// `typed` as the number of a port or column. Throws RuntimeError: 13 when it is not a whole number, 6 past 16
// bits.
qint16 TypedNumber(const QString &typed);

} // namespace varlo

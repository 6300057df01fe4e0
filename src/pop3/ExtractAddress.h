// The rule that cuts the bare address out of the sender of a message.
#pragma once

#include <QString>

namespace varlo {

// The text between the first "<" and the first ">" of `From` when the bitwise AND of their positions (counted
// from 1) is not 0, otherwise `From` as it is. Throws RuntimeError: 5 when the ">" comes first, 6 when a
// position is beyond 32,767.
QString ExtractAddress(const QString &From);

} // namespace varlo

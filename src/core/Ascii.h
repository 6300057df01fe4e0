// Whether a text can travel where only ASCII may.
#pragma once

#include <QStringView>

#include <algorithm>

namespace varlo {

inline bool IsAscii(QStringView text) {
    return std::all_of(text.begin(), text.end(), [](QChar c) { return c.unicode() < 0x80; });
}

} // namespace varlo

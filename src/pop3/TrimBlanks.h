// Trimming that takes blanks only.
#pragma once

#include <QString>

namespace varlo {

// `text` without leading and trailing blanks. Tabs and every other white space stay: they are part of a
// header's value.
inline QString TrimBlanks(QStringView text) {
    while (text.startsWith(u' '))
        text = text.sliced(1);
    while (text.endsWith(u' '))
        text.chop(1);
    return text.toString();
}

} // namespace varlo

// Lines of a mail's header that hold what looks like addresses but belongs to machines.
#pragma once

#include <QStringView>

namespace varlo {

// Whether `line` begins a header field such as "Message-ID: <...>" or "Received: from ...", also in a quoted mail
// ("> Message-ID:"). Its folded lines belong to it.
bool IsMachineHeader(QStringView line);

// Whether `line` continues the one before: it begins with a blank.
inline bool IsFolded(QStringView line) {
    return !line.isEmpty() && (line.front() == u' ' || line.front() == u'\t');
}

} // namespace varlo

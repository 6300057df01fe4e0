// Lines of a mail's header that hold what looks like addresses but belongs to machines.
#pragma once

#include <QStringView>

namespace varlo {

// Whether `line` has the form of a header field, "Name: value", also in a quoted mail ("> Name: value").
bool IsHeader(QStringView line);

// Whether such a line belongs to machines: "Message-ID: <...>", "Received: from ...". Its folded lines belong to it.
// Names that people use, too ("References: ask Anna"), count only where the value shows that a machine wrote it, or
// where the line before was a header field.
bool IsMachineHeader(QStringView line, bool followsHeader);

// Whether `line` continues the one before: it begins with a blank.
inline bool IsFolded(QStringView line) {
    return !line.isEmpty() && (line.front() == u' ' || line.front() == u'\t');
}

} // namespace varlo

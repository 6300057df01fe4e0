// Hard wrapping of an outgoing message's text at blanks, to a width in characters.
#pragma once

#include <QString>

namespace varlo {

struct Session;

// `text` with its long lines broken at blanks so that they keep within `width` characters. Lines end with CR
// LF and with nothing else: a lone CR or LF and a tab are characters of a word. The blank at which a line is
// broken is consumed; all others stay. The results follow an established rule, quirks included: a line broken
// at a blank holds at most `width` - 1 characters, a line that ended before may hold `width`, a longer word
// stays whole. Takes time in proportion to the text. Throws RuntimeError 5 for a width below 1, unless there
// is nothing to wrap.
QString WrapAtBlanks(const QString &text, qint16 width);

// The same for the callers that send mail: a failure is reported as "Public.WordWrap" and gives an empty
// text.
QString WordWrap(Session &session, const QString &text, qint16 width);

} // namespace varlo

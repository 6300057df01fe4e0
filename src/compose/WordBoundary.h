// Where the word before the caret begins, for Ctrl+Backspace.
#pragma once

#include <QString>

namespace varlo {

// The position up to which Ctrl+Backspace deletes backwards from `caret` (0 to the text's length). A word
// goes together with the blanks behind it; so does a run of punctuation. Behind a line break only the line
// break goes, on a line that has nothing but blanks before the caret only these; at the start of the text
// nothing does. Line breaks are CR LF, LF or CR.
qsizetype WordStartBefore(const QString &text, qsizetype caret);

} // namespace varlo

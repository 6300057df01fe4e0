// The border between the program's texts (lines end with CR LF) and the text widget's.
#pragma once

#include <QString>

namespace varlo {

// The raw text of a text widget's document (paragraph and line separators) with CR LF line ends. Nothing else
// is changed: no-break spaces stay what they are.
QString WithCrLf(const QString &documentText);

// `documentText` with the clipboard's line feeds.
QString WithLineFeeds(const QString &documentText);

// `text`, whose lines end with CR LF, LF or CR, with the paragraph separators of a text widget's document.
QString WithParagraphs(const QString &text);

// The position in a text widget that shows `text`, where a line break counts as one character, for the
// position `at` in `text`, where CR LF counts as two. A position between CR and LF means the one before the
// line break.
qsizetype DocumentPosition(const QString &text, qsizetype at);

// `text` on one line: every line break becomes a blank.
QString OnOneLine(QString text);

} // namespace varlo

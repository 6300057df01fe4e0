#include "compose/WordBoundary.h"

#include <QTextBoundaryFinder>

namespace varlo {

namespace {

bool IsLineBreak(QChar c) {
    return c == u'\n' || c == u'\r';
}

qsizetype LineStart(const QString &text, qsizetype caret) {
    while (caret > 0 && !IsLineBreak(text[caret - 1]))
        --caret;
    return caret;
}

// The start of the last word or run of punctuation in a line without blanks at its end. The rules of Unicode
// keep "don't" whole but see a word of its own in every dot of "...": those are taken together here.
qsizetype LastWord(const QString &line) {
    QTextBoundaryFinder finder(QTextBoundaryFinder::Word, line);
    finder.toEnd();
    const bool isWord = finder.boundaryReasons() & QTextBoundaryFinder::EndOfItem;
    qsizetype start = finder.toPreviousBoundary();
    while (!isWord && start > 0 && !line[start - 1].isSpace() &&
           !(finder.boundaryReasons() & QTextBoundaryFinder::EndOfItem))
        start = finder.toPreviousBoundary();
    return start;
}

} // namespace

qsizetype WordStartBefore(const QString &text, qsizetype caret) {
    const qsizetype lineStart = LineStart(text, caret);
    if (caret == lineStart) {
        const bool isCrLf = caret > 1 && text[caret - 1] == u'\n' && text[caret - 2] == u'\r';
        return qMax<qsizetype>(0, caret - (isCrLf ? 2 : 1));
    }
    QString line = text.sliced(lineStart, caret - lineStart);
    while (!line.isEmpty() && line.back().isSpace())
        line.chop(1);
    return line.isEmpty() ? lineStart : lineStart + LastWord(line);
}

} // namespace varlo

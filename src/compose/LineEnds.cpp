#include "compose/LineEnds.h"

namespace varlo {

QString WithCrLf(const QString &documentText) {
    return WithLineFeeds(documentText).replace(u'\n', QStringLiteral("\r\n"));
}

QString WithLineFeeds(const QString &documentText) {
    QString text = documentText;
    return text.replace(QChar(QChar::ParagraphSeparator), u'\n').replace(QChar(QChar::LineSeparator), u'\n');
}

qsizetype DocumentPosition(const QString &text, qsizetype at) {
    const bool isInsideBreak = at > 0 && at < text.size() && text[at - 1] == u'\r' && text[at] == u'\n';
    const qsizetype end = isInsideBreak ? at - 1 : at;
    return end - QStringView(text).first(end).count(QStringLiteral("\r\n"));
}

QString OnOneLine(QString text) {
    text.replace(QStringLiteral("\r\n"), QStringLiteral(" "));
    for (const char16_t lineBreak : {u'\r', u'\n', u'\u2028', u'\u2029'})
        text.replace(QChar(lineBreak), u' ');
    return text;
}

} // namespace varlo

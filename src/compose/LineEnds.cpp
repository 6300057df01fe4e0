#include "compose/LineEnds.h"

#include "core/Literals.h"

#include <algorithm>

namespace varlo {

namespace {

bool IsSeparator(QChar c) {
    return c == QChar::ParagraphSeparator || c == QChar::LineSeparator;
}

} // namespace

// In one pass over plain memory: it runs with every key, and a message can have a megabyte.
QString WithCrLf(const QString &documentText) {
    const auto breaks = std::count_if(documentText.cbegin(), documentText.cend(), IsSeparator);
    QString text(documentText.size() + breaks, Qt::Uninitialized);
    QChar *out = text.data();
    for (const QChar c : documentText) {
        if (IsSeparator(c)) {
            *out++ = u'\r';
            *out++ = u'\n';
        } else {
            *out++ = c;
        }
    }
    return text;
}

QString WithLineFeeds(const QString &documentText) {
    QString text = documentText;
    return text.replace(QChar(QChar::ParagraphSeparator), u'\n').replace(QChar(QChar::LineSeparator), u'\n');
}

QString WithParagraphs(const QString &text) {
    QString paragraphs;
    paragraphs.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        const bool isBreak = text[i] == u'\n' || text[i] == u'\r';
        if (text[i] == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n')
            ++i;
        paragraphs.append(isBreak ? QChar(QChar::ParagraphSeparator) : text[i]);
    }
    return paragraphs;
}

qsizetype DocumentPosition(const QString &text, qsizetype at) {
    const bool isInsideBreak = at > 0 && at < text.size() && text[at - 1] == u'\r' && text[at] == u'\n';
    const qsizetype end = isInsideBreak ? at - 1 : at;
    return end - QStringView(text).first(end).count(u"\r\n"_s);
}

QString OnOneLine(QString text) {
    text.replace(u"\r\n"_s, u" "_s);
    for (const char16_t lineBreak : {u'\r', u'\n', u'\u2028', u'\u2029'})
        text.replace(QChar(lineBreak), u' ');
    return text;
}

} // namespace varlo

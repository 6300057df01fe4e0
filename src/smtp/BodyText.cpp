#include "smtp/BodyText.h"

namespace OSSMTP {

namespace {

constexpr qsizetype kQuotedLine = 76;

// Calls `take` with each line, without its end.
template<typename Take> void ForEachLine(QByteArrayView text, Take take) {
    for (qsizetype start = 0; start < text.size();) {
        qsizetype end = start;
        while (end < text.size() && text[end] != '\r' && text[end] != '\n')
            ++end;
        take(text.sliced(start, end - start));
        const bool pair = end + 1 < text.size() && text[end] == '\r' && text[end + 1] == '\n';
        start = end + (pair ? 2 : 1);
    }
}

// A line that is a dot would end the message, so every leading dot is doubled; the server takes it away
// again.
void AppendStuffed(QByteArray &out, QByteArrayView line) {
    if (line.startsWith('.'))
        out.append('.');
    out.append(line);
}

bool IsBlank(char c) {
    return c == ' ' || c == '\t';
}

bool MayStand(char c, bool lastOfLine) {
    return (c > ' ' && c < 0x7F && c != '=') || (IsBlank(c) && !lastOfLine);
}

void AppendQuotedLine(QByteArray &out, QByteArrayView line) {
    static constexpr char kDigits[] = "0123456789ABCDEF";
    QByteArray piece;
    for (qsizetype i = 0; i < line.size(); ++i) {
        const auto byte = static_cast<unsigned char>(line[i]);
        const bool plain = MayStand(line[i], i + 1 == line.size());
        // One place is left for the mark of the soft break.
        if (piece.size() + (plain ? 1 : 3) >= kQuotedLine) {
            AppendStuffed(out, piece);
            out.append("=\r\n");
            piece.resize(0);
        }
        if (plain)
            piece.append(line[i]);
        else
            piece.append('=').append(kDigits[byte >> 4]).append(kDigits[byte & 15]);
    }
    AppendStuffed(out, piece);
    out.append("\r\n");
}

} // namespace

bool FitsSevenBit(QByteArrayView text) {
    if (std::any_of(text.begin(), text.end(), [](char c) { return static_cast<signed char>(c) <= 0; }))
        return false;
    qsizetype longest = 0;
    ForEachLine(text, [&](QByteArrayView line) { longest = std::max(longest, line.size()); });
    return longest <= kLongestLine;
}

void AppendSevenBit(QByteArray &out, QByteArrayView text) {
    ForEachLine(text, [&](QByteArrayView line) {
        AppendStuffed(out, line);
        out.append("\r\n");
    });
}

void AppendQuotedPrintable(QByteArray &out, QByteArrayView text) {
    ForEachLine(text, [&](QByteArrayView line) { AppendQuotedLine(out, line); });
}

void AppendBase64(QByteArray &out, QByteArrayView data) {
    constexpr qsizetype line = kBase64Line / 3 * 4;
    const QByteArray text = QByteArray::fromRawData(data.data(), data.size()).toBase64();
    for (qsizetype done = 0; done < text.size(); done += line)
        out.append(QByteArrayView(text).sliced(done, std::min(line, text.size() - done))).append("\r\n");
}

qint64 Base64Size(qint64 size) {
    const qint64 lines = (size + kBase64Line - 1) / kBase64Line;
    return (size + 2) / 3 * 4 + 2 * lines;
}

} // namespace OSSMTP

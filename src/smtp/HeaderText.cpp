#include "smtp/HeaderText.h"

#include "core/Ascii.h"

#include <QList>

namespace OSSMTP {

namespace {

using varlo::IsAscii;

constexpr qsizetype kFoldAt = 78;      // bytes of a line that is folded
constexpr qsizetype kEncodedLine = 76; // of a line that holds an encoded word
constexpr qsizetype kWordFrame = 12;   // "=?UTF-8?Q?" and "?="
constexpr qsizetype kWordRoom = 75 - kWordFrame;
constexpr qsizetype kLongestRun = 900;    // without a place to fold at; a longer one can only be encoded
constexpr qsizetype kLongestQuoted = 200; // name or parameter that is left as it is

QString OneLine(QString text) {
    for (QChar &c : text)
        if (c.unicode() < 0x20 || c.unicode() == 0x7F)
            c = QLatin1Char(' ');
    return text;
}

bool HasLongRun(const QString &text) {
    const QChar blank = QLatin1Char(' ');
    qsizetype run = 0;
    for (qsizetype i = 0; i < text.size() && run <= kLongestRun; ++i)
        run = text[i] == blank && i + 1 < text.size() && text[i + 1] != blank ? 0 : run + 1;
    return run > kLongestRun;
}

// "=?" in plain text would be decoded by the reader of the mail although nobody encoded it.
bool MustEncode(const QString &text) {
    return !IsAscii(text) || text.contains(QLatin1String("=?")) || HasLongRun(text);
}

// The UTF-8 bytes of each character; a character is never split.
QList<QByteArray> Characters(const QString &text) {
    QList<QByteArray> characters;
    for (const char32_t c : text.toUcs4())
        characters << QString::fromUcs4(&c, 1).toUtf8();
    return characters;
}

// What may stand in an encoded word everywhere, in a name before an address too.
bool IsWordSafe(char c) {
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') ||
           QByteArrayView("!*+-/").contains(c);
}

QByteArray Hex(char mark, char c) {
    static constexpr char kDigits[] = "0123456789ABCDEF";
    const auto byte = static_cast<unsigned char>(c);
    return QByteArray(1, mark) + kDigits[byte >> 4] + kDigits[byte & 15];
}

QByteArray QForm(const QByteArray &bytes) {
    QByteArray form;
    for (const char c : bytes) {
        if (c == ' ')
            form += '_';
        else if (IsWordSafe(c))
            form += c;
        else
            form += Hex('=', c);
    }
    return form;
}

struct WordCoder {
    char Mark;
    QByteArray (*Encode)(const QByteArray &bytes);
};

// The readable form, unless the other one is much shorter for this text.
WordCoder CoderFor(const QByteArray &utf8) {
    if (QForm(utf8).size() <= utf8.size() * 2)
        return {'Q', QForm};
    return {'B', [](const QByteArray &bytes) { return bytes.toBase64(); }};
}

// `column` bytes stand on the line already.
QByteArray EncodedWords(const QString &text, qsizetype column) {
    const WordCoder coder = CoderFor(text.toUtf8());
    const auto word = [&](const QByteArray &bytes) {
        return QByteArray("=?UTF-8?") + coder.Mark + '?' + coder.Encode(bytes) + "?=";
    };
    QByteArray words;
    QByteArray bytes;
    qsizetype room = std::min(kWordRoom, kEncodedLine - column - kWordFrame);
    for (const QByteArray &character : Characters(text)) {
        if (!bytes.isEmpty() && coder.Encode(bytes + character).size() > room) {
            words += word(bytes) + "\r\n ";
            bytes.clear();
            room = kWordRoom;
        }
        bytes += character;
    }
    return words + word(bytes);
}

// Breaks the line before single blanks; the blank stays, so that unfolding gives the text back. `fixed` bytes
// at the start stay together. Never makes a line of blanks only, which old readers take for the end of the
// headers.
QByteArray Folded(const QByteArray &line, qsizetype fixed) {
    QByteArray folded;
    qsizetype lineStart = 0; // in `folded`
    qsizetype start = 0;     // of the piece: blanks, then a run of other characters
    while (start < line.size()) {
        qsizetype run = std::max(start, fixed);
        while (run < line.size() && line[run] == ' ')
            ++run;
        const qsizetype end = line.indexOf(' ', run) < 0 ? line.size() : line.indexOf(' ', run);
        const bool mayBreak = start >= fixed && run < line.size() && folded.size() > fixed;
        if (mayBreak && folded.size() - lineStart + end - start > kFoldAt) {
            folded += line.mid(start, run - 1 - start) + "\r\n";
            lineStart = folded.size();
            start = run - 1;
        }
        folded += line.mid(start, end - start);
        start = end;
    }
    return folded;
}

QByteArray Quoted(const QString &text) {
    QByteArray bytes = text.toLatin1();
    return '"' + bytes.replace('\\', "\\\\").replace('"', "\\\"") + '"';
}

QByteArray PercentForm(const QByteArray &character) {
    QByteArray form;
    for (const char c : character)
        form += IsWordSafe(c) && c != '*' && c != '/' ? QByteArray(1, c) : Hex('%', c);
    return form;
}

// The value in pieces that fit on a line each.
QList<QByteArray> PercentPieces(const QString &value, qsizetype room) {
    QList<QByteArray> pieces{QByteArrayLiteral("UTF-8''")};
    for (const QByteArray &character : Characters(value)) {
        const QByteArray form = PercentForm(character);
        if (pieces.last().size() + form.size() > room)
            pieces << QByteArray();
        pieces.last() += form;
    }
    return pieces;
}

} // namespace

QByteArray TextHeader(const QByteArray &name, const QString &value) {
    const QString text = OneLine(value);
    const QByteArray start = name + ": ";
    if (text.isEmpty())
        return start + "\r\n";
    if (MustEncode(text))
        return start + EncodedWords(text, start.size()) + "\r\n";
    return Folded(start + text.toLatin1(), start.size()) + "\r\n";
}

QByteArray MailboxHeader(const QByteArray &name, const QString &shownName, const QByteArray &address) {
    const QString text = OneLine(shownName).trimmed();
    QByteArray line = name + ": ";
    if (text.isEmpty())
        return line + address + "\r\n";
    const bool encode = MustEncode(text) || text.size() > kLongestQuoted;
    line += encode ? EncodedWords(text, line.size()) : Quoted(text);
    const qsizetype column = line.size() - line.lastIndexOf('\n') - 1;
    line += column + address.size() + 3 > kFoldAt ? "\r\n <" : " <";
    return line + address + ">\r\n";
}

QByteArray HeaderParameter(const QByteArray &name, const QString &value) {
    const QString text = OneLine(value);
    const QByteArray start = ";\r\n " + name;
    if (IsAscii(text) && text.size() <= kLongestQuoted)
        return start + '=' + Quoted(text);
    const QList<QByteArray> pieces = PercentPieces(text, kFoldAt - name.size() - 10);
    if (pieces.size() == 1)
        return start + "*=" + pieces.first();
    QByteArray parameter;
    for (qsizetype i = 0; i < pieces.size(); ++i)
        parameter += start + '*' + QByteArray::number(i) + "*=" + pieces[i];
    return parameter;
}

} // namespace OSSMTP

#include "core/IniText.h"

#include "core/Literals.h"

#include <QStringList>

namespace varlo::IniText {

namespace {

// The lines with their own ends (CR LF, LF or none), so that joining them gives the text again.
QStringList LinesWithEnds(const QString &text) {
    QStringList lines;
    qsizetype start = 0;
    while (start < text.size()) {
        const qsizetype end = text.indexOf(u'\n', start);
        const qsizetype next = end < 0 ? text.size() : end + 1;
        lines.append(text.sliced(start, next - start));
        start = next;
    }
    return lines;
}

bool SameName(QStringView a, QStringView b) {
    return a.compare(b, Qt::CaseInsensitive) == 0;
}

// The section that a line opens, or nothing.
std::optional<QString> HeaderOf(const QString &line) {
    const QString trimmed = line.trimmed();
    const qsizetype end = trimmed.indexOf(u']');
    if (!trimmed.startsWith(u'[') || end < 0)
        return std::nullopt;
    return trimmed.sliced(1, end - 1).trimmed();
}

// The key that a line sets, or nothing for a comment and any other line.
std::optional<QString> KeyOf(const QString &line) {
    const qsizetype equals = line.indexOf(u'=');
    if (equals < 0 || line.trimmed().startsWith(u';'))
        return std::nullopt;
    return line.left(equals).trimmed();
}

QString AsRead(const QString &written) {
    const QString value = written.trimmed();
    const bool quoted = value.size() >= 2 && (value.front() == u'"' || value.front() == u'\'') &&
                        value.front() == value.back();
    return quoted ? value.sliced(1, value.size() - 2) : value;
}

QString ValueOf(const QString &line) {
    return AsRead(line.sliced(line.indexOf(u'=') + 1));
}

struct SectionLines {
    qsizetype Header = -1; // index of the header line, -1 when there is no such section
    qsizetype End = -1;    // index after the last line of the section
};

SectionLines FindSection(const QStringList &lines, const QString &section) {
    SectionLines found;
    for (qsizetype i = 0; i < lines.size(); ++i) {
        const auto header = HeaderOf(lines[i]);
        if (!header)
            continue;
        if (found.Header >= 0) {
            found.End = i;
            return found;
        }
        if (SameName(*header, section.trimmed()))
            found.Header = i;
    }
    found.End = lines.size();
    return found;
}

qsizetype FindKey(const QStringList &lines, const SectionLines &section, const QString &key) {
    if (section.Header < 0)
        return -1;
    for (qsizetype i = section.Header + 1; i < section.End; ++i) {
        const auto name = KeyOf(lines[i]);
        if (name && SameName(*name, key.trimmed()))
            return i;
    }
    return -1;
}

const QString kLineEnd = u"\r\n"_s;

QString LineEndOf(const QString &line) {
    if (line.endsWith(kLineEnd))
        return kLineEnd;
    return line.endsWith(u'\n') ? u"\n"_s : QString();
}

// A line can follow the last one only after an end of its own.
void EndLine(QStringList &lines, qsizetype index) {
    if (index >= 0 && LineEndOf(lines[index]).isEmpty())
        lines[index] += kLineEnd;
}

void InsertAtEndOf(QStringList &lines, const SectionLines &section, const QString &entry) {
    qsizetype last = section.End - 1; // empty lines before the next section stay between the two
    while (last > section.Header && lines[last].trimmed().isEmpty())
        --last;
    EndLine(lines, last);
    lines.insert(last + 1, entry + kLineEnd);
}

} // namespace

std::optional<QString> Find(const QString &text, const QString &section, const QString &key) {
    const QStringList lines = LinesWithEnds(text);
    const qsizetype line = FindKey(lines, FindSection(lines, section), key);
    if (line < 0)
        return std::nullopt;
    return ValueOf(lines[line]);
}

QString WithValue(const QString &text, const QString &section, const QString &key, const QString &value) {
    QStringList lines = LinesWithEnds(text);
    const SectionLines where = FindSection(lines, section);
    const QString entry = key + u'=' + value;
    if (const qsizetype line = FindKey(lines, where, key); line >= 0) {
        lines[line] = entry + LineEndOf(lines[line]);
    } else if (where.Header >= 0) {
        InsertAtEndOf(lines, where, entry);
    } else {
        EndLine(lines, lines.size() - 1);
        lines << u'[' + section + u']' + kLineEnd << entry + kLineEnd;
    }
    return lines.join(QString());
}

QString Kept(const QString &value) {
    return AsRead(value) == value ? value : u'"' + value + u'"';
}

QString WithoutKey(const QString &text, const QString &section, const QString &key) {
    QStringList lines = LinesWithEnds(text);
    const qsizetype line = FindKey(lines, FindSection(lines, section), key);
    if (line >= 0)
        lines.removeAt(line);
    return lines.join(QString());
}

QString WithoutSection(const QString &text, const QString &section) {
    QStringList lines = LinesWithEnds(text);
    const SectionLines where = FindSection(lines, section);
    if (where.Header >= 0)
        lines.remove(where.Header, where.End - where.Header);
    return lines.join(QString());
}

} // namespace varlo::IniText

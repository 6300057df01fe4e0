#include "history/HistoryIndex.h"

#include "core/Literals.h"
#include "core/TextFile.h"
#include "core/modPublic.h"

#include <QDir>

#include <optional>

namespace varlo::History {

namespace {

const QString kHeadings = u"Version,Cause,Entries,Added,Removed"_s;

QString PathIn(const QString &folder) {
    return QDir(folder).filePath(u"index.csv"_s);
}

QString Quoted(QString text) {
    for (QChar &c : text)
        if (c < u' ')
            c = u' ';
    return u'"' + text.replace(u'"', u"\"\""_s) + u'"';
}

QStringList FieldsOf(const QString &line) {
    QStringList fields{QString()};
    bool isQuoted = false;
    for (const QChar c : line) {
        if (c == u'"')
            isQuoted = !isQuoted;
        if (c == u',' && !isQuoted)
            fields.append(QString());
        else
            fields.last() += c;
    }
    for (QString &field : fields)
        if (field.size() >= 2 && field.startsWith(u'"') && field.endsWith(u'"'))
            field = field.sliced(1, field.size() - 2).replace(u"\"\""_s, u"\""_s);
    return fields;
}

std::optional<IndexRow> RowOf(const QString &line) {
    const QStringList fields = FieldsOf(line);
    if (fields.size() != 5)
        return std::nullopt;
    bool areNumbers = true;
    const auto number = [&](qsizetype field) {
        bool isNumber = false;
        const int value = fields[field].toInt(&isNumber);
        areNumbers = areNumbers && isNumber;
        return value;
    };
    const IndexRow row{fields[0], fields[1], number(2), number(3), number(4)};
    return areNumbers ? std::optional(row) : std::nullopt;
}

} // namespace

QList<IndexRow> ReadIndex(const QString &folder) {
    QList<IndexRow> rows;
    if (!PathExists(PathIn(folder)))
        return rows;
    const QStringList lines = ReadLines(PathIn(folder));
    for (const QString &line : lines)
        if (const auto row = RowOf(line))
            rows.append(*row);
    return rows;
}

void AppendToIndex(const QString &folder, const IndexRow &row) {
    const QString path = PathIn(folder);
    if (!PathExists(path))
        WriteFile(path, EncodeText(kHeadings + u"\r\n"_s));
    AppendLine(path, u"%1,%2,%3,%4,%5"_s.arg(row.Stem, Quoted(row.Cause), QString::number(row.Entries),
                                             QString::number(row.Added), QString::number(row.Removed)));
}

} // namespace varlo::History

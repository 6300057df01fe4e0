#include "import/TablePieces.h"

#include "core/Literals.h"

#include <algorithm>
#include <array>

namespace varlo {

namespace {

constexpr int kSampleRows = 50;
constexpr qsizetype kLongestHeader = 40;   // of one column
constexpr qsizetype kLongestQuote = 65536; // a quotation mark without its partner must not swallow the rest

bool HoldsAny(const QString &text, std::initializer_list<QStringView> words) {
    return std::any_of(words.begin(), words.end(), [&](QStringView word) { return text.contains(word); });
}

// "E-mail 1 - Value" and "Email Address" name addresses, "E-mail 1 - Type" and "Mailing Street" do not.
bool NamesAddresses(QStringView header) {
    if (header.size() > kLongestHeader)
        return false;
    QString name;
    for (QChar c : header.toString().toLower())
        if (c.isLetter())
            name += c;
    const bool isAddress =
        HoldsAny(name, {u"email", u"courriel", u"correo", u"epost", u"mailaddress"}) || name == u"mail";
    return isAddress && !HoldsAny(name, {u"type", u"label", u"display", u"name", u"format", u"opt", u"status",
                                         u"date", u"count", u"sent", u"subject"});
}

QList<int> ColumnsNamed(QStringView header, QChar delimiter) {
    QList<int> columns;
    for (Cells cells(header, delimiter); cells.Next();)
        if (NamesAddresses(cells.Text()))
            columns.append(cells.Column());
    return columns;
}

int CountCells(QStringView row, QChar delimiter) {
    int count = 0;
    for (Cells cells(row, delimiter); cells.Next();)
        ++count;
    return count;
}

struct Row {
    int Cells = 0;
    bool HasAt = false;
    bool IsBlank = true;
};

bool ReadRow(Cells &cells, Row &row) {
    row = {};
    while (cells.Next()) {
        ++row.Cells;
        row.HasAt = row.HasAt || cells.Text().contains(u'@');
        row.IsBlank = row.IsBlank && cells.Text().trimmed().isEmpty();
        if (cells.IsRowEnd())
            return true;
    }
    return row.Cells > 0;
}

// Most rows have as many cells as the header; those of a lone column hold an address.
bool RowsAgree(QStringView text, qsizetype start, QChar delimiter, int width) {
    Cells cells(text, delimiter, start);
    Row row;
    ReadRow(cells, row); // the header
    int rows = 0;
    int agreeing = 0;
    while (rows < kSampleRows && ReadRow(cells, row)) {
        rows += row.IsBlank ? 0 : 1;
        agreeing += row.Cells == width && (width > 1 || row.HasAt) ? 1 : 0;
    }
    return 2 * agreeing > rows;
}

// Some spreadsheets tell the delimiter in a line of its own: "sep=;".
QChar ToldDelimiter(QStringView line) {
    const bool tells = line.size() == 5 && line.startsWith(u"sep=", Qt::CaseInsensitive);
    return tells ? line.back() : QChar();
}

bool IsTable(QStringView text, qsizetype start, QStringView header, QChar delimiter) {
    return !ColumnsNamed(header, delimiter).isEmpty() &&
           RowsAgree(text, start, delimiter, CountCells(header, delimiter));
}

} // namespace

TableForm TableFormOf(QStringView text) {
    Lines lines(text);
    QStringView header;
    qsizetype start = 0;
    QChar told;
    while (lines.Next(header)) {
        const QChar delimiter = ToldDelimiter(header);
        if (delimiter.isNull() && !header.trimmed().isEmpty())
            break;
        told = delimiter.isNull() ? told : delimiter;
        start = lines.Position();
    }
    if (header.contains(u'@'))
        return {};
    TableForm best;
    int widest = 0;
    for (QChar delimiter : {QChar(u'\t'), QChar(u';'), QChar(u','), QChar(u'|'), told}) {
        const int width = CountCells(header, delimiter);
        if (width > widest && !delimiter.isNull() && IsTable(text, start, header, delimiter)) {
            best = {delimiter, ColumnsNamed(header, delimiter), start};
            widest = width;
        }
    }
    return best;
}

Cells::Cells(QStringView text, QChar delimiter, qsizetype start)
    : text_(text), delimiter_(delimiter), at_(start),
      lineNow_(1 + static_cast<int>(text.first(start).count(u'\n'))), line_(lineNow_) {
}

// A cell in quotes with everything in it, two quotation marks for one. False when it is none.
bool Cells::ReadQuoted() {
    qsizetype open = at_;
    while (open < text_.size() && text_[open] == u' ')
        ++open;
    if (open >= text_.size() || text_[open] != u'"')
        return false;
    const qsizetype limit = qMin(text_.size(), open + kLongestQuote);
    qsizetype close = open + 1;
    while (close < limit && (text_[close] != u'"' || (close + 1 < limit && text_[close + 1] == u'"')))
        close += text_[close] == u'"' ? 2 : 1;
    if (close >= limit)
        return false;
    cell_ = text_.sliced(open + 1, close - open - 1);
    lineNow_ += static_cast<int>(cell_.count(u'\n'));
    if (cell_.contains(u'"')) {
        unquoted_ = cell_.toString().replace(u"\"\""_s, u"\""_s);
        cell_ = unquoted_;
    }
    at_ = close + 1;
    return true;
}

void Cells::ReadBare() {
    const auto begin = text_.begin() + at_;
    const auto end = std::find_if(begin, text_.end(),
                                  [this](QChar c) { return c == delimiter_ || c == u'\n' || c == u'\r'; });
    cell_ = QStringView(begin, end);
    at_ += cell_.size();
}

// Goes behind the delimiter or the end of the row; what stands between a closing quote and it is dropped.
void Cells::Finish() {
    const auto isEnd = [this](QChar c) { return c == delimiter_ || c == u'\n' || c == u'\r'; };
    while (at_ < text_.size() && !isEnd(text_[at_]))
        ++at_;
    isRowEnd_ = at_ >= text_.size() || text_[at_] != delimiter_;
    if (at_ < text_.size() && text_[at_] == u'\r' && at_ + 1 < text_.size() && text_[at_ + 1] == u'\n')
        ++at_;
    lineNow_ += isRowEnd_ ? 1 : 0;
    at_ = qMin(text_.size(), at_ + 1);
}

bool Cells::Next() {
    // A delimiter at the very end is followed by an empty cell.
    if (at_ >= text_.size() && isRowEnd_)
        return false;
    column_ = isRowEnd_ ? 0 : column_ + 1;
    line_ = lineNow_;
    if (!ReadQuoted())
        ReadBare();
    Finish();
    return true;
}

TablePieces::TablePieces(QStringView text, const TableForm &form)
    : cells_(text, form.Delimiter, form.Start), columns_(form.Columns), headerLine_(cells_.Line()) {
}

bool TablePieces::Next(Piece &piece) {
    while (cells_.Next()) {
        if (cells_.Line() == headerLine_ || !columns_.contains(cells_.Column()) ||
            cells_.Text().trimmed().isEmpty())
            continue;
        piece = {cells_.Text(), cells_.Line(), true};
        return true;
    }
    return false;
}

} // namespace varlo

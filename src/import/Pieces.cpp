#include "import/Pieces.h"

#include "import/ProsePieces.h"
#include "import/TablePieces.h"
#include "import/VCardPieces.h"

#include <algorithm>

namespace varlo {

bool Lines::Next(QStringView &line) {
    if (at_ >= text_.size())
        return false;
    const auto begin = text_.begin() + at_;
    const auto end = std::find_if(begin, text_.end(), [](QChar c) { return c == u'\n' || c == u'\r'; });
    line = QStringView(begin, end);
    at_ += line.size() + 1;
    if (end != text_.end() && *end == u'\r' && at_ < text_.size() && text_[at_] == u'\n')
        ++at_;
    at_ = std::min(at_, text_.size());
    ++number_;
    return true;
}

namespace {

constexpr int kSampleLines = 200;

// One address a line, as a list file has it: no line of the sample holds two words, and half of them hold an "@".
bool IsListOfAddresses(QStringView text) {
    Lines lines(text);
    int filled = 0;
    int withAt = 0;
    for (QStringView line; lines.Number() < kSampleLines && lines.Next(line);) {
        QStringView trimmed = line.trimmed();
        if (trimmed.endsWith(u',') || trimmed.endsWith(u';'))
            trimmed.chop(1);
        if (trimmed.isEmpty())
            continue;
        if (std::any_of(trimmed.begin(), trimmed.end(), [](QChar c) {
                return c.isSpace() || c == u',' || c == u';' || c == u'<' || c == u':';
            }))
            return false;
        ++filled;
        withAt += trimmed.contains(u'@') ? 1 : 0;
    }
    return filled > 1 && 2 * withAt >= filled;
}

} // namespace

std::unique_ptr<Pieces> PiecesOf(QStringView text) {
    if (HoldsVCards(text))
        return std::make_unique<VCardPieces>(text);
    if (const TableForm form = TableFormOf(text); !form.Columns.isEmpty())
        return std::make_unique<TablePieces>(text, form);
    if (IsListOfAddresses(text))
        return std::make_unique<LinePieces>(text);
    return std::make_unique<ProsePieces>(text);
}

} // namespace varlo

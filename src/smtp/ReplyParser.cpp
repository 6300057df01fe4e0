#include "smtp/ReplyParser.h"

#include "core/TextFile.h"

namespace OSSMTP {

namespace {

bool IsDigit(char c, char lowest = '0', char highest = '9') {
    return c >= lowest && c <= highest;
}

// "250", "250 text" or "250-text".
bool IsReplyLine(QByteArrayView line) {
    return line.size() >= 3 && IsDigit(line[0], '1', '5') && IsDigit(line[1]) && IsDigit(line[2]) &&
           (line.size() == 3 || line[3] == ' ' || line[3] == '-');
}

int CodeOf(QByteArrayView line) {
    return (line[0] - '0') * 100 + (line[1] - '0') * 10 + (line[2] - '0');
}

} // namespace

QString Reply::Description() const {
    QString text = varlo::DecodeText(Text);
    for (QChar &c : text)
        if (c.category() == QChar::Other_Control)
            c = QLatin1Char(' ');
    return text.trimmed();
}

void ReplyParser::Add(QByteArrayView bytes) {
    if (broken_)
        return;
    buffer_.append(bytes);
}

std::optional<Reply> ReplyParser::Next() {
    while (const auto line = NextLine()) {
        if (!IsReplyLine(*line)) {
            Break();
            break;
        }
        if (auto reply = TakeLine(*line))
            return reply;
    }
    if (buffer_.size() - start_ + text_.size() > kLongestReply)
        Break();
    return {};
}

std::optional<QByteArrayView> ReplyParser::NextLine() {
    const qsizetype end = buffer_.indexOf('\n', scanned_);
    if (end < 0) {
        buffer_.remove(0, start_);
        start_ = 0;
        scanned_ = buffer_.size();
        return {};
    }
    QByteArrayView line = QByteArrayView(buffer_).sliced(start_, end - start_);
    if (line.endsWith('\r'))
        line.chop(1);
    start_ = scanned_ = end + 1;
    return line;
}

// The code of the last line counts: servers that vary it within one reply exist, and all readers do it so.
std::optional<Reply> ReplyParser::TakeLine(QByteArrayView line) {
    if (std::exchange(partial_, line.size() > 3 && line[3] == '-'))
        text_.append('\n');
    text_.append(line.sliced(std::min<qsizetype>(4, line.size())));
    if (partial_) {
        if (text_.size() > kLongestReply)
            Break();
        return {};
    }
    Reply reply{CodeOf(line), std::exchange(text_, QByteArray())};
    if (start_ == buffer_.size())
        Clear();
    return reply;
}

void ReplyParser::Break() {
    Clear();
    broken_ = true;
}

void ReplyParser::Clear() {
    buffer_.resize(0); // keeps the memory for the next reply
    text_ = QByteArray();
    partial_ = false;
    start_ = scanned_ = 0;
    broken_ = false;
}

} // namespace OSSMTP

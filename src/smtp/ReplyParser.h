// Bytes from an SMTP server in, whole replies out; touches no socket.
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include <optional>

namespace OSSMTP {

struct Reply {
    int Code = 0;    // three digits
    QByteArray Text; // all lines joined by LF, as the server sent them

    bool IsRefusal() const { return Code >= 400; }
    // The text for a person: decoded, control characters (zeros too) as blanks.
    QString Description() const;

    bool operator==(const Reply &) const = default;
};

// One reply is one or more lines "250-text", the last one "250 text"; lines may end with LF alone. What is
// not a reply, or longer than kLongestReply, breaks the parser: from then on it takes and gives nothing until
// Clear.
class ReplyParser {
public:
    static constexpr qsizetype kLongestReply = 64 * 1024; // bytes; a server may not fill the memory

    void Add(QByteArrayView bytes);
    // The next complete reply, once.
    std::optional<Reply> Next();
    bool IsBroken() const { return broken_; }
    // Nothing is left over, not even a part of a line.
    bool IsEmpty() const { return buffer_.isEmpty() && !partial_; }
    void Clear();

private:
    std::optional<QByteArrayView> NextLine();
    std::optional<Reply> TakeLine(QByteArrayView line);
    void Break();

    QByteArray buffer_;
    qsizetype start_ = 0;   // of the first line not taken yet
    qsizetype scanned_ = 0; // no line end lies between start_ and here
    QByteArray text_;       // of the lines of a reply that is not complete
    bool partial_ = false;  // there are such lines
    bool broken_ = false;
};

} // namespace OSSMTP

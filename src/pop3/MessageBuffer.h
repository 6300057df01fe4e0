// The text of a multi-line reply while it arrives.
#pragma once

#include <QByteArray>
#include <QString>

namespace varlo {

// Bytes go in as they come, in chunks of any size; each is looked at once for the end mark, so that a message
// of 50 MB costs 50 times one of 1 MB.
class MessageBuffer {
public:
    // Above the largest message that the program is built for, in bytes.
    static constexpr qsizetype kLongest = qsizetype(64) * 1024 * 1024;

    // Appends the chunk. True when the text now holds the end mark: LF, a point, CR LF.
    bool Append(const QByteArray &chunk);

    // Cuts off the first line (the server's status line) and the last three characters (the point of the end
    // mark with its line end). Only after Append has returned true.
    void Strip();

    // The part of the text that is ever read: up to and including the first empty line, decoded; empty when
    // there is no empty line. Decoded apart from the body, so that a body in another character set cannot
    // spoil a sender's name.
    QString Head() const;

    // Forgets the text and gives its memory back.
    void Clear();

    // More than kLongest without an end mark: the server may never end it.
    bool IsTooLong() const { return bytes_.size() > kLongest; }

    // Size of the text and the number of bytes that were looked at for the end mark since the last Clear, in
    // bytes.
    qsizetype Size() const { return bytes_.size(); }
    qint64 Searched() const { return searched_; }

private:
    QByteArray bytes_;
    qsizetype clean_ = 0; // no end mark lies wholly within this many bytes
    qint64 searched_ = 0;
};

} // namespace varlo

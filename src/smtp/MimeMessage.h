// A message as it goes over the wire: small headers made for each recipient, and one encoded content for all
// of them.
#pragma once

#include "smtp/Mailbox.h"

#include <QByteArray>
#include <QString>

#include <functional>
#include <vector>

namespace OSSMTP {

// A file as it was when it was added; equal ones need not be read again.
struct Attachment {
    QString Path;
    qint64 Size = 0;
    qint64 Modified = 0; // milliseconds since 1970

    bool operator==(const Attachment &) const = default;
};

// The state of the file at `path`. Throws RuntimeError: 53 when there is none, 70 when it is no file.
Attachment DescribeFile(const QString &path);

// Throws RuntimeError (53, 70) unless the file can be opened for reading.
void CheckReadable(const QString &path);

// What is the same for every recipient, from the Content-Type header to the dot that ends the message. Made
// when asked for and kept until the text or an attachment is another one.
class MessageContent {
public:
    // Called between pieces of a file; false stops the encoding.
    using GoOn = std::function<bool()>;

    // Bytes to be shared, not copied; null when `goOn` stopped it. Files are read piece by piece, so that the
    // encoded form is the only copy in memory. Throws RuntimeError (53, 70, 57) when a file cannot be read;
    // nothing is kept then.
    QByteArray Encode(const QString &text, const std::vector<Attachment> &attachments, const GoOn &goOn);

    // Whether `attachment` is part of the content that is kept.
    bool Holds(const Attachment &attachment) const;

private:
    QString text_;
    std::vector<Attachment> attachments_;
    QByteArray encoded_; // null when nothing is kept
};

// The headers of one message: Date, From, To, Message-ID, MIME-Version, with `subjectHeader` among them.
class MessageHeaders {
public:
    MessageHeaders();
    QByteArray Render(const Mailbox &from, const Mailbox &to, const QByteArray &subjectHeader);

private:
    QByteArray DateText();
    QByteArray NextId(const QByteArray &domain);

    QByteArray run_;         // random, makes the identifiers of this run differ from all others
    quint64 count_ = 0;      // of messages so far
    qint64 dateSecond_ = -1; // for which dateText_ holds
    QByteArray dateText_;
};

} // namespace OSSMTP

// A message as it goes over the wire: small headers made for each recipient, and one encoded content for all
// of them.
#pragma once

#include "smtp/Mailbox.h"

#include <QByteArray>
#include <QFile>
#include <QString>

#include <memory>
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

// The type under which a file of that MIME type travels. Messages and multiparts must not be encoded, says
// MIME; as plain bytes they may, and arrive unchanged.
QByteArray AttachmentType(const QString &type);

// What is the same for every recipient, from the Content-Type header to the dot that ends the message. Made
// piece by piece, so that other work can go on in between, and kept until the text or an attachment is another
// one.
class MessageContent {
public:
    // What Step is to encode. What is kept of the same text and attachments is complete at once.
    void Begin(const QString &text, const std::vector<Attachment> &attachments);
    // Encodes one more piece, which takes a few milliseconds at most; true when all is done. Throws
    // RuntimeError (53, 70, 57) when a file cannot be read; nothing is kept then.
    bool Step();

    // Once Step has said true: bytes to be shared, not copied, the only copy of the encoded form in memory.
    const QByteArray &Bytes() const { return encoded_; }
    // Bytes of the message as a server counts them: without the dots that were doubled and without the last.
    qint64 Size() const;
    // Appends those bytes.
    void AppendAsCounted(QByteArray &out) const;

private:
    void BeginParts();
    void BeginFile(const QString &path);
    void ReadOn();
    void Complete();

    QString text_;
    std::vector<Attachment> attachments_;
    QByteArray encoded_;
    QByteArray boundary_;
    std::size_t begun_ = 0; // attachments
    std::unique_ptr<QFile> file_;
    qsizetype doubledDots_ = 0;
    bool complete_ = false;
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

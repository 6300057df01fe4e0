#include "smtp/MimeMessage.h"

#include "core/RuntimeError.h"
#include "smtp/BodyText.h"
#include "smtp/HeaderText.h"

#include <QDateTime>
#include <QFileInfo>
#include <QMimeDatabase>
#include <QRandomGenerator>

namespace OSSMTP {

namespace {

constexpr qint64 kPiece = kBase64Line * 4096; // bytes read from a file at once
constexpr qint64 kPartHeaders = 2048;         // room for the headers of one part
constexpr QByteArrayView kEnd(".\r\n");

QByteArray RandomHex() {
    return QByteArray::number(QRandomGenerator::system()->generate64(), 16);
}

void AppendText(QByteArray &out, const QByteArray &text) {
    const bool sevenBit = FitsSevenBit(text);
    out += "Content-Type: text/plain; charset=utf-8\r\nContent-Transfer-Encoding: ";
    out += sevenBit ? "7bit\r\n\r\n" : "quoted-printable\r\n\r\n";
    sevenBit ? AppendSevenBit(out, text) : AppendQuotedPrintable(out, text);
}

void AppendFileHeaders(QByteArray &out, const QString &path) {
    const QString name = QFileInfo(path).fileName();
    const QString type = QMimeDatabase().mimeTypeForFile(path).name();
    out += "Content-Type: " + AttachmentType(type) + HeaderParameter("name", name) +
           "\r\nContent-Transfer-Encoding: base64\r\nContent-Disposition: attachment" +
           HeaderParameter("filename", name) + "\r\n\r\n";
}

// Bytes read; fewer than a piece only at the end of the file, so that base64 has no gap in the middle.
qint64 ReadPiece(QFile &file, QByteArray &piece) {
    qint64 size = 0;
    while (size < piece.size()) {
        const qint64 more = file.read(piece.data() + size, piece.size() - size);
        if (more < 0)
            throw varlo::RuntimeError(varlo::DeviceIoError);
        if (more == 0)
            break;
        size += more;
    }
    return size;
}

// Enough for the whole content, so that it never has to be moved to a larger place while it grows.
qint64 Estimate(const QByteArray &text, const std::vector<Attachment> &attachments) {
    qint64 size = text.size() + text.size() / 8 + kPartHeaders;
    for (const Attachment &attachment : attachments)
        size += Base64Size(attachment.Size) + kPartHeaders + attachment.Path.size() * 24;
    return size;
}

} // namespace

QByteArray AttachmentType(const QString &type) {
    for (const char *composite : {"message/", "multipart/", "inode/"})
        if (type.startsWith(QLatin1String(composite)))
            return QByteArrayLiteral("application/octet-stream");
    return type.toLatin1();
}

Attachment DescribeFile(const QString &path) {
    const QFileInfo info(path);
    if (!info.exists())
        throw varlo::RuntimeError(varlo::FileNotFound);
    if (!info.isFile())
        throw varlo::RuntimeError(varlo::PermissionDenied);
    return {path, info.size(), info.lastModified().toMSecsSinceEpoch()};
}

void MessageContent::Begin(const QString &text, const std::vector<Attachment> &attachments) {
    if (complete_ && text == text_ && attachments == attachments_)
        return;
    *this = MessageContent();
    text_ = text;
    attachments_ = attachments;
    const QByteArray utf8 = text.toUtf8();
    encoded_.reserve(Estimate(utf8, attachments));
    if (!attachments.empty())
        BeginParts();
    const qsizetype start = encoded_.size();
    AppendText(encoded_, utf8);
    doubledDots_ = QByteArrayView(encoded_).sliced(start).count("\r\n.");
}

void MessageContent::BeginParts() {
    boundary_ = "=_" + RandomHex() + RandomHex(); // in no encoded line
    encoded_ +=
        "Content-Type: multipart/mixed;\r\n boundary=\"" + boundary_ + "\"\r\n\r\n--" + boundary_ + "\r\n";
}

bool MessageContent::Step() {
    if (complete_)
        return true;
    try {
        if (file_)
            ReadOn();
        else if (begun_ < attachments_.size())
            BeginFile(attachments_[begun_++].Path);
        else
            Complete();
    } catch (const varlo::RuntimeError &) {
        *this = MessageContent();
        throw;
    }
    return complete_;
}

void MessageContent::BeginFile(const QString &path) {
    file_ = std::make_unique<QFile>(path);
    if (!file_->open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        throw varlo::FileError(*file_);
    encoded_ += "\r\n--" + boundary_ + "\r\n";
    AppendFileHeaders(encoded_, path);
}

void MessageContent::ReadOn() {
    QByteArray piece(kPiece, Qt::Uninitialized);
    const qint64 size = ReadPiece(*file_, piece);
    AppendBase64(encoded_, QByteArrayView(piece).first(size));
    if (size < kPiece)
        file_.reset();
}

void MessageContent::Complete() {
    if (!attachments_.empty())
        encoded_ += "\r\n--" + boundary_ + "--\r\n";
    encoded_ += kEnd;
    complete_ = true;
}

qint64 MessageContent::Size() const {
    return encoded_.size() - doubledDots_ - qsizetype(kEnd.size());
}

// No line of what is not the text begins with a dot.
void MessageContent::AppendAsCounted(QByteArray &out) const {
    const QByteArrayView whole = QByteArrayView(encoded_).chopped(kEnd.size());
    if (doubledDots_ > 0)
        out += whole.toByteArray().replace("\r\n..", "\r\n.");
    else
        out += whole;
}

MessageHeaders::MessageHeaders() : run_(RandomHex()) {
}

QByteArray MessageHeaders::Render(const Mailbox &from, const Mailbox &to, const QByteArray &subjectHeader) {
    return "Date: " + DateText() + "\r\n" + MailboxHeader("From", from.Name, from.Address) +
           MailboxHeader("To", to.Name, to.Address) + subjectHeader + "Message-ID: <" +
           NextId(DomainOf(from.Address)) + ">\r\nMIME-Version: 1.0\r\n";
}

QByteArray MessageHeaders::DateText() {
    const qint64 second = QDateTime::currentSecsSinceEpoch();
    if (second != dateSecond_) {
        dateText_ = QDateTime::fromSecsSinceEpoch(second).toString(Qt::RFC2822Date).toLatin1();
        dateSecond_ = second;
    }
    return dateText_;
}

QByteArray MessageHeaders::NextId(const QByteArray &domain) {
    return QByteArray::number(QDateTime::currentMSecsSinceEpoch(), 36) + '.' + QByteArray::number(++count_) +
           '.' + run_ + '@' + domain;
}

} // namespace OSSMTP

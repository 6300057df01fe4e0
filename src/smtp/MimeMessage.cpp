#include "smtp/MimeMessage.h"

#include "core/RuntimeError.h"
#include "smtp/BodyText.h"
#include "smtp/HeaderText.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QMimeDatabase>
#include <QRandomGenerator>

namespace OSSMTP {

namespace {

constexpr qint64 kPiece = kBase64Line * 4096; // bytes read from a file at once
constexpr qint64 kPartHeaders = 2048;         // room for the headers of one part

QByteArray RandomHex() {
    return QByteArray::number(QRandomGenerator::system()->generate64(), 16);
}

// Messages and multiparts must not be encoded, says MIME; as plain bytes they may, and arrive unchanged.
QByteArray TypeOf(const QString &path) {
    const QString type = QMimeDatabase().mimeTypeForFile(path).name();
    for (const char *composite : {"message/", "multipart/", "inode/"})
        if (type.startsWith(QLatin1String(composite)))
            return QByteArrayLiteral("application/octet-stream");
    return type.toLatin1();
}

void AppendText(QByteArray &out, const QByteArray &text) {
    const bool sevenBit = FitsSevenBit(text);
    out += "Content-Type: text/plain; charset=utf-8\r\nContent-Transfer-Encoding: ";
    out += sevenBit ? "7bit\r\n\r\n" : "quoted-printable\r\n\r\n";
    sevenBit ? AppendSevenBit(out, text) : AppendQuotedPrintable(out, text);
}

void AppendFileHeaders(QByteArray &out, const QString &path) {
    const QString name = QFileInfo(path).fileName();
    out += "Content-Type: " + TypeOf(path) + HeaderParameter("name", name) +
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

// False when `goOn` stopped it.
bool AppendFile(QByteArray &out, const QString &path, const MessageContent::GoOn &goOn) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        throw varlo::FileError(file);
    AppendFileHeaders(out, path);
    QByteArray piece(kPiece, Qt::Uninitialized);
    while (goOn()) {
        const qint64 size = ReadPiece(file, piece);
        AppendBase64(out, QByteArrayView(piece).first(size));
        if (size < kPiece)
            return true;
    }
    return false;
}

// Enough for the whole content, so that it never has to be moved to a larger place while it grows.
qint64 Estimate(const QByteArray &text, const std::vector<Attachment> &attachments) {
    qint64 size = text.size() + text.size() / 8 + kPartHeaders;
    for (const Attachment &attachment : attachments)
        size += Base64Size(attachment.Size) + kPartHeaders + attachment.Path.size() * 24;
    return size;
}

bool AppendMultipart(QByteArray &out, const QByteArray &text, const std::vector<Attachment> &attachments,
                     const MessageContent::GoOn &goOn) {
    const QByteArray boundary = "=_" + RandomHex() + RandomHex(); // in no encoded line
    out += "Content-Type: multipart/mixed;\r\n boundary=\"" + boundary + "\"\r\n\r\n--" + boundary + "\r\n";
    AppendText(out, text);
    for (const Attachment &attachment : attachments) {
        out += "\r\n--" + boundary + "\r\n";
        if (!AppendFile(out, attachment.Path, goOn))
            return false;
    }
    out += "\r\n--" + boundary + "--\r\n";
    return true;
}

} // namespace

Attachment DescribeFile(const QString &path) {
    const QFileInfo info(path);
    if (!info.exists())
        throw varlo::RuntimeError(varlo::FileNotFound);
    if (!info.isFile())
        throw varlo::RuntimeError(varlo::PermissionDenied);
    return {path, info.size(), info.lastModified().toMSecsSinceEpoch()};
}

void CheckReadable(const QString &path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw varlo::RuntimeError(file.exists() ? varlo::PermissionDenied : varlo::FileNotFound);
}

QByteArray MessageContent::Encode(const QString &text, const std::vector<Attachment> &attachments,
                                  const GoOn &goOn) {
    if (!encoded_.isNull() && text == text_ && attachments == attachments_)
        return encoded_;
    encoded_ = QByteArray();
    const QByteArray utf8 = text.toUtf8();
    QByteArray out;
    out.reserve(Estimate(utf8, attachments));
    if (attachments.empty())
        AppendText(out, utf8);
    else if (!AppendMultipart(out, utf8, attachments, goOn))
        return {};
    out += ".\r\n";
    text_ = text;
    attachments_ = attachments;
    encoded_ = out;
    return encoded_;
}

bool MessageContent::Holds(const Attachment &attachment) const {
    return !encoded_.isNull() &&
           std::find(attachments_.begin(), attachments_.end(), attachment) != attachments_.end();
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

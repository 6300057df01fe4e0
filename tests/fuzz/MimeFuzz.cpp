// What an operator may type or a list may hold, on its way into commands, headers and bodies. The first byte
// chooses what the rest is taken for.

#include "fuzz/FuzzSupport.h"
#include "net/Endpoint.h"
#include "smtp/BodyText.h"
#include "smtp/HeaderText.h"
#include "smtp/Mailbox.h"

#include <QHostAddress>
#include <QString>

using namespace OSSMTP;
using varlo::fuzz::Input;
using varlo::fuzz::Require;

namespace {

// Whole lines, none too long, none of a second header, nothing but ASCII.
void CheckHeader(const QByteArray &header) {
    Require(header.endsWith("\r\n"), "a header is ended");
    qsizetype start = 0;
    while (start < header.size()) {
        const qsizetype end = header.indexOf("\r\n", start);
        const QByteArray line = header.mid(start, end - start);
        Require(line.size() <= 998, "no line is too long");
        Require(start == 0 || line.startsWith(' '), "no value adds a header");
        Require(start == 0 || !line.trimmed().isEmpty(), "no line of blanks");
        for (const char c : line)
            Require(c >= ' ' && c < 0x7F, "only harmless characters");
        start = end + 2;
    }
}

void CheckAddress(const QString &text) {
    const Mailbox mailbox = ParseMailbox(text);
    for (const char c : mailbox.Address)
        Require(static_cast<unsigned char>(c) > ' ' && c != '<' && c != '>' && c != 0x7F,
                "an address stays one");
    if (!mailbox.NeedsUtf8)
        CheckHeader(MailboxHeader("To", mailbox.Name, mailbox.Address));
}

void CheckBody(const QByteArray &body, qsizetype longest) {
    qsizetype start = 0;
    while (start < body.size()) {
        const qsizetype end = body.indexOf("\r\n", start);
        Require(end >= 0, "every line is ended");
        const QByteArray line = body.mid(start, end - start);
        Require(line != "." && (!line.startsWith('.') || line.startsWith("..")), "dots are doubled");
        Require(line.size() <= longest + (line.startsWith('.') ? 1 : 0), "no line is too long");
        Require(!line.contains('\r') && !line.contains('\n'), "no stray line end");
        start = end + 2;
    }
}

void CheckBodies(const QByteArray &text) {
    QByteArray out;
    AppendQuotedPrintable(out, text);
    CheckBody(out, 76);
    out.clear();
    if (!FitsSevenBit(text))
        return;
    AppendSevenBit(out, text);
    CheckBody(out, kLongestLine);
}

void CheckBase64(const QByteArray &data) {
    QByteArray out;
    AppendBase64(out, data);
    CheckBody(out, 76);
    Require(out.size() == Base64Size(data.size()), "the size is known before");
    Require(QByteArray::fromBase64(out.replace("\r\n", "")) == data, "it can be read back");
}

void CheckServer(const QString &host) {
    const QString name = varlo::net::HostName(host);
    const bool isAddress = !QHostAddress(name).isNull();
    for (const QChar c : name)
        Require(c.isLetterOrNumber() || c == u'-' || c == u'_' || c == u'.' ||
                    (isAddress && (c == u':' || c == u'%')),
                "nothing but a host comes in");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    constexpr int kinds = 6;
    Input input(data, size);
    const int kind = input.Byte() % kinds;
    const QByteArray bytes = input.Rest();
    const QString text = QString::fromUtf8(bytes);
    switch (kind) {
    case 0:
        CheckHeader(TextHeader("Subject", text));
        break;
    case 1:
        CheckAddress(text);
        break;
    case 2:
        CheckHeader("Content-Type: x/y" + HeaderParameter("name", text) + "\r\n");
        break;
    case 3:
        CheckBodies(bytes);
        break;
    case 4:
        CheckBase64(bytes);
        break;
    default:
        CheckServer(text);
        break;
    }
    return 0;
}

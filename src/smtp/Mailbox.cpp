#include "smtp/Mailbox.h"

#include "core/Ascii.h"

#include <QUrl>

namespace OSSMTP {

namespace {

using varlo::IsAscii;

// Twice what servers must take; longer ones would break the line limit of the header that shows them.
constexpr qsizetype kLongestAddress = 512;

// Such a character would end the command or the header that the address stands in, or change the address.
bool IsForbidden(QChar c) {
    return c.isSpace() || c.category() == QChar::Other_Control || c == QLatin1Char('<') ||
           c == QLatin1Char('>');
}

bool IsUsable(const QString &address) {
    return !address.isEmpty() && std::none_of(address.begin(), address.end(), IsForbidden) &&
           address.isValidUtf16();
}

// The address with its domain in ASCII; empty when that cannot be.
QByteArray WireForm(const QString &address) {
    const qsizetype at = address.lastIndexOf(QLatin1Char('@'));
    const QString domain = address.mid(at + 1);
    if (at < 0 || IsAscii(domain))
        return address.toUtf8();
    const QByteArray ascii = QUrl::toAce(domain);
    return ascii.isEmpty() ? QByteArray() : address.left(at + 1).toUtf8() + ascii;
}

QString WithoutQuotes(const QString &name) {
    const bool quoted =
        name.size() > 1 && name.startsWith(QLatin1Char('"')) && name.endsWith(QLatin1Char('"'));
    return quoted ? name.mid(1, name.size() - 2) : name;
}

// A quoted name that does not end where the bracket begins: the bracket belongs to the address, which is then
// none.
bool IsCutShort(const QString &name) {
    return name.startsWith(QLatin1Char('"')) && (name.size() == 1 || !name.endsWith(QLatin1Char('"')));
}

void Split(const QString &text, Mailbox &mailbox) {
    const qsizetype open = text.lastIndexOf(QLatin1Char('<'));
    const qsizetype close = text.lastIndexOf(QLatin1Char('>'));
    const QString name = text.left(std::max<qsizetype>(open, 0)).trimmed();
    if (open < 0 || close < open || IsCutShort(name)) {
        mailbox.Given = text.trimmed();
        return;
    }
    mailbox.Name = WithoutQuotes(name);
    mailbox.Given = text.mid(open + 1, close - open - 1);
}

} // namespace

Mailbox ParseMailbox(const QString &text) {
    Mailbox mailbox;
    Split(text, mailbox);
    if (!IsUsable(mailbox.Given))
        return mailbox;
    const QByteArray address = WireForm(mailbox.Given);
    if (address.size() > kLongestAddress)
        return mailbox;
    mailbox.Address = address;
    mailbox.NeedsUtf8 = !IsAscii(QString::fromUtf8(address));
    return mailbox;
}

QByteArray DomainOf(const QByteArray &address) {
    const QByteArray domain = address.mid(address.lastIndexOf('@') + 1);
    return domain.isEmpty() || !address.contains('@') ? QByteArrayLiteral("localhost") : domain;
}

} // namespace OSSMTP

// One mailbox text taken apart: the name to show and the address for the wire.
#pragma once

#include <QByteArray>
#include <QString>

namespace OSSMTP {

struct Mailbox {
    QString Name;           // without its quotes; may be empty
    QString Given;          // the address as it stood in the text, for messages to the operator
    QByteArray Address;     // for commands and headers, the domain in ASCII; empty when it must not be used
    bool NeedsUtf8 = false; // the local part is not ASCII

    bool operator==(const Mailbox &) const = default;
};

// Reads `"Name" <address>`, `Name <address>` or a bare address. The address lies between the last "<" and the
// last ">", so that the name may hold quotes and brackets.
Mailbox ParseMailbox(const QString &text);

// The domain of `address`, or "localhost" when it has none.
QByteArray DomainOf(const QByteArray &address);

} // namespace OSSMTP

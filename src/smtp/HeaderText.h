// Header lines of a message: folded, non-ASCII text encoded, line breaks made harmless.
#pragma once

#include <QByteArray>
#include <QString>

namespace OSSMTP {

// Each returns whole lines with their CR LF. Control characters in a value become blanks, one each, so that
// no value can add a line; text that is not ASCII becomes RFC 2047 words of at most 75 characters that never
// split a character. Lines are at most 78 bytes where the text has blanks to fold at, and never longer than
// 998.

// "Subject: text".
QByteArray TextHeader(const QByteArray &name, const QString &value);

// "To: "name" <address>", or the bare address when there is no name. `address` must be fit for the wire.
QByteArray MailboxHeader(const QByteArray &name, const QString &shownName, const QByteArray &address);

// One parameter of a Content- header, to be put behind its value: ;CR LF blank name="value", or in the form
// of RFC 2231 (in numbered pieces when it is long) when the value is not ASCII.
QByteArray HeaderParameter(const QByteArray &name, const QString &value);

} // namespace OSSMTP

// A message as a mail reader sees it: headers unfolded and decoded, text and files taken out of their
// encodings.
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <utility>

namespace varlo::test {

struct ReceivedFile {
    QString Name;
    QByteArray Type;
    QByteArray Bytes;

    bool operator==(const ReceivedFile &) const = default;
};

void PrintTo(const ReceivedFile &file, std::ostream *out);

struct ReceivedMail {
    QList<std::pair<QByteArray, QByteArray>> Headers; // names lower-cased, values unfolded but not decoded
    QString Text;                                     // lines end with CR LF
    QByteArray TextEncoding;                          // "7bit" or "quoted-printable"
    QList<ReceivedFile> Files;

    // The decoded value of the only header of that name; a test failure when there are none or several.
    QString Header(const QByteArray &name) const;
};

// Written for the tests alone, apart from the encoder. Broken mail is a test failure.
ReceivedMail ReadMail(const QByteArray &data);

// The text of a header value with RFC 2047 words.
QString DecodeWords(const QByteArray &value);

} // namespace varlo::test

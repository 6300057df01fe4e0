// Bodies in the form in which they travel: lines end with CR LF, leading dots doubled, nothing longer than
// allowed.
#pragma once

#include <QByteArray>
#include <QByteArrayView>

namespace OSSMTP {

constexpr qsizetype kLongestLine = 998; // bytes without the line end
constexpr qsizetype kBase64Line = 57;   // bytes of data in one line of 76 characters

// Whether `text` can travel as it is: ASCII without zeros, no line longer than kLongestLine.
bool FitsSevenBit(QByteArrayView text);

// Appends the lines of `text` to `out`. CR LF, a lone CR and a lone LF each end a line; the last line is
// ended too.
void AppendSevenBit(QByteArray &out, QByteArrayView text);
// The same as quoted-printable.
void AppendQuotedPrintable(QByteArray &out, QByteArrayView text);

// Appends `data` as base64 lines. All calls for one body but the last take whole lines (a multiple of
// kBase64Line).
void AppendBase64(QByteArray &out, QByteArrayView data);
// Bytes that AppendBase64 makes of `size` bytes.
qint64 Base64Size(qint64 size);

} // namespace OSSMTP

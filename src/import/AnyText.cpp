#include "import/AnyText.h"

#include "core/TextFile.h"

#include <QStringDecoder>

#include <initializer_list>

namespace varlo {

namespace {

constexpr qsizetype kSample = 4096; // what is looked at to guess the encoding

// How many bytes of the sample are zero, beginning with the first or the second, every other one.
qsizetype Zeros(QByteArrayView sample, qsizetype first) {
    qsizetype zeros = 0;
    for (qsizetype i = first; i < sample.size(); i += 2)
        zeros += sample[i] == 0 ? 1 : 0;
    return zeros;
}

// Addresses are ASCII nearly everywhere, so one half of the bytes of their UTF-16 is zero.
std::optional<QStringConverter::Encoding> Utf16Of(const QByteArray &bytes) {
    if (bytes.startsWith("\xFF\xFE"))
        return QStringConverter::Utf16LE;
    if (bytes.startsWith("\xFE\xFF"))
        return QStringConverter::Utf16BE;
    const QByteArrayView sample = QByteArrayView(bytes).first(qMin(bytes.size(), kSample));
    const qsizetype even = Zeros(sample, 0);
    const qsizetype odd = Zeros(sample, 1);
    const qsizetype many = sample.size() / 4;
    if (odd > many && even == 0)
        return QStringConverter::Utf16LE;
    if (even > many && odd == 0)
        return QStringConverter::Utf16BE;
    return std::nullopt;
}

// Archives (spreadsheets and documents are such) and PDF begin so; no text holds a zero byte.
bool IsBinary(const QByteArray &bytes) {
    for (const char *start : {"PK\x03\x04", "%PDF-", "{\\rtf"})
        if (bytes.startsWith(start))
            return true;
    return bytes.contains('\0');
}

} // namespace

std::optional<QString> DecodeAnyText(const QByteArray &bytes) {
    if (const auto utf16 = Utf16Of(bytes)) {
        QStringDecoder decoder(*utf16);
        return QString(decoder.decode(bytes));
    }
    if (IsBinary(bytes))
        return std::nullopt;
    return DecodeText(bytes);
}

} // namespace varlo

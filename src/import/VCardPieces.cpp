#include "import/VCardPieces.h"

#include "core/Literals.h"
#include "core/TextFile.h"
#include "import/MailHeader.h"

namespace varlo {

namespace {

// "=40" to "@", the soft line ends having gone before.
QString FromQuotedPrintable(QStringView value) {
    const QByteArray encoded = value.toUtf8();
    QByteArray bytes;
    for (qsizetype i = 0; i < encoded.size(); ++i) {
        const bool isCode = encoded[i] == '=' && i + 2 < encoded.size();
        bytes += isCode ? QByteArray::fromHex(encoded.sliced(i + 1, 2)) : encoded.sliced(i, 1);
        i += isCode ? 2 : 0;
    }
    return DecodeText(bytes);
}

// "\," to "," and "\;" to ";"; an escaped line break becomes a blank.
QString Unescaped(const QString &value) {
    QString plain;
    for (qsizetype i = 0; i < value.size(); ++i) {
        const bool isEscape = value[i] == u'\\' && i + 1 < value.size();
        if (!isEscape)
            plain += value[i];
        else
            plain += value[++i].toLower() == u'n' ? QChar(u' ') : value[i];
    }
    return plain;
}

// "item1.EMAIL;TYPE=work" to "EMAIL".
QStringView NameOf(QStringView head) {
    const qsizetype parameters = head.indexOf(u';');
    const QStringView name = parameters < 0 ? head : head.first(parameters);
    return name.sliced(name.lastIndexOf(u'.') + 1);
}

} // namespace

bool HoldsVCards(QStringView text) {
    return text.indexOf(u"BEGIN:VCARD") >= 0 || text.indexOf(u"begin:vcard") >= 0;
}

// In the oldest form of cards a "=" at the end of a line joins the next one to it.
bool VCardPieces::IsContinued(QStringView line, bool isQuotedPrintable) const {
    const qsizetype next = lines_.Position();
    if (next >= text_.size())
        return false;
    return IsFolded(text_.sliced(next, 1)) || (isQuotedPrintable && line.endsWith(u'='));
}

// Reads one property into property_; the line on which it begins, or 0 at the end.
int VCardPieces::ReadProperty() {
    QStringView line;
    if (!lines_.Next(line))
        return 0;
    const int number = lines_.Number();
    property_ = line.toString();
    const bool isQuotedPrintable = line.contains(u"QUOTED-PRINTABLE", Qt::CaseInsensitive);
    while (isInCard_ && IsContinued(line, isQuotedPrintable) && lines_.Next(line)) {
        if (isQuotedPrintable && property_.endsWith(u'='))
            property_.chop(1);
        property_ += IsFolded(line) ? line.sliced(1) : line;
    }
    return number;
}

// The value of an EMAIL property into value_.
bool VCardPieces::TakeValue() {
    const qsizetype colon = property_.indexOf(u':');
    const QStringView head = QStringView(property_).first(qMax<qsizetype>(0, colon));
    if (NameOf(head).compare(u"EMAIL", Qt::CaseInsensitive) != 0)
        return false;
    const QStringView raw = QStringView(property_).sliced(colon + 1);
    value_ = Unescaped(head.contains(u"QUOTED-PRINTABLE", Qt::CaseInsensitive) ? FromQuotedPrintable(raw)
                                                                               : raw.toString());
    return !value_.trimmed().isEmpty();
}

bool VCardPieces::Next(Piece &piece) {
    while (const int number = ReadProperty()) {
        const QString word = property_.trimmed().toUpper();
        if (word == u"BEGIN:VCARD" || word == u"END:VCARD") {
            isInCard_ = word == u"BEGIN:VCARD";
        } else if (isInCard_ && TakeValue()) {
            piece = {value_, number, true};
            return true;
        } else if (!isInCard_ && property_.contains(u'@')) {
            piece = {property_, number, false};
            return true;
        }
    }
    return false;
}

} // namespace varlo

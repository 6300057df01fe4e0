#include "support/ReceivedMail.h"

#include "core/Literals.h"
#include "support/Printers.h"

#include <QRegularExpression>
#include <gtest/gtest.h>

namespace varlo::test {

namespace {

using Headers = QList<std::pair<QByteArray, QByteArray>>;

struct Entity {
    Headers Fields;
    QByteArray Body;

    QByteArray Field(const QByteArray &name) const {
        for (const auto &[field, value] : Fields)
            if (field == name)
                return value;
        return {};
    }
};

Entity Split(const QByteArray &data) {
    const qsizetype gap = data.indexOf("\r\n\r\n");
    if (gap < 0) {
        ADD_FAILURE() << "no end of the headers in: " << data.toStdString();
        return {};
    }
    Entity entity{{}, data.mid(gap + 4)};
    for (QByteArray line : data.left(gap + 1).split('\n')) {
        line.chop(1); // CR
        if (line.startsWith(' ') || line.startsWith('\t')) {
            EXPECT_FALSE(entity.Fields.isEmpty());
            EXPECT_FALSE(line.trimmed().isEmpty()) << "a line of blanks among the headers";
            entity.Fields.last().second += line;
            continue;
        }
        const qsizetype colon = line.indexOf(':');
        EXPECT_GT(colon, 0) << line.toStdString();
        EXPECT_LE(line.size(), 998);
        const QByteArray value = line.mid(colon + 1);
        entity.Fields.append({line.left(colon).toLower(), value.startsWith(' ') ? value.mid(1) : value});
    }
    return entity;
}

QByteArray FromHex(QByteArray text, char mark) {
    for (qsizetype i = text.indexOf(mark); i >= 0; i = text.indexOf(mark, i + 1))
        text.replace(i, 3, QByteArray::fromHex(text.mid(i + 1, 2)));
    return text;
}

QByteArray FromQuotedPrintable(QByteArray body) {
    for (const QByteArray &line : body.split('\n'))
        EXPECT_LE(line.size(), 77) << line.toStdString(); // 76 and CR
    return FromHex(body.replace("=\r\n", ""), '=');
}

QByteArray BodyOf(const Entity &entity) {
    const QByteArray encoding = entity.Field("content-transfer-encoding");
    if (encoding == "quoted-printable")
        return FromQuotedPrintable(entity.Body);
    if (encoding != "base64")
        return entity.Body;
    for (const QByteArray &line : entity.Body.split('\n'))
        EXPECT_LE(line.size(), 77);
    const auto decoded = QByteArray::fromBase64Encoding(QByteArray(entity.Body).replace("\r\n", ""),
                                                        QByteArray::AbortOnBase64DecodingErrors);
    EXPECT_TRUE(static_cast<bool>(decoded)) << "base64 is broken";
    return decoded.decoded;
}

// The value of a parameter, in any of its three forms.
QString Parameter(const QByteArray &value, const QByteArray &name) {
    const QString text = QString::fromLatin1(value);
    const QString key = QString::fromLatin1(name);
    const QRegularExpression quoted(u";\\s*%1=\"((?:[^\"\\\\]|\\\\.)*)\""_s.arg(key));
    if (const auto match = quoted.match(text); match.hasMatch())
        return match.captured(1).replace(QRegularExpression(u"\\\\(.)"_s), u"\\1"_s);
    const QRegularExpression extended(u";\\s*%1\\*(\\d+\\*)?=([^;\\s]*)"_s.arg(key));
    QByteArray joined;
    for (auto matches = extended.globalMatch(text); matches.hasNext();)
        joined += matches.next().captured(2).toLatin1();
    EXPECT_TRUE(joined.isEmpty() || joined.startsWith("UTF-8''"));
    return QString::fromUtf8(FromHex(joined.mid(7), '%'));
}

void TakeText(ReceivedMail &mail, const Entity &entity) {
    EXPECT_EQ(entity.Field("content-type"), "text/plain; charset=utf-8");
    mail.TextEncoding = entity.Field("content-transfer-encoding");
    mail.Text = QString::fromUtf8(BodyOf(entity));
}

void TakeFile(ReceivedMail &mail, const Entity &entity) {
    const QByteArray disposition = entity.Field("content-disposition");
    EXPECT_TRUE(disposition.startsWith("attachment;"));
    const QByteArray type = entity.Field("content-type");
    EXPECT_EQ(Parameter(type, "name"), Parameter(disposition, "filename"));
    mail.Files.append({Parameter(disposition, "filename"), type.left(type.indexOf(';')), BodyOf(entity)});
}

QList<Entity> Parts(const Entity &whole) {
    const QByteArray mark = "\r\n--" + Parameter(whole.Field("content-type"), "boundary").toLatin1();
    const QByteArray body = "\r\n" + whole.Body;
    QList<Entity> parts;
    qsizetype at = body.indexOf(mark);
    while (at >= 0 && body.mid(at + mark.size(), 2) != "--") {
        const qsizetype next = body.indexOf(mark, at + mark.size());
        EXPECT_GE(next, 0) << "the last boundary is missing";
        const qsizetype start = at + mark.size() + 2;
        parts << Split(body.mid(start, next - start));
        at = next;
    }
    return parts;
}

} // namespace

void PrintTo(const ReceivedFile &file, std::ostream *out) {
    *out << file.Type.constData() << ' ';
    PrintTo(file.Name, out);
    *out << ", " << file.Bytes.size() << " bytes";
}

QString DecodeWords(const QByteArray &value) {
    static const QRegularExpression word(u"=\\?UTF-8\\?([QB])\\?([^?]*)\\?=(?:\\s+(?==\\?))?"_s);
    const QString text = QString::fromUtf8(value);
    QString decoded;
    qsizetype end = 0;
    for (auto matches = word.globalMatch(text); matches.hasNext();) {
        const auto match = matches.next();
        const QByteArray inner = match.captured(2).toLatin1();
        const bool q = match.captured(1) == QLatin1String("Q");
        const QByteArray bytes =
            q ? FromHex(QByteArray(inner).replace('_', ' '), '=') : QByteArray::fromBase64(inner);
        EXPECT_LE(match.captured(0).trimmed().size(), 75);
        EXPECT_FALSE(QString::fromUtf8(bytes).contains(QChar::ReplacementCharacter))
            << "a character was split";
        decoded += text.mid(end, match.capturedStart() - end) + QString::fromUtf8(bytes);
        end = match.capturedEnd();
    }
    return decoded + text.mid(end);
}

QString ReceivedMail::Header(const QByteArray &name) const {
    QList<QByteArray> values;
    for (const auto &[field, value] : Headers)
        if (field == name.toLower())
            values << value;
    EXPECT_EQ(values.size(), 1) << name.toStdString();
    return values.isEmpty() ? QString() : DecodeWords(values.first());
}

ReceivedMail ReadMail(const QByteArray &data) {
    const Entity whole = Split(data);
    ReceivedMail mail{whole.Fields, {}, {}, {}};
    if (!whole.Field("content-type").startsWith("multipart/mixed;")) {
        TakeText(mail, whole);
        return mail;
    }
    const QList<Entity> parts = Parts(whole);
    for (qsizetype i = 0; i < parts.size(); ++i)
        i == 0 ? TakeText(mail, parts[i]) : TakeFile(mail, parts[i]);
    return mail;
}

} // namespace varlo::test

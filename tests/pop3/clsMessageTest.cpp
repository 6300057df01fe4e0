// Reading a mail message.
#include "pop3/clsMessage.h"

#include "core/RuntimeError.h"
#include "support/ScriptedDialogs.h"

#include <gtest/gtest.h>

namespace varlo {

using test::ScriptedDialogs;
using test::ShownBox;

namespace {

// All four fields, so that a test compares the whole message.
struct Fields {
    QString Headers;
    QString From;
    QString Subject;
    QString MessageID;
    bool operator==(const Fields &) const = default;
};

void PrintTo(const Fields &fields, std::ostream *out) {
    for (const QString &text : {fields.Headers, fields.From, fields.Subject, fields.MessageID})
        *out << '[' << text.left(200).toStdString() << ']';
}

Fields Read(const QString &text) {
    ScriptedDialogs boxes;
    clsMessage message;
    message.CreateFromText(text, boxes);
    EXPECT_EQ(boxes.Texts(), QStringList());
    return {message.Headers(), message.From(), message.Subject(), message.MessageID()};
}

Fields ReadHeaders(const QString &headers) {
    return Read(headers + QStringLiteral("\r\n\r\nbody\r\n"));
}

int ErrorOf(const QString &text) {
    try {
        Read(text);
    } catch (const RuntimeError &error) {
        return error.Number();
    }
    return 0;
}

} // namespace

TEST(clsMessageTest, SubjectAlone) {
    EXPECT_EQ(Read(QStringLiteral("Subject: subscribe\r\n\r\nbody")),
              (Fields{QStringLiteral("Subject: subscribe"), {}, QStringLiteral("subscribe"), {}}));
}

TEST(clsMessageTest, AllThreeNamesInAnyCaseWithTheirValuesKept) {
    const QString headers =
        QStringLiteral("FROM: Joe <J@x.test>\r\nsUbJeCt: Hello\r\nMessage-Id: <1@X>\r\nX-Y: z");
    EXPECT_EQ(ReadHeaders(headers), (Fields{headers, QStringLiteral("Joe <J@x.test>"),
                                            QStringLiteral("Hello"), QStringLiteral("<1@X>")}));
}

TEST(clsMessageTest, BlanksAroundAValueAreCut) {
    EXPECT_EQ(ReadHeaders(QStringLiteral("subject:   Subscribe   ")).Subject, QStringLiteral("Subscribe"));
    EXPECT_EQ(ReadHeaders(QStringLiteral("subject:")).Subject, QString());
    EXPECT_EQ(ReadHeaders(QStringLiteral("subject:    ")).Subject, QString());
}

TEST(clsMessageTest, TabsAroundAValueStay) {
    EXPECT_EQ(ReadHeaders(QStringLiteral("subject: \tsubscribe\t ")).Subject,
              QStringLiteral("\tsubscribe\t"));
}

TEST(clsMessageTest, LastLineOfANameWins) {
    EXPECT_EQ(ReadHeaders(QStringLiteral("From: a@b.test\r\nFrom: c@d.test")).From,
              QStringLiteral("c@d.test"));
    EXPECT_EQ(ReadHeaders(QStringLiteral("From: a@b.test\r\nFrom:")).From, QString());
}

TEST(clsMessageTest, BlankBeforeTheColonIsAnotherName) {
    EXPECT_EQ(ReadHeaders(QStringLiteral("From : a@b.test")).From, QString());
}

TEST(clsMessageTest, FoldedSubjectKeepsItsFirstLine) {
    EXPECT_EQ(ReadHeaders(QStringLiteral("Subject: un\r\n subscribe")).Subject, QStringLiteral("un"));
    EXPECT_EQ(ReadHeaders(QStringLiteral("X: y\r\n Subject: subscribe")).Subject, QString());
}

TEST(clsMessageTest, ValueBeginsAtTheFirstColon) {
    EXPECT_EQ(ReadHeaders(QStringLiteral("Subject: a: b")).Subject, QStringLiteral("a: b"));
}

TEST(clsMessageTest, EncodedWordsStayEncoded) {
    const QString word = QStringLiteral("=?utf-8?Q?subscribe?=");
    EXPECT_EQ(ReadHeaders(QStringLiteral("Subject: ") + word).Subject, word);
}

TEST(clsMessageTest, BodyIsNeverLookedAt) {
    EXPECT_EQ(Read(QStringLiteral("X: y\r\n\r\nSubject: subscribe\r\n\r\n")),
              (Fields{QStringLiteral("X: y"), {}, {}, {}}));
}

TEST(clsMessageTest, LineWithoutAColonIsIgnored) {
    EXPECT_EQ(ReadHeaders(QStringLiteral("subject\r\nSubject: x\r\n+OK")).Subject, QStringLiteral("x"));
}

TEST(clsMessageTest, LineFeedsAloneEndNoLine) {
    EXPECT_EQ(ReadHeaders(QStringLiteral("Subject: x\nFrom: y")).Subject, QStringLiteral("x\nFrom: y"));
}

TEST(clsMessageTest, MessageThatBeginsWithTheEmptyLineHasNoHeaders) {
    EXPECT_EQ(Read(QStringLiteral("\r\n\r\nSubject: x")), (Fields{}));
}

TEST(clsMessageTest, MessageWithoutAnEmptyLineShowsOneBoxWithAllFieldsEmpty) {
    for (const QString &text :
         {QString(), QStringLiteral("Subject: subscribe\r\n"), QStringLiteral("a\n\nb\r\n\r")}) {
        ScriptedDialogs boxes;
        clsMessage message;
        message.CreateFromText(text, boxes);
        EXPECT_EQ(boxes.Shown,
                  (std::vector<ShownBox>{{kApplicationTitle,
                                          QStringLiteral("There was a problem with decoding the e-mail"),
                                          BoxButtons::Ok, BoxIcon::None}}));
        EXPECT_EQ(message.Headers() + message.From() + message.Subject() + message.MessageID(), QString());
    }
}

TEST(clsMessageTest, HeaderBlockOf32766CharactersIsTheLongest) {
    const QString subject = QStringLiteral("Subject: x\r\nY: ");
    const QString longest = subject + QString(32766 - subject.size(), u'z');
    EXPECT_EQ(ReadHeaders(longest), (Fields{longest, {}, QStringLiteral("x"), {}}));
    EXPECT_EQ(ErrorOf(longest + QStringLiteral("z\r\n\r\n")), int(Overflow));
}

TEST(clsMessageTest, OverflowLeavesTheFieldsEmpty) {
    ScriptedDialogs boxes;
    clsMessage message;
    const QString text = QStringLiteral("Subject: x\r\n") + QString(40000, u'z') + QStringLiteral("\r\n\r\n");
    EXPECT_THROW(message.CreateFromText(text, boxes), RuntimeError);
    EXPECT_EQ(message.Headers() + message.Subject(), QString());
    EXPECT_EQ(boxes.Texts(), QStringList());
}

TEST(clsMessageTest, BinaryZerosAreCharactersLikeOthers) {
    QString headers = QStringLiteral("Subject: a_b");
    headers[10] = QChar(0);
    EXPECT_EQ(ReadHeaders(headers).Subject, headers.mid(9));
}

} // namespace varlo

// Reading a mail message.
#include "pop3/clsMessage.h"

#include "core/Literals.h"
#include "core/RuntimeError.h"
#include "support/ErrorOf.h"

#include <gtest/gtest.h>

#include <tuple>

namespace varlo {

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
    clsMessage message;
    EXPECT_TRUE(message.CreateFromText(text));
    return {message.Headers(), message.From(), message.Subject(), message.MessageID()};
}

Fields ReadHeaders(const QString &headers) {
    return Read(headers + u"\r\n\r\nbody\r\n"_s);
}

} // namespace

TEST(clsMessageTest, SubjectAlone) {
    EXPECT_EQ(Read(u"Subject: subscribe\r\n\r\nbody"_s),
              (Fields{u"Subject: subscribe"_s, {}, u"subscribe"_s, {}}));
}

TEST(clsMessageTest, AllThreeNamesInAnyCaseWithTheirValuesKept) {
    const QString headers = u"FROM: Joe <J@x.test>\r\nsUbJeCt: Hello\r\nMessage-Id: <1@X>\r\nX-Y: z"_s;
    EXPECT_EQ(ReadHeaders(headers), (Fields{headers, u"Joe <J@x.test>"_s, u"Hello"_s, u"<1@X>"_s}));
}

TEST(clsMessageTest, BlanksAroundAValueAreCut) {
    EXPECT_EQ(ReadHeaders(u"subject:   Subscribe   "_s).Subject, u"Subscribe"_s);
    EXPECT_EQ(ReadHeaders(u"subject:"_s).Subject, QString());
    EXPECT_EQ(ReadHeaders(u"subject:    "_s).Subject, QString());
}

TEST(clsMessageTest, TabsAroundAValueStay) {
    EXPECT_EQ(ReadHeaders(u"subject: \tsubscribe\t "_s).Subject, u"\tsubscribe\t"_s);
}

TEST(clsMessageTest, LastLineOfANameWins) {
    EXPECT_EQ(ReadHeaders(u"From: a@b.test\r\nFrom: c@d.test"_s).From, u"c@d.test"_s);
    EXPECT_EQ(ReadHeaders(u"From: a@b.test\r\nFrom:"_s).From, QString());
}

TEST(clsMessageTest, BlankBeforeTheColonIsAnotherName) {
    EXPECT_EQ(ReadHeaders(u"From : a@b.test"_s).From, QString());
}

TEST(clsMessageTest, FoldedSubjectKeepsItsFirstLine) {
    EXPECT_EQ(ReadHeaders(u"Subject: un\r\n subscribe"_s).Subject, u"un"_s);
    EXPECT_EQ(ReadHeaders(u"X: y\r\n Subject: subscribe"_s).Subject, QString());
}

TEST(clsMessageTest, ValueBeginsAtTheFirstColon) {
    EXPECT_EQ(ReadHeaders(u"Subject: a: b"_s).Subject, u"a: b"_s);
}

TEST(clsMessageTest, EncodedWordsStayEncoded) {
    const QString word = u"=?utf-8?Q?subscribe?="_s;
    EXPECT_EQ(ReadHeaders(u"Subject: "_s + word).Subject, word);
}

TEST(clsMessageTest, BodyIsNeverLookedAt) {
    EXPECT_EQ(Read(u"X: y\r\n\r\nSubject: subscribe\r\n\r\n"_s), (Fields{u"X: y"_s, {}, {}, {}}));
}

TEST(clsMessageTest, LineWithoutAColonIsIgnored) {
    EXPECT_EQ(ReadHeaders(u"subject\r\nSubject: x\r\n+OK"_s).Subject, u"x"_s);
}

TEST(clsMessageTest, LineFeedsAloneEndNoLine) {
    EXPECT_EQ(ReadHeaders(u"Subject: x\nFrom: y"_s).Subject, u"x\nFrom: y"_s);
}

TEST(clsMessageTest, MessageThatBeginsWithTheEmptyLineHasNoHeaders) {
    EXPECT_EQ(Read(u"\r\n\r\nSubject: x"_s), (Fields{}));
}

TEST(clsMessageTest, MessageWithoutAnEmptyLineIsToldWithAllFieldsEmpty) {
    for (const QString &text : {QString(), u"Subject: subscribe\r\n"_s, u"a\n\nb\r\n\r"_s}) {
        clsMessage message;
        EXPECT_FALSE(message.CreateFromText(text));
        EXPECT_EQ(message.Headers() + message.From() + message.Subject() + message.MessageID(), QString());
    }
}

TEST(clsMessageTest, HeaderBlockOf32766CharactersIsTheLongest) {
    const QString subject = u"Subject: x\r\nY: "_s;
    const QString longest = subject + QString(32766 - subject.size(), u'z');
    EXPECT_EQ(ReadHeaders(longest), (Fields{longest, {}, u"x"_s, {}}));
    EXPECT_EQ(test::ErrorOf([&] { Read(longest + u"z\r\n\r\n"_s); }), int(Overflow));
}

TEST(clsMessageTest, OverflowLeavesTheFieldsEmpty) {
    clsMessage message;
    const QString text = u"Subject: x\r\n"_s + QString(40000, u'z') + u"\r\n\r\n"_s;
    EXPECT_EQ(test::ErrorOf([&] { std::ignore = message.CreateFromText(text); }), int(Overflow));
    EXPECT_EQ(message.Headers() + message.Subject(), QString());
}

TEST(clsMessageTest, BinaryZerosAreCharactersLikeOthers) {
    QString headers = u"Subject: a_b"_s;
    headers[10] = QChar(0);
    EXPECT_EQ(ReadHeaders(headers).Subject, headers.mid(9));
}

} // namespace varlo

// Which messages are requests.
#include "pop3/Recognition.h"

#include "core/Literals.h"
#include "core/RuntimeError.h"

#include <QStringList>
#include <gtest/gtest.h>

namespace varlo {

namespace {

clsMessage Message(const QString &subject, const QString &id = {}, const QString &from = {}) {
    clsMessage message;
    EXPECT_TRUE(message.CreateFromText(
        u"Subject: %1\r\nMessage-ID: %2\r\nFrom: %3\r\n\r\nsubscribe\r\n"_s.arg(subject, id, from)));
    return message;
}

Recognised Kind(const QString &subject) {
    Requests requests;
    return Recognise(Message(subject), requests);
}

QStringList Senders(const clsMessages &messages) {
    QStringList senders;
    for (const clsMessage &message : messages)
        senders << message.From();
    return senders;
}

} // namespace

TEST(RecognitionTest, WholeSubjectInAnyCase) {
    for (const char *subject : {"subscribe", "Subscribe", "SUBSCRIBE", "   SubScribe  "})
        EXPECT_EQ(Kind(QString::fromLatin1(subject)), Recognised::Subscribe) << subject;
    for (const char *subject : {"unsubscribe", "UNSUBSCRIBE", " Unsubscribe "})
        EXPECT_EQ(Kind(QString::fromLatin1(subject)), Recognised::Unsubscribe) << subject;
}

TEST(RecognitionTest, AnythingMoreOrLessIsUnrelated) {
    for (const char *subject : {"", "Re: subscribe", "subscribe me", "please unsubscribe", "un subscribe",
                                "\tsubscribe", "subscribe.", "subscrib", "=?utf-8?Q?subscribe?="})
        EXPECT_EQ(Kind(QString::fromLatin1(subject)), Recognised::Unrelated) << subject;
}

TEST(RecognitionTest, MessageThatWasNeverFilledIsUnrelated) {
    Requests requests;
    EXPECT_EQ(Recognise(clsMessage(), requests), Recognised::Unrelated);
}

TEST(RecognitionTest, RequestsAreKeptByKindInDownloadOrder) {
    Requests requests;
    const auto take = [&](const char *subject, const char *id, const char *from) {
        Recognise(Message(QString::fromLatin1(subject), QString::fromLatin1(id), QString::fromLatin1(from)),
                  requests);
    };
    take("subscribe", "<2>", "b");
    take("unsubscribe", "<2>", "c"); // the two collections have keys of their own
    take("hello", "<3>", "d");
    take("subscribe", "", "a");
    take("subscribe", "", "a");
    EXPECT_EQ(Senders(requests.colSubscribe), (QStringList{u"b"_s, u"a"_s, u"a"_s}));
    EXPECT_EQ(Senders(requests.colUnsubscribe), QStringList{u"c"_s});
}

TEST(RecognitionTest, SecondRequestWithTheSameMessageIdIsAnError) {
    Requests requests;
    Recognise(Message(u"subscribe"_s, u"<1>"_s, u"a"_s), requests);
    try {
        Recognise(Message(u"Subscribe"_s, u"<1>"_s, u"b"_s), requests);
        FAIL() << "no error";
    } catch (const RuntimeError &error) {
        EXPECT_EQ(error.Number(), int(KeyAlreadyPresent));
    }
    EXPECT_EQ(Senders(requests.colSubscribe), QStringList{u"a"_s});
}

} // namespace varlo

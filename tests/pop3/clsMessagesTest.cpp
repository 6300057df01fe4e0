// The collection of kept messages.
#include "pop3/clsMessages.h"

#include "core/Literals.h"
#include "core/RuntimeError.h"

#include <QStringList>
#include <gtest/gtest.h>

namespace varlo {

namespace {

clsMessage Message(const QString &subject) {
    clsMessage message;
    EXPECT_TRUE(message.CreateFromText(u"Subject: "_s + subject + u"\r\n\r\n"_s));
    return message;
}

QStringList Subjects(const clsMessages &messages) {
    QStringList subjects;
    for (const clsMessage &message : messages)
        subjects << message.Subject();
    return subjects;
}

} // namespace

TEST(clsMessagesTest, WalkFollowsTheOrderOfAdding) {
    clsMessages messages;
    messages.Add(Message(u"z"_s), u"3"_s);
    messages.Add(Message(u"a"_s));
    messages.Add(Message(u"m"_s), u"1"_s);
    EXPECT_EQ(Subjects(messages), (QStringList{u"z"_s, u"a"_s, u"m"_s}));
}

TEST(clsMessagesTest, SecondMessageUnderAKeyFailsLeavingTheFirst) {
    clsMessages messages;
    messages.Add(Message(u"first"_s), u"key"_s);
    try {
        messages.Add(Message(u"second"_s), u"key"_s);
        FAIL() << "no error";
    } catch (const RuntimeError &error) {
        EXPECT_EQ(error.Number(), int(KeyAlreadyPresent));
    }
    EXPECT_EQ(Subjects(messages), QStringList{u"first"_s});
}

TEST(clsMessagesTest, EmptyKeyNeverFails) {
    clsMessages messages;
    messages.Add(Message(u"a"_s), QString());
    messages.Add(Message(u"b"_s), u""_s);
    messages.Add(Message(u"c"_s));
    EXPECT_EQ(Subjects(messages).size(), 3);
}

TEST(clsMessagesTest, KeysThatDifferInCaseAreTwoKeys) {
    clsMessages messages;
    messages.Add(Message(u"a"_s), u"<id@x>"_s);
    messages.Add(Message(u"b"_s), u"<ID@x>"_s);
    EXPECT_EQ(Subjects(messages).size(), 2);
}

TEST(clsMessagesTest, NewCollectionIsEmpty) {
    EXPECT_EQ(Subjects(clsMessages()), QStringList());
}

} // namespace varlo

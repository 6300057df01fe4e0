// The collection of kept messages.
#include "pop3/clsMessages.h"

#include "core/RuntimeError.h"
#include "support/ScriptedDialogs.h"

#include <QStringList>
#include <gtest/gtest.h>

namespace varlo {

namespace {

clsMessage Message(const QString &subject) {
    test::ScriptedDialogs boxes;
    clsMessage message;
    message.CreateFromText(QStringLiteral("Subject: ") + subject + QStringLiteral("\r\n\r\n"), boxes);
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
    messages.Add(Message(QStringLiteral("z")), QStringLiteral("3"));
    messages.Add(Message(QStringLiteral("a")));
    messages.Add(Message(QStringLiteral("m")), QStringLiteral("1"));
    EXPECT_EQ(Subjects(messages),
              (QStringList{QStringLiteral("z"), QStringLiteral("a"), QStringLiteral("m")}));
}

TEST(clsMessagesTest, SecondMessageUnderAKeyFailsLeavingTheFirst) {
    clsMessages messages;
    messages.Add(Message(QStringLiteral("first")), QStringLiteral("key"));
    try {
        messages.Add(Message(QStringLiteral("second")), QStringLiteral("key"));
        FAIL() << "no error";
    } catch (const RuntimeError &error) {
        EXPECT_EQ(error.Number(), int(KeyAlreadyPresent));
    }
    EXPECT_EQ(Subjects(messages), QStringList{QStringLiteral("first")});
}

TEST(clsMessagesTest, EmptyKeyNeverFails) {
    clsMessages messages;
    messages.Add(Message(QStringLiteral("a")), QString());
    messages.Add(Message(QStringLiteral("b")), QStringLiteral(""));
    messages.Add(Message(QStringLiteral("c")));
    EXPECT_EQ(Subjects(messages).size(), 3);
}

TEST(clsMessagesTest, KeysThatDifferInCaseAreTwoKeys) {
    clsMessages messages;
    messages.Add(Message(QStringLiteral("a")), QStringLiteral("<id@x>"));
    messages.Add(Message(QStringLiteral("b")), QStringLiteral("<ID@x>"));
    EXPECT_EQ(Subjects(messages).size(), 2);
}

TEST(clsMessagesTest, NewCollectionIsEmpty) {
    EXPECT_EQ(Subjects(clsMessages()), QStringList());
}

} // namespace varlo

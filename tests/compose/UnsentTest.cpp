#include "compose/Unsent.h"

#include "core/Literals.h"
#include "core/RuntimeError.h"
#include "support/ErrorOf.h"
#include "support/TestProfile.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

namespace varlo {
namespace {

UnsentMessage Message(const QString &text) {
    UnsentMessage message;
    message.Subject = u"News"_s;
    message.ToName = u"Mailing List"_s;
    message.Text = text;
    return message;
}

class UnsentTest : public testing::Test {
protected:
    // What a later window finds.
    QStringList Found() const {
        UnsentFile later(profile.session);
        later.Load();
        QStringList texts;
        while (const UnsentMessage *offered = later.Offered()) {
            texts << offered->Text;
            later.Discard();
        }
        return texts;
    }
    bool IsThere() const { return QFile::exists(profile.Path(u"unsent.ini"_s)); }

    test::TestProfile profile;
    UnsentFile file{profile.session};
};

TEST_F(UnsentTest, TheFileIsPlainText) {
    UnsentMessage message = Message(u"Dear all,\r\n\r\nsee C:\\new\r\n"_s);
    message.Source = RecipientSource::SelectLists;
    message.Lists = QStringList{u"a"_s, u"Ñ b"_s};
    message.Attachments = QStringList{u"/tmp/x.pdf"_s};
    file.Keep(message);
    EXPECT_EQ(profile.Read(u"unsent.ini"_s),
              "[Message]\r\nSubject=News\r\nTo=Mailing List\r\nRecipients=lists\r\n"
              "List=a\r\nList=Ñ b\r\nAttachment=/tmp/x.pdf\r\nText=Dear all,\r\n"
              "Text=\r\nText=see C:\\\\new\r\nText=\r\n");
}

TEST_F(UnsentTest, WhateverAMessageHoldsComesBack) {
    const auto sources = {RecipientSource::OneList, RecipientSource::AllLists, RecipientSource::SelectLists,
                          RecipientSource::CurrentSelection, RecipientSource::Separator};
    for (const QString &text :
         {QString(), u" "_s, u"\r\n"_s, u"a\\nb\\\\n\\"_s, u"[Message]\r\nSubject=x\r\n;no\r\n=\r\n"_s,
          u"\"quoted\" = 'x'  "_s, u"Grüße\u2028漢字 \U0001F600\t"_s, u"lone \r and \n"_s}) {
        UnsentMessage message = Message(text);
        message.Subject = message.ToName = text;
        message.Lists = message.Attachments = QStringList{text, u"b"_s};
        for (const RecipientSource source : sources) {
            message.Source = source;
            EXPECT_EQ(UnsentFromText(UnsentToText({message})), std::vector{message}) << text.toStdString();
        }
    }
}

TEST_F(UnsentTest, AMegabyteComesBackWhole) {
    const UnsentMessage message = Message(u"0123456789abc\\n\r\n"_s.repeated(65536));
    file.Keep(message);
    UnsentFile later(profile.session);
    later.Load();
    ASSERT_NE(later.Offered(), nullptr);
    EXPECT_TRUE(*later.Offered() == message);
}

TEST_F(UnsentTest, AFileOfSomebodyElsesHoldsNoMessage) {
    profile.Write(u"unsent.ini"_s, "Subject=lost\r\nrubbish\r\n[Main]\r\n\xff\xfe\r\n");
    file.Load();
    EXPECT_EQ(file.Offered(), nullptr);
}

TEST_F(UnsentTest, OnlyItsOwnerReadsTheFile) {
    file.Keep(Message(u"secret"_s));
    EXPECT_EQ(QFile::permissions(profile.Path(u"unsent.ini"_s)) &
                  (QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther),
              QFile::Permissions());
}

TEST_F(UnsentTest, IsWrittenOnlyWhenTheMessageHasChanged) {
    file.Keep(Message(u"one"_s));
    ASSERT_TRUE(QFile::remove(profile.Path(u"unsent.ini"_s)));
    file.Keep(Message(u"one"_s));
    EXPECT_FALSE(IsThere());
    file.Keep(Message(u"two"_s));
    EXPECT_TRUE(IsThere());
}

TEST_F(UnsentTest, WithoutAMessageThereIsNoFile) {
    file.Keep(std::nullopt);
    EXPECT_FALSE(IsThere());
    file.Keep(Message(u"one"_s));
    file.Keep(std::nullopt);
    EXPECT_FALSE(IsThere());
}

TEST_F(UnsentTest, ANewMessageLeavesTheOneOnOfferInTheFile) {
    file.Keep(Message(u"one"_s));
    UnsentFile second(profile.session);
    second.Load();
    second.Keep(Message(u"two"_s));
    second.Keep(Message(u"two, longer"_s));
    EXPECT_EQ(Found(), (QStringList{u"two, longer"_s, u"one"_s}));
}

TEST_F(UnsentTest, TakingUpRemovesTheMessageAndKeepsTheOneInTheWindow) {
    file.Keep(Message(u"one"_s));
    UnsentFile second(profile.session);
    second.Load();
    EXPECT_EQ(second.TakeUp(std::nullopt).Text, u"one"_s);
    EXPECT_EQ(second.Offered(), nullptr);
    EXPECT_FALSE(IsThere());

    second.Keep(Message(u"one"_s));
    UnsentFile third(profile.session);
    third.Load();
    third.Keep(Message(u"mine"_s));
    EXPECT_EQ(third.TakeUp(Message(u"mine"_s)).Text, u"one"_s);
    ASSERT_NE(third.Offered(), nullptr);
    EXPECT_EQ(third.Offered()->Text, u"mine"_s);
    EXPECT_EQ(Found(), QStringList{u"mine"_s});
}

TEST_F(UnsentTest, RefusingRemovesTheOfferAndNothingElse) {
    file.Keep(Message(u"one"_s));
    UnsentFile second(profile.session);
    second.Load();
    second.Keep(Message(u"two"_s));
    second.Discard();
    EXPECT_EQ(second.Offered(), nullptr);
    EXPECT_EQ(Found(), QStringList{u"two"_s});
}

TEST_F(UnsentTest, WhatCannotBeWrittenIsTriedAgainAndNothingIsForgotten) {
    file.Keep(Message(u"one"_s));
    UnsentFile second(profile.session);
    second.Load();
    const QString path = profile.Path(u"unsent.ini"_s);
    ASSERT_TRUE(QFile::rename(path, path + u".aside"_s));
    ASSERT_TRUE(QDir().mkpath(path + u"/taken"_s));
    EXPECT_NE(test::ErrorOf([&] { second.Keep(Message(u"two"_s)); }), 0);
    EXPECT_NE(test::ErrorOf([&] { second.Discard(); }), 0);
    ASSERT_NE(second.Offered(), nullptr);
    ASSERT_TRUE(QDir(path).removeRecursively());
    second.Keep(Message(u"two"_s));
    EXPECT_EQ(Found(), (QStringList{u"two"_s, u"one"_s}));
}

TEST_F(UnsentTest, WhatCannotBeReadIsNotWrittenOver) {
    ASSERT_TRUE(QDir().mkpath(profile.Path(u"unsent.ini"_s)));
    EXPECT_NE(test::ErrorOf([&] { file.Load(); }), 0);
    EXPECT_NE(test::ErrorOf([&] { file.Keep(Message(u"two"_s)); }), 0);
    EXPECT_TRUE(QFileInfo(profile.Path(u"unsent.ini"_s)).isDir());
}

TEST_F(UnsentTest, OwnWordsAreASubjectOrMoreThanTheSignature) {
    const auto own = [](const QString &subject, const QString &text) {
        UnsentMessage message;
        message.Subject = subject;
        message.Text = text;
        return HasOwnWords(message, u"Jo\r\nHill\r\n"_s);
    };
    EXPECT_FALSE(own({}, {}));
    EXPECT_FALSE(own(u" "_s, u"\r\n \r\n"_s));
    EXPECT_FALSE(own({}, u"\r\nJo\r\nHill\r\n"_s));
    EXPECT_TRUE(own(u"News"_s, {}));
    EXPECT_TRUE(own({}, u"a\r\nJo\r\nHill\r\n"_s));
    EXPECT_TRUE(own({}, u"Jo"_s));
}

} // namespace
} // namespace varlo

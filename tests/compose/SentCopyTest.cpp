#include "compose/SentCopy.h"

#include "core/Literals.h"
#include "core/Preferences.h"
#include "core/RuntimeError.h"
#include "support/Printers.h"
#include "support/TestProfile.h"

#include <QDir>
#include <gtest/gtest.h>

namespace varlo {
namespace {

const QDateTime kMoment(QDate(2026, 3, 4), QTime(5, 6, 7));

QString NameOf(const QString &subject) {
    return SentCopyName(subject, kMoment);
}

QStringList SentFiles(const test::TestProfile &profile) {
    return QDir(profile.Path(u"sent"_s)).entryList(QDir::Files | QDir::Hidden);
}

TEST(SentCopyTest, IsNamedForTheMomentAndTheSubject) {
    EXPECT_EQ(NameOf(u"Spring news"_s), u"26.03.04 @ 0506 - Spring news.txt"_s);
    EXPECT_EQ(SentCopyName(u"x"_s, QDateTime(QDate(1999, 12, 31), QTime(23, 59))),
              u"99.12.31 @ 2359 - x.txt"_s);
}

TEST(SentCopyTest, TheNineForbiddenCharactersAreRemovedFromTheName) {
    EXPECT_EQ(NameOf(u"a\\b/c:d*e?f\"g<h>i|j"_s), u"26.03.04 @ 0506 - abcdefghij.txt"_s);
    EXPECT_EQ(NameOf(u"\\/:*?\"<>|"_s), u"26.03.04 @ 0506 - .txt"_s);
    EXPECT_EQ(NameOf(u"What: really?"_s), u"26.03.04 @ 0506 - What really.txt"_s);
}

TEST(SentCopyTest, LineBreaksAndControlCharactersAreRemovedFromTheName) {
    EXPECT_EQ(NameOf(u"one\r\ntwo\tthree\x7F"_s + QChar(0)), u"26.03.04 @ 0506 - onetwothree.txt"_s);
}

TEST(SentCopyTest, ALongSubjectLosesItsEnd) {
    const QString name = NameOf(QString(300, u'x'));
    EXPECT_EQ(name, u"26.03.04 @ 0506 - "_s + QString(226, u'x') + u".txt"_s);
    EXPECT_EQ(name.toUtf8().size(), 248);
}

TEST(SentCopyTest, ALongSubjectIsCutBetweenCharacters) {
    EXPECT_EQ(NameOf(QString(300, u'ü')), u"26.03.04 @ 0506 - "_s + QString(113, u'ü') + u".txt"_s);
    EXPECT_EQ(NameOf(u'x' + u"😀"_s.repeated(200)),
              u"26.03.04 @ 0506 - x"_s + u"😀"_s.repeated(56) + u".txt"_s);
    EXPECT_EQ(NameOf(u"xx"_s + u"😀"_s.repeated(200)),
              u"26.03.04 @ 0506 - xx"_s + u"😀"_s.repeated(56) + u".txt"_s);
}

TEST(SentCopyTest, HoldsTheHeadersAndTheMessageAsTyped) {
    test::TestProfile profile;
    profile.session.Prefs.SMTPEmail = u"ann@example.org"_s;
    WriteSentCopy(profile.session, u"Mailing List"_s, u"News: all?"_s, u"Grüße\r\n\r\nend"_s);
    EXPECT_EQ(profile.Read(u"sent/26.03.04 @ 0506 - News all.txt"_s),
              "From: ann@example.org\r\nTo: Mailing List\r\nSubject: News: all?\r\n\r\nGr\xC3\xBC\xC3\x9F"
              "e\r\n\r\nend\r\n");
}

TEST(SentCopyTest, ReplacesTheCopyOfTheSameMinuteAndSubject) {
    test::TestProfile profile;
    WriteSentCopy(profile.session, QString(), u"s"_s, u"a long first text"_s);
    WriteSentCopy(profile.session, QString(), u"s"_s, u"short"_s);
    EXPECT_EQ(SentFiles(profile), QStringList(u"26.03.04 @ 0506 - s.txt"_s));
    EXPECT_EQ(profile.Read(u"sent/26.03.04 @ 0506 - s.txt"_s),
              "From: \r\nTo: \r\nSubject: s\r\n\r\nshort\r\n");
}

TEST(SentCopyTest, ASubjectOfAnyLengthCanBeWritten) {
    test::TestProfile profile;
    for (const QString &subject : {QString(300, u'x'), QString(300, u'ü'), u"😀"_s.repeated(300)}) {
        WriteSentCopy(profile.session, QString(), subject, u"text"_s);
        EXPECT_EQ(profile.Read(u"sent/"_s + NameOf(subject)).right(8), "\r\ntext\r\n");
    }
    EXPECT_EQ(SentFiles(profile).size(), 3);
}

TEST(SentCopyTest, AMissingFolderIsAPathNotFound) {
    test::TestProfile profile;
    ASSERT_TRUE(QDir(profile.Path(u"sent"_s)).removeRecursively());
    try {
        WriteSentCopy(profile.session, QString(), u"s"_s, u"t"_s);
        FAIL() << "nothing thrown";
    } catch (const RuntimeError &error) {
        EXPECT_EQ(error.Number(), 76);
    }
}

} // namespace
} // namespace varlo

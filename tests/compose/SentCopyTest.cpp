#include "compose/SentCopy.h"

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
    return QDir(profile.Path(QStringLiteral("sent"))).entryList(QDir::Files | QDir::Hidden);
}

TEST(SentCopyTest, IsNamedForTheMomentAndTheSubject) {
    EXPECT_EQ(NameOf(QStringLiteral("Spring news")), QStringLiteral("26.03.04 @ 0506 - Spring news.txt"));
    EXPECT_EQ(SentCopyName(QStringLiteral("x"), QDateTime(QDate(1999, 12, 31), QTime(23, 59))),
              QStringLiteral("99.12.31 @ 2359 - x.txt"));
}

TEST(SentCopyTest, TheNineForbiddenCharactersAreRemovedFromTheName) {
    EXPECT_EQ(NameOf(QStringLiteral("a\\b/c:d*e?f\"g<h>i|j")),
              QStringLiteral("26.03.04 @ 0506 - abcdefghij.txt"));
    EXPECT_EQ(NameOf(QStringLiteral("\\/:*?\"<>|")), QStringLiteral("26.03.04 @ 0506 - .txt"));
    EXPECT_EQ(NameOf(QStringLiteral("What: really?")), QStringLiteral("26.03.04 @ 0506 - What really.txt"));
}

TEST(SentCopyTest, LineBreaksAndControlCharactersAreRemovedFromTheName) {
    EXPECT_EQ(NameOf(QStringLiteral("one\r\ntwo\tthree\x7F") + QChar(0)),
              QStringLiteral("26.03.04 @ 0506 - onetwothree.txt"));
}

TEST(SentCopyTest, ALongSubjectLosesItsEnd) {
    const QString name = NameOf(QString(300, u'x'));
    EXPECT_EQ(name, QStringLiteral("26.03.04 @ 0506 - ") + QString(226, u'x') + QStringLiteral(".txt"));
    EXPECT_EQ(name.toUtf8().size(), 248);
}

TEST(SentCopyTest, ALongSubjectIsCutBetweenCharacters) {
    EXPECT_EQ(NameOf(QString(300, u'ü')),
              QStringLiteral("26.03.04 @ 0506 - ") + QString(113, u'ü') + QStringLiteral(".txt"));
    EXPECT_EQ(NameOf(u'x' + QStringLiteral("😀").repeated(200)), QStringLiteral("26.03.04 @ 0506 - x") +
                                                                    QStringLiteral("😀").repeated(56) +
                                                                    QStringLiteral(".txt"));
    EXPECT_EQ(NameOf(QStringLiteral("xx") + QStringLiteral("😀").repeated(200)),
              QStringLiteral("26.03.04 @ 0506 - xx") + QStringLiteral("😀").repeated(56) +
                  QStringLiteral(".txt"));
}

TEST(SentCopyTest, HoldsTheHeadersAndTheMessageAsTyped) {
    test::TestProfile profile;
    profile.session.Prefs.SMTPEmail = QStringLiteral("ann@example.org");
    WriteSentCopy(profile.session, QStringLiteral("Mailing List"), QStringLiteral("News: all?"),
                  QStringLiteral("Grüße\r\n\r\nend"));
    EXPECT_EQ(profile.Read(QStringLiteral("sent/26.03.04 @ 0506 - News all.txt")),
              "From: ann@example.org\r\nTo: Mailing List\r\nSubject: News: all?\r\n\r\nGr\xC3\xBC\xC3\x9F"
              "e\r\n\r\nend\r\n");
}

TEST(SentCopyTest, ReplacesTheCopyOfTheSameMinuteAndSubject) {
    test::TestProfile profile;
    WriteSentCopy(profile.session, QString(), QStringLiteral("s"), QStringLiteral("a long first text"));
    WriteSentCopy(profile.session, QString(), QStringLiteral("s"), QStringLiteral("short"));
    EXPECT_EQ(SentFiles(profile), QStringList(QStringLiteral("26.03.04 @ 0506 - s.txt")));
    EXPECT_EQ(profile.Read(QStringLiteral("sent/26.03.04 @ 0506 - s.txt")),
              "From: \r\nTo: \r\nSubject: s\r\n\r\nshort\r\n");
}

TEST(SentCopyTest, ASubjectOfAnyLengthCanBeWritten) {
    test::TestProfile profile;
    for (const QString &subject :
         {QString(300, u'x'), QString(300, u'ü'), QStringLiteral("😀").repeated(300)}) {
        WriteSentCopy(profile.session, QString(), subject, QStringLiteral("text"));
        EXPECT_EQ(profile.Read(QStringLiteral("sent/") + NameOf(subject)).right(8), "\r\ntext\r\n");
    }
    EXPECT_EQ(SentFiles(profile).size(), 3);
}

TEST(SentCopyTest, AMissingFolderIsAPathNotFound) {
    test::TestProfile profile;
    ASSERT_TRUE(QDir(profile.Path(QStringLiteral("sent"))).removeRecursively());
    try {
        WriteSentCopy(profile.session, QString(), QStringLiteral("s"), QStringLiteral("t"));
        FAIL() << "nothing thrown";
    } catch (const RuntimeError &error) {
        EXPECT_EQ(error.Number(), 76);
    }
}

} // namespace
} // namespace varlo

#include "core/modPublic.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace varlo::test {
namespace {

TEST(LowerCased, IsWhatQtMakesOfEveryCharacter) {
    for (int c = 0; c <= 0xFFFF; ++c) {
        const QString text = QStringLiteral("a@") + QChar(c) + u'z';
        ASSERT_EQ(LowerCased(text), text.toLower()) << c;
    }
}

TEST(LowerCased, SharesATextThatIsLowerCaseAlready) {
    const QString text = QStringLiteral("joe.1-x_{~}@y.test");
    EXPECT_EQ(LowerCased(text).constData(), text.constData());
    EXPECT_EQ(LowerCased(QString()), QString());
}

TEST(PathExists, FindsFilesAndFolders) {
    const QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("file"));
    EXPECT_TRUE(PathExists(folder.path()));
    EXPECT_FALSE(PathExists(file));
    ASSERT_TRUE(QFile(file).open(QIODevice::WriteOnly));
    EXPECT_TRUE(PathExists(file));
    EXPECT_FALSE(PathExists(file + QStringLiteral("/below")));
    EXPECT_FALSE(PathExists(QString()));
}

TEST(PathExists, FindsALinkThatLeadsNowhere) {
    const QTemporaryDir folder;
    const QString link = folder.filePath(QStringLiteral("link"));
    ASSERT_TRUE(QFile::link(folder.filePath(QStringLiteral("none")), link));
    EXPECT_TRUE(PathExists(link));
}

TEST(StripChars, EachOfTheCharactersBecomesABlank) {
    EXPECT_EQ(StripChars(QStringLiteral("a/b:c"), kForbiddenInNames), QStringLiteral("a b c"));
    EXPECT_EQ(StripChars(QStringLiteral("\\/:*?\"<>|"), kForbiddenInNames), QString(9, u' '));
}

TEST(StripChars, KeepsLetterCaseAndEverythingElse) {
    EXPECT_EQ(StripChars(QStringLiteral(" aA.x "), QStringLiteral("a")), QStringLiteral("  A.x "));
    EXPECT_EQ(StripChars(QString(), kForbiddenInNames), QString());
    EXPECT_EQ(StripChars(QStringLiteral("a/b"), QString()), QStringLiteral("a/b"));
}

TEST(DurationText, HoursAndMinutesAppearOnlyAboveZero) {
    EXPECT_EQ(DurationText(0), QStringLiteral("0 secs"));
    EXPECT_EQ(DurationText(59), QStringLiteral("59 secs"));
    EXPECT_EQ(DurationText(60), QStringLiteral("1 mins, 0 secs"));
    EXPECT_EQ(DurationText(3600), QStringLiteral("1 hrs, 0 secs"));
    EXPECT_EQ(DurationText(3723), QStringLiteral("1 hrs, 2 mins, 3 secs"));
    EXPECT_EQ(DurationText(360000), QStringLiteral("100 hrs, 0 secs"));
}

} // namespace
} // namespace varlo::test

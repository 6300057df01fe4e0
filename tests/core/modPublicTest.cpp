#include "core/modPublic.h"

#include "core/Literals.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace varlo::test {
namespace {

TEST(LowerCased, IsWhatQtMakesOfEveryCharacter) {
    for (int c = 0; c <= 0xFFFF; ++c) {
        const QString text = u"a@"_s + QChar(c) + u'z';
        ASSERT_EQ(LowerCased(text), text.toLower()) << c;
    }
}

TEST(LowerCased, SharesATextThatIsLowerCaseAlready) {
    const QString text = u"joe.1-x_{~}@y.test"_s;
    EXPECT_EQ(LowerCased(text).constData(), text.constData());
    EXPECT_EQ(LowerCased(QString()), QString());
}

TEST(SortNames, LetterCaseOrdersOnlyWhatIsElseEqual) {
    QStringList names{u"beta"_s, u"Alpha"_s, u"alpha"_s, u"Beta 2"_s};
    SortNames(names);
    EXPECT_EQ(names, (QStringList{u"Alpha"_s, u"alpha"_s, u"beta"_s, u"Beta 2"_s}));
}

TEST(PathExists, FindsFilesAndFolders) {
    const QTemporaryDir folder;
    const QString file = folder.filePath(u"file"_s);
    EXPECT_TRUE(PathExists(folder.path()));
    EXPECT_FALSE(PathExists(file));
    ASSERT_TRUE(QFile(file).open(QIODevice::WriteOnly));
    EXPECT_TRUE(PathExists(file));
    EXPECT_FALSE(PathExists(file + u"/below"_s));
    EXPECT_FALSE(PathExists(QString()));
}

TEST(PathExists, FindsALinkThatLeadsNowhere) {
    const QTemporaryDir folder;
    const QString link = folder.filePath(u"link"_s);
    ASSERT_TRUE(QFile::link(folder.filePath(u"none"_s), link));
    EXPECT_TRUE(PathExists(link));
}

TEST(StripChars, EachOfTheCharactersBecomesABlank) {
    EXPECT_EQ(StripChars(u"a/b:c"_s, kForbiddenInNames), u"a b c"_s);
    EXPECT_EQ(StripChars(u"\\/:*?\"<>|"_s, kForbiddenInNames), QString(9, u' '));
}

TEST(StripChars, KeepsLetterCaseAndEverythingElse) {
    EXPECT_EQ(StripChars(u" aA.x "_s, u"a"_s), u"  A.x "_s);
    EXPECT_EQ(StripChars(QString(), kForbiddenInNames), QString());
    EXPECT_EQ(StripChars(u"a/b"_s, QString()), u"a/b"_s);
}

TEST(DurationText, HoursAndMinutesAppearOnlyAboveZero) {
    EXPECT_EQ(DurationText(0), u"0 secs"_s);
    EXPECT_EQ(DurationText(59), u"59 secs"_s);
    EXPECT_EQ(DurationText(60), u"1 mins, 0 secs"_s);
    EXPECT_EQ(DurationText(3600), u"1 hrs, 0 secs"_s);
    EXPECT_EQ(DurationText(3723), u"1 hrs, 2 mins, 3 secs"_s);
    EXPECT_EQ(DurationText(360000), u"100 hrs, 0 secs"_s);
}

} // namespace
} // namespace varlo::test

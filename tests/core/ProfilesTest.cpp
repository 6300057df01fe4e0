#include "core/Profiles.h"

#include "core/Literals.h"
#include "core/RuntimeError.h"
#include "support/ErrorOf.h"

#include <QDir>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <algorithm>

namespace varlo::test {
namespace {

class ProfilesTest : public testing::Test {
protected:
    void Make(const QString &path) { ASSERT_TRUE(QDir(folder_.path()).mkpath(path)); }
    void MakeFile(const QString &path) {
        QFile file(folder_.filePath(path));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    }
    QStringList Entries() const {
        return QDir(folder_.path())
            .entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System, QDir::Name);
    }
    // The number of the error that the statement throws; 0 when it does not.

    QTemporaryDir folder_;
};

TEST_F(ProfilesTest, NamesAreFoldersSortedWithoutRegardToCase) {
    for (const char *name : {"work", "Home", "Zoo", "abc"})
        Make(QString::fromLatin1(name));
    MakeFile(u"ErrorLog.txt"_s);
    EXPECT_EQ(Profiles::Names(folder_.path()), (QStringList{u"abc"_s, u"Home"_s, u"work"_s, u"Zoo"_s}));
}

TEST_F(ProfilesTest, NamesThatDifferInCaseOnlyKeepOneOrder) {
    // The remembered profile is a position: the order must not depend on which folder was made first.
    const QStringList names{u"WORK"_s, u"Work"_s, u"work"_s};
    QStringList order = names;
    do {
        QTemporaryDir folder;
        for (const QString &name : order)
            ASSERT_TRUE(QDir(folder.path()).mkdir(name));
        EXPECT_EQ(Profiles::Names(folder.path()), names);
    } while (std::next_permutation(order.begin(), order.end()));
}

TEST_F(ProfilesTest, MissingFolderHasNoNames) {
    EXPECT_EQ(Profiles::Names(folder_.filePath(u"none"_s)), QStringList());
}

TEST_F(ProfilesTest, CreateMakesAnEmptyFolder) {
    Profiles::Create(folder_.path(), u" with blanks "_s);
    EXPECT_EQ(Entries(), QStringList{u" with blanks "_s});
}

TEST_F(ProfilesTest, CreateRefusesAnExistingFolder) {
    Make(u"Work"_s);
    EXPECT_EQ(ErrorOf([&] { Profiles::Create(folder_.path(), u"Work"_s); }), PathFileAccess);
}

TEST_F(ProfilesTest, CreateRefusesTheNameOfAFile) {
    MakeFile(u"Work"_s);
    EXPECT_EQ(ErrorOf([&] { Profiles::Create(folder_.path(), u"Work"_s); }), PathFileAccess);
    EXPECT_EQ(Entries(), QStringList{u"Work"_s});
}

TEST_F(ProfilesTest, CreateNeedsTheProfilesFolder) {
    const QString none = folder_.filePath(u"none"_s);
    EXPECT_EQ(ErrorOf([&] { Profiles::Create(none, u"Work"_s); }), PathNotFound);
}

TEST_F(ProfilesTest, RenameKeepsTheContents) {
    Make(u"Work/lists"_s);
    Profiles::Rename(folder_.path(), u"Work"_s, u"Home"_s);
    EXPECT_EQ(Entries(), QStringList{u"Home"_s});
    EXPECT_TRUE(QFileInfo(folder_.filePath(u"Home/lists"_s)).isDir());
}

TEST_F(ProfilesTest, RenameToOtherLetterCaseRenames) {
    Make(u"Work"_s);
    Profiles::Rename(folder_.path(), u"Work"_s, u"work"_s);
    EXPECT_EQ(Entries(), QStringList{u"work"_s});
}

TEST_F(ProfilesTest, RenameRefusesATakenName) {
    Make(u"Work"_s);
    Make(u"Home"_s); // empty: the system itself would let a folder replace it
    EXPECT_EQ(ErrorOf([&] { Profiles::Rename(folder_.path(), u"Work"_s, u"Home"_s); }), FileAlreadyExists);
    EXPECT_EQ(Entries(), (QStringList{u"Home"_s, u"Work"_s}));
}

TEST_F(ProfilesTest, RenameOfAVanishedProfileIsRefused) {
    EXPECT_EQ(ErrorOf([&] { Profiles::Rename(folder_.path(), u"Work"_s, u"Home"_s); }), FileNotFound);
}

TEST_F(ProfilesTest, RenameWithoutAnOldNameNeverMovesTheProfilesFolder) {
    Make(u"profiles/Work"_s);
    const QString profiles = folder_.filePath(u"profiles"_s);
    for (const char *name : {"", ".", "..", "../profiles"})
        EXPECT_EQ(ErrorOf([&] { Profiles::Rename(profiles, QString::fromLatin1(name), u"New"_s); }),
                  FileNotFound)
            << name;
    EXPECT_TRUE(QFileInfo(folder_.filePath(u"profiles/Work"_s)).isDir());
}

TEST_F(ProfilesTest, DeleteRemovesEverythingBelow) {
    Make(u"Work/lists/deep"_s);
    MakeFile(u"Work/.hidden"_s);
    Make(u"Home"_s);
    Profiles::Delete(folder_.path(), u"Work"_s);
    EXPECT_EQ(Entries(), QStringList{u"Home"_s});
}

TEST_F(ProfilesTest, DeleteOfAVanishedProfileGoesUnnoticed) {
    Make(u"Home"_s);
    EXPECT_NO_THROW(Profiles::Delete(folder_.path(), u"Work"_s));
    EXPECT_EQ(Entries(), QStringList{u"Home"_s});
}

TEST_F(ProfilesTest, DeleteNeverLeavesTheProfilesFolder) {
    Make(u"profiles/Work"_s);
    Make(u"other"_s);
    const QString profiles = folder_.filePath(u"profiles"_s);
    for (const char *name : {"", ".", "..", "../other", "/"})
        Profiles::Delete(profiles, QString::fromLatin1(name));
    EXPECT_TRUE(QFileInfo(folder_.filePath(u"profiles/Work"_s)).isDir());
    EXPECT_TRUE(QFileInfo(folder_.filePath(u"other"_s)).isDir());
}

TEST_F(ProfilesTest, DeleteRemovesLinksAndNotWhatTheyLeadTo) {
    Make(u"profiles/Work"_s);
    Make(u"outside"_s);
    MakeFile(u"outside/kept.vlo"_s);
    const QString outside = folder_.filePath(u"outside"_s);
    ASSERT_TRUE(QFile::link(outside, folder_.filePath(u"profiles/Work/lists"_s)));
    ASSERT_TRUE(QFile::link(outside, folder_.filePath(u"profiles/Linked"_s)));
    const QString profiles = folder_.filePath(u"profiles"_s);
    Profiles::Delete(profiles, u"Work"_s);
    Profiles::Delete(profiles, u"Linked"_s);
    EXPECT_EQ(QDir(profiles).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::System),
              QStringList());
    EXPECT_TRUE(QFile::exists(folder_.filePath(u"outside/kept.vlo"_s)));
}

} // namespace
} // namespace varlo::test

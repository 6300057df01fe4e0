#include "core/Profiles.h"

#include "core/RuntimeError.h"

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
    template<typename Statement> static int ErrorOf(Statement statement) {
        try {
            statement();
            return 0;
        } catch (const RuntimeError &error) {
            return error.Number();
        }
    }

    QTemporaryDir folder_;
};

TEST_F(ProfilesTest, NamesAreFoldersSortedWithoutRegardToCase) {
    for (const char *name : {"work", "Home", "Zoo", "abc"})
        Make(QString::fromLatin1(name));
    MakeFile(QStringLiteral("ErrorLog.txt"));
    EXPECT_EQ(Profiles::Names(folder_.path()), (QStringList{QStringLiteral("abc"), QStringLiteral("Home"),
                                                            QStringLiteral("work"), QStringLiteral("Zoo")}));
}

TEST_F(ProfilesTest, NamesThatDifferInCaseOnlyKeepOneOrder) {
    // The remembered profile is a position: the order must not depend on which folder was made first.
    const QStringList names{QStringLiteral("WORK"), QStringLiteral("Work"), QStringLiteral("work")};
    QStringList order = names;
    do {
        QTemporaryDir folder;
        for (const QString &name : order)
            ASSERT_TRUE(QDir(folder.path()).mkdir(name));
        EXPECT_EQ(Profiles::Names(folder.path()), names);
    } while (std::next_permutation(order.begin(), order.end()));
}

TEST_F(ProfilesTest, MissingFolderHasNoNames) {
    EXPECT_EQ(Profiles::Names(folder_.filePath(QStringLiteral("none"))), QStringList());
}

TEST_F(ProfilesTest, CreateMakesAnEmptyFolder) {
    Profiles::Create(folder_.path(), QStringLiteral(" with blanks "));
    EXPECT_EQ(Entries(), QStringList{QStringLiteral(" with blanks ")});
}

TEST_F(ProfilesTest, CreateRefusesAnExistingFolder) {
    Make(QStringLiteral("Work"));
    EXPECT_EQ(ErrorOf([&] { Profiles::Create(folder_.path(), QStringLiteral("Work")); }), PathFileAccess);
}

TEST_F(ProfilesTest, CreateRefusesTheNameOfAFile) {
    MakeFile(QStringLiteral("Work"));
    EXPECT_EQ(ErrorOf([&] { Profiles::Create(folder_.path(), QStringLiteral("Work")); }), PathFileAccess);
    EXPECT_EQ(Entries(), QStringList{QStringLiteral("Work")});
}

TEST_F(ProfilesTest, CreateNeedsTheProfilesFolder) {
    const QString none = folder_.filePath(QStringLiteral("none"));
    EXPECT_EQ(ErrorOf([&] { Profiles::Create(none, QStringLiteral("Work")); }), PathNotFound);
}

TEST_F(ProfilesTest, RenameKeepsTheContents) {
    Make(QStringLiteral("Work/lists"));
    Profiles::Rename(folder_.path(), QStringLiteral("Work"), QStringLiteral("Home"));
    EXPECT_EQ(Entries(), QStringList{QStringLiteral("Home")});
    EXPECT_TRUE(QFileInfo(folder_.filePath(QStringLiteral("Home/lists"))).isDir());
}

TEST_F(ProfilesTest, RenameToOtherLetterCaseRenames) {
    Make(QStringLiteral("Work"));
    Profiles::Rename(folder_.path(), QStringLiteral("Work"), QStringLiteral("work"));
    EXPECT_EQ(Entries(), QStringList{QStringLiteral("work")});
}

TEST_F(ProfilesTest, RenameRefusesATakenName) {
    Make(QStringLiteral("Work"));
    Make(QStringLiteral("Home")); // empty: the system itself would let a folder replace it
    EXPECT_EQ(
        ErrorOf([&] { Profiles::Rename(folder_.path(), QStringLiteral("Work"), QStringLiteral("Home")); }),
        FileAlreadyExists);
    EXPECT_EQ(Entries(), (QStringList{QStringLiteral("Home"), QStringLiteral("Work")}));
}

TEST_F(ProfilesTest, RenameOfAVanishedProfileIsRefused) {
    EXPECT_EQ(
        ErrorOf([&] { Profiles::Rename(folder_.path(), QStringLiteral("Work"), QStringLiteral("Home")); }),
        FileNotFound);
}

TEST_F(ProfilesTest, RenameWithoutAnOldNameNeverMovesTheProfilesFolder) {
    Make(QStringLiteral("profiles/Work"));
    const QString profiles = folder_.filePath(QStringLiteral("profiles"));
    for (const char *name : {"", ".", "..", "../profiles"})
        EXPECT_EQ(
            ErrorOf([&] { Profiles::Rename(profiles, QString::fromLatin1(name), QStringLiteral("New")); }),
            FileNotFound)
            << name;
    EXPECT_TRUE(QFileInfo(folder_.filePath(QStringLiteral("profiles/Work"))).isDir());
}

TEST_F(ProfilesTest, DeleteRemovesEverythingBelow) {
    Make(QStringLiteral("Work/lists/deep"));
    MakeFile(QStringLiteral("Work/.hidden"));
    Make(QStringLiteral("Home"));
    Profiles::Delete(folder_.path(), QStringLiteral("Work"));
    EXPECT_EQ(Entries(), QStringList{QStringLiteral("Home")});
}

TEST_F(ProfilesTest, DeleteOfAVanishedProfileGoesUnnoticed) {
    Make(QStringLiteral("Home"));
    EXPECT_NO_THROW(Profiles::Delete(folder_.path(), QStringLiteral("Work")));
    EXPECT_EQ(Entries(), QStringList{QStringLiteral("Home")});
}

TEST_F(ProfilesTest, DeleteNeverLeavesTheProfilesFolder) {
    Make(QStringLiteral("profiles/Work"));
    Make(QStringLiteral("other"));
    const QString profiles = folder_.filePath(QStringLiteral("profiles"));
    for (const char *name : {"", ".", "..", "../other", "/"})
        Profiles::Delete(profiles, QString::fromLatin1(name));
    EXPECT_TRUE(QFileInfo(folder_.filePath(QStringLiteral("profiles/Work"))).isDir());
    EXPECT_TRUE(QFileInfo(folder_.filePath(QStringLiteral("other"))).isDir());
}

TEST_F(ProfilesTest, DeleteRemovesLinksAndNotWhatTheyLeadTo) {
    Make(QStringLiteral("profiles/Work"));
    Make(QStringLiteral("outside"));
    MakeFile(QStringLiteral("outside/kept.vlo"));
    const QString outside = folder_.filePath(QStringLiteral("outside"));
    ASSERT_TRUE(QFile::link(outside, folder_.filePath(QStringLiteral("profiles/Work/lists"))));
    ASSERT_TRUE(QFile::link(outside, folder_.filePath(QStringLiteral("profiles/Linked"))));
    const QString profiles = folder_.filePath(QStringLiteral("profiles"));
    Profiles::Delete(profiles, QStringLiteral("Work"));
    Profiles::Delete(profiles, QStringLiteral("Linked"));
    EXPECT_EQ(QDir(profiles).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::System),
              QStringList());
    EXPECT_TRUE(QFile::exists(folder_.filePath(QStringLiteral("outside/kept.vlo"))));
}

} // namespace
} // namespace varlo::test

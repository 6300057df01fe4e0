#include "prefs/Maintenance.h"

#include "core/Literals.h"
#include "core/RuntimeError.h"
#include "support/TestProfile.h"

namespace varlo::test {
namespace {

struct MaintenanceTest : testing::Test {
    TestProfile Profile;
    Session &session = Profile.session;

    QStringList Entries(const QString &folder) const {
        return QDir(Profile.Path(folder))
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    }

    void Run(const char *item) { RunMaintenance(session, QString::fromUtf8(item)); }
};

const ShownBox kLogQuestion{u"Varlo Pro"_s, u"Are you sure you want to delete all log files?"_s,
                            BoxButtons::YesNo, BoxIcon::Question};
const ShownBox kSentQuestion{u"Varlo Pro"_s, u"Are you sure you want to delete all sent messages?"_s,
                             BoxButtons::YesNo, BoxIcon::Question};

TEST_F(MaintenanceTest, ItemsStandInTheirOrder) {
    EXPECT_EQ(MaintenanceItems(), (QStringList{u"Open log files folder"_s, u"Open sent messages folder"_s,
                                               u"Delete log files"_s, u"Delete sent messages"_s}));
}

TEST_F(MaintenanceTest, OpeningHandsTheFoldersToTheDesktop) {
    Run("Open log files folder");
    Run("Open sent messages folder");
    EXPECT_EQ(Profile.Boxes.Opened, (std::vector<QUrl>{QUrl::fromLocalFile(Profile.Path(u"logs"_s)),
                                                       QUrl::fromLocalFile(Profile.Path(u"sent"_s))}));
    EXPECT_TRUE(Profile.Boxes.Shown.empty());
}

TEST_F(MaintenanceTest, YesDeletesEveryLogFileAndSaysSo) {
    for (const char *name : {"ErrorLog.txt", "no point", ".hidden", "ümläut.txt", "a.b.c"})
        Profile.Write(u"logs/"_s + QString::fromUtf8(name), "x");
    Profile.Write(u"sent/kept.txt"_s, "x");
    Profile.Boxes.Answers = {BoxAnswer::Yes};
    Run("Delete log files");
    EXPECT_EQ(Entries(u"logs"_s), QStringList());
    EXPECT_EQ(Entries(u"sent"_s), QStringList(u"kept.txt"_s));
    EXPECT_EQ(Profile.Boxes.Shown, (std::vector<ShownBox>{kLogQuestion,
                                                          {u"Varlo Pro"_s, u"Log files deleted"_s,
                                                           BoxButtons::Ok, BoxIcon::Information}}));
}

TEST_F(MaintenanceTest, YesDeletesEverySentMessageAndSaysSo) {
    Profile.Write(u"sent/one.txt"_s, "x");
    Profile.Write(u"logs/ErrorLog.txt"_s, "x");
    Profile.Boxes.Answers = {BoxAnswer::Yes};
    Run("Delete sent messages");
    EXPECT_EQ(Entries(u"sent"_s), QStringList());
    EXPECT_EQ(Entries(u"logs"_s), QStringList(u"ErrorLog.txt"_s));
    EXPECT_EQ(Profile.Boxes.Shown, (std::vector<ShownBox>{kSentQuestion,
                                                          {u"Varlo Pro"_s, u"Sent messages deleted"_s,
                                                           BoxButtons::Ok, BoxIcon::Information}}));
}

TEST_F(MaintenanceTest, NoDeletesNothingAndSaysNothingMore) {
    Profile.Write(u"logs/ErrorLog.txt"_s, "x");
    Profile.Boxes.Answers = {BoxAnswer::No};
    Run("Delete log files");
    EXPECT_EQ(Entries(u"logs"_s), QStringList(u"ErrorLog.txt"_s));
    EXPECT_EQ(Profile.Boxes.Shown, std::vector<ShownBox>{kLogQuestion});
    EXPECT_EQ(Profile.Boxes.Destroying, QStringList(kLogQuestion.Text)) << "Enter alone deletes nothing";
}

TEST_F(MaintenanceTest, EmptyFolderIsPassedOverInSilence) {
    Profile.Boxes.Answers = {BoxAnswer::Yes};
    Run("Delete sent messages");
    EXPECT_EQ(Profile.Boxes.Shown, std::vector<ShownBox>{kSentQuestion});
    EXPECT_EQ(Profile.Log(u"ErrorLog.txt"_s), QStringList());
}

TEST_F(MaintenanceTest, MissingFolderIsPassedOverInSilence) {
    ASSERT_TRUE(QDir(Profile.Path(u"sent"_s)).removeRecursively());
    Profile.Boxes.Answers = {BoxAnswer::Yes};
    Run("Delete sent messages");
    EXPECT_EQ(Profile.Boxes.Shown, std::vector<ShownBox>{kSentQuestion});
}

TEST_F(MaintenanceTest, FoldersAndWhatLinksLeadToAreNotTouched) {
    ASSERT_TRUE(QDir().mkpath(Profile.Path(u"logs/old.files"_s)));
    Profile.Write(u"logs/old.files/inner.txt"_s, "x");
    Profile.Write(u"draft.txt"_s, "x");
    ASSERT_TRUE(QFile::link(Profile.Path(u"draft.txt"_s), Profile.Path(u"logs/link"_s)));
    ASSERT_TRUE(QFile::link(u"/nowhere"_s, Profile.Path(u"logs/broken"_s)));
    ASSERT_TRUE(QFile::link(Profile.Path(u"lists"_s), Profile.Path(u"logs/tolists"_s)));
    DeleteAllFiles(Profile.Path(u"logs"_s));
    EXPECT_EQ(Entries(u"logs"_s), (QStringList{u"old.files"_s, u"tolists"_s}));
    EXPECT_EQ(Entries(u"logs/old.files"_s), QStringList(u"inner.txt"_s));
    EXPECT_EQ(Profile.Read(u"draft.txt"_s), QByteArray("x"));
}

TEST_F(MaintenanceTest, FolderWithOnlyFoldersHasNoFileToDelete) {
    ASSERT_TRUE(QDir().mkpath(Profile.Path(u"logs/inner"_s)));
    try {
        DeleteAllFiles(Profile.Path(u"logs"_s));
        ADD_FAILURE() << "nothing was thrown";
    } catch (const RuntimeError &error) {
        EXPECT_EQ(error.Number(), FileNotFound);
    }
}

TEST_F(MaintenanceTest, FileThatCannotBeDeletedIsReportedInsteadOfTheClosingMessage) {
    // Nobody, the superuser included, can delete what the kernel shows under /proc.
    if (!QFile::exists(u"/proc/self/attr/current"_s))
        GTEST_SKIP() << "needs a Linux /proc";
    ASSERT_TRUE(QDir().rmdir(Profile.Path(u"sent"_s)));
    ASSERT_TRUE(QFile::link(u"/proc/self/attr"_s, Profile.Path(u"sent"_s)));
    Profile.Boxes.Answers = {BoxAnswer::Yes};
    Run("Delete sent messages");
    ASSERT_EQ(Profile.Boxes.Shown.size(), 2U);
    EXPECT_EQ(Profile.Boxes.Shown[1].Title, u"varlo-pro Error 70 in Preferences.cmdLogGo"_s);
    EXPECT_TRUE(Profile.Boxes.Shown[1].Text.contains(u"[ Permission denied ]"_s));
    EXPECT_EQ(Profile.Log(u"ErrorLog.txt"_s).size(), 1);
}

// A desktop on which nothing opens a folder.
class BareDesktop : public ScriptedDialogs {
public:
    bool OpenUrl(const QUrl &) override { return false; }
};

TEST_F(MaintenanceTest, DesktopWithoutAFileManagerIsReported) {
    BareDesktop boxes;
    Session bare(session.ProgramFolder, boxes);
    bare.ProfilePath = session.ProfilePath;
    RunMaintenance(bare, u"Open log files folder"_s);
    ASSERT_EQ(boxes.Shown.size(), 1U);
    EXPECT_EQ(boxes.Shown[0].Title, u"varlo-pro Error 5 in Preferences.cmdLogGo"_s);
    EXPECT_TRUE(boxes.Shown[0].Text.contains(u"[ No program opens the folder "_s));
}

TEST_F(MaintenanceTest, OpeningAFolderThatIsGoneIsPassedOverInSilence) {
    BareDesktop boxes;
    Session bare(session.ProgramFolder, boxes);
    bare.ProfilePath = Profile.Path(u"gone"_s);
    RunMaintenance(bare, u"Open sent messages folder"_s);
    EXPECT_TRUE(boxes.Shown.empty());
}

TEST_F(MaintenanceTest, UnknownItemDoesNothing) {
    Profile.Write(u"logs/ErrorLog.txt"_s, "x");
    Run("delete log files");
    Run("");
    EXPECT_EQ(Entries(u"logs"_s), QStringList(u"ErrorLog.txt"_s));
    EXPECT_TRUE(Profile.Boxes.Shown.empty());
    EXPECT_TRUE(Profile.Boxes.Opened.empty());
}

} // namespace
} // namespace varlo::test

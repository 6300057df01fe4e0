#include "prefs/Maintenance.h"

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

const ShownBox kLogQuestion{QStringLiteral("Varlo Pro"),
                            QStringLiteral("Are you sure you want to delete all log files?"),
                            BoxButtons::YesNo, BoxIcon::Question};
const ShownBox kSentQuestion{QStringLiteral("Varlo Pro"),
                             QStringLiteral("Are you sure you want to delete all sent messages?"),
                             BoxButtons::YesNo, BoxIcon::Question};

TEST_F(MaintenanceTest, ItemsStandInTheirOrder) {
    EXPECT_EQ(
        MaintenanceItems(),
        (QStringList{QStringLiteral("Open log files folder"), QStringLiteral("Open sent messages folder"),
                     QStringLiteral("Delete log files"), QStringLiteral("Delete sent messages")}));
}

TEST_F(MaintenanceTest, OpeningHandsTheFoldersToTheDesktop) {
    Run("Open log files folder");
    Run("Open sent messages folder");
    EXPECT_EQ(Profile.Boxes.Opened,
              (std::vector<QUrl>{QUrl::fromLocalFile(Profile.Path(QStringLiteral("logs"))),
                                 QUrl::fromLocalFile(Profile.Path(QStringLiteral("sent")))}));
    EXPECT_TRUE(Profile.Boxes.Shown.empty());
}

TEST_F(MaintenanceTest, YesDeletesEveryLogFileAndSaysSo) {
    for (const char *name : {"ErrorLog.txt", "no point", ".hidden", "ümläut.txt", "a.b.c"})
        Profile.Write(QStringLiteral("logs/") + QString::fromUtf8(name), "x");
    Profile.Write(QStringLiteral("sent/kept.txt"), "x");
    Profile.Boxes.Answers = {BoxAnswer::Yes};
    Run("Delete log files");
    EXPECT_EQ(Entries(QStringLiteral("logs")), QStringList());
    EXPECT_EQ(Entries(QStringLiteral("sent")), QStringList(QStringLiteral("kept.txt")));
    EXPECT_EQ(Profile.Boxes.Shown,
              (std::vector<ShownBox>{kLogQuestion,
                                     {QStringLiteral("Varlo Pro"), QStringLiteral("Log files deleted"),
                                      BoxButtons::Ok, BoxIcon::Information}}));
}

TEST_F(MaintenanceTest, YesDeletesEverySentMessageAndSaysSo) {
    Profile.Write(QStringLiteral("sent/one.txt"), "x");
    Profile.Write(QStringLiteral("logs/ErrorLog.txt"), "x");
    Profile.Boxes.Answers = {BoxAnswer::Yes};
    Run("Delete sent messages");
    EXPECT_EQ(Entries(QStringLiteral("sent")), QStringList());
    EXPECT_EQ(Entries(QStringLiteral("logs")), QStringList(QStringLiteral("ErrorLog.txt")));
    EXPECT_EQ(Profile.Boxes.Shown,
              (std::vector<ShownBox>{kSentQuestion,
                                     {QStringLiteral("Varlo Pro"), QStringLiteral("Sent messages deleted"),
                                      BoxButtons::Ok, BoxIcon::Information}}));
}

TEST_F(MaintenanceTest, NoDeletesNothingAndSaysNothingMore) {
    Profile.Write(QStringLiteral("logs/ErrorLog.txt"), "x");
    Profile.Boxes.Answers = {BoxAnswer::No};
    Run("Delete log files");
    EXPECT_EQ(Entries(QStringLiteral("logs")), QStringList(QStringLiteral("ErrorLog.txt")));
    EXPECT_EQ(Profile.Boxes.Shown, std::vector<ShownBox>{kLogQuestion});
}

TEST_F(MaintenanceTest, EmptyFolderIsPassedOverInSilence) {
    Profile.Boxes.Answers = {BoxAnswer::Yes};
    Run("Delete sent messages");
    EXPECT_EQ(Profile.Boxes.Shown, std::vector<ShownBox>{kSentQuestion});
    EXPECT_EQ(Profile.Log(QStringLiteral("ErrorLog.txt")), QStringList());
}

TEST_F(MaintenanceTest, MissingFolderIsPassedOverInSilence) {
    ASSERT_TRUE(QDir(Profile.Path(QStringLiteral("sent"))).removeRecursively());
    Profile.Boxes.Answers = {BoxAnswer::Yes};
    Run("Delete sent messages");
    EXPECT_EQ(Profile.Boxes.Shown, std::vector<ShownBox>{kSentQuestion});
}

TEST_F(MaintenanceTest, FoldersAndWhatLinksLeadToAreNotTouched) {
    ASSERT_TRUE(QDir().mkpath(Profile.Path(QStringLiteral("logs/old.files"))));
    Profile.Write(QStringLiteral("logs/old.files/inner.txt"), "x");
    Profile.Write(QStringLiteral("draft.txt"), "x");
    ASSERT_TRUE(
        QFile::link(Profile.Path(QStringLiteral("draft.txt")), Profile.Path(QStringLiteral("logs/link"))));
    ASSERT_TRUE(QFile::link(QStringLiteral("/nowhere"), Profile.Path(QStringLiteral("logs/broken"))));
    ASSERT_TRUE(
        QFile::link(Profile.Path(QStringLiteral("lists")), Profile.Path(QStringLiteral("logs/tolists"))));
    DeleteAllFiles(Profile.Path(QStringLiteral("logs")));
    EXPECT_EQ(Entries(QStringLiteral("logs")),
              (QStringList{QStringLiteral("old.files"), QStringLiteral("tolists")}));
    EXPECT_EQ(Entries(QStringLiteral("logs/old.files")), QStringList(QStringLiteral("inner.txt")));
    EXPECT_EQ(Profile.Read(QStringLiteral("draft.txt")), QByteArray("x"));
}

TEST_F(MaintenanceTest, FolderWithOnlyFoldersHasNoFileToDelete) {
    ASSERT_TRUE(QDir().mkpath(Profile.Path(QStringLiteral("logs/inner"))));
    try {
        DeleteAllFiles(Profile.Path(QStringLiteral("logs")));
        ADD_FAILURE() << "nothing was thrown";
    } catch (const RuntimeError &error) {
        EXPECT_EQ(error.Number(), FileNotFound);
    }
}

TEST_F(MaintenanceTest, FileThatCannotBeDeletedIsReportedInsteadOfTheClosingMessage) {
    // Nobody, the superuser included, can delete what the kernel shows under /proc.
    if (!QFile::exists(QStringLiteral("/proc/self/attr/current")))
        GTEST_SKIP() << "needs a Linux /proc";
    ASSERT_TRUE(QDir().rmdir(Profile.Path(QStringLiteral("sent"))));
    ASSERT_TRUE(QFile::link(QStringLiteral("/proc/self/attr"), Profile.Path(QStringLiteral("sent"))));
    Profile.Boxes.Answers = {BoxAnswer::Yes};
    Run("Delete sent messages");
    ASSERT_EQ(Profile.Boxes.Shown.size(), 2U);
    EXPECT_EQ(Profile.Boxes.Shown[1].Title, QStringLiteral("varlo-pro Error 70 in Preferences.cmdLogGo"));
    EXPECT_TRUE(Profile.Boxes.Shown[1].Text.contains(QStringLiteral("[ Permission denied ]")));
    EXPECT_EQ(Profile.Log(QStringLiteral("ErrorLog.txt")).size(), 1);
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
    RunMaintenance(bare, QStringLiteral("Open log files folder"));
    ASSERT_EQ(boxes.Shown.size(), 1U);
    EXPECT_EQ(boxes.Shown[0].Title, QStringLiteral("varlo-pro Error 5 in Preferences.cmdLogGo"));
    EXPECT_TRUE(boxes.Shown[0].Text.contains(QStringLiteral("[ No program opens the folder ")));
}

TEST_F(MaintenanceTest, OpeningAFolderThatIsGoneIsPassedOverInSilence) {
    BareDesktop boxes;
    Session bare(session.ProgramFolder, boxes);
    bare.ProfilePath = Profile.Path(QStringLiteral("gone"));
    RunMaintenance(bare, QStringLiteral("Open sent messages folder"));
    EXPECT_TRUE(boxes.Shown.empty());
}

TEST_F(MaintenanceTest, UnknownItemDoesNothing) {
    Profile.Write(QStringLiteral("logs/ErrorLog.txt"), "x");
    Run("delete log files");
    Run("");
    EXPECT_EQ(Entries(QStringLiteral("logs")), QStringList(QStringLiteral("ErrorLog.txt")));
    EXPECT_TRUE(Profile.Boxes.Shown.empty());
    EXPECT_TRUE(Profile.Boxes.Opened.empty());
}

} // namespace
} // namespace varlo::test

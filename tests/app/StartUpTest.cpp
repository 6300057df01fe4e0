#include "app/StartUp.h"

#include "core/Literals.h"
#include "core/Settings.h"
#include "support/TestProfile.h"
#include "support/WithoutRootRights.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

namespace varlo::test {
namespace {

class StartUpTest : public testing::Test {
protected:
    TestProfile profile;
    ErrorTrap trap{profile.session, u"Main.Load"_s};
};

TEST_F(StartUpTest, AWritableFolderIsItsOwnProgramFolder) {
    EXPECT_EQ(FindProgramFolder(profile.Folder.path()), profile.Folder.path());
}

TEST_F(StartUpTest, AnInstalledCopyKeepsItsDataInTheUsersDataFolder) {
    qputenv("XDG_DATA_HOME", profile.Folder.path().toUtf8());
    const QString folder = FindProgramFolder(u"/usr/bin"_s);
    qunsetenv("XDG_DATA_HOME");
    EXPECT_EQ(folder, profile.Folder.filePath(u"Varlo Pro"_s));
    EXPECT_TRUE(QDir(folder).exists());
}

TEST_F(StartUpTest, ACopyInAReadOnlyPlaceKeepsItsDataInTheUsersDataFolder) {
    const QString place = profile.Folder.filePath(u"place"_s);
    const auto readOnly = QFile::ReadOwner | QFile::ExeOwner | QFile::ReadOther | QFile::ExeOther;
    ASSERT_TRUE(QDir().mkpath(place));
    ASSERT_TRUE(QFile::setPermissions(place, readOnly));
    ASSERT_TRUE(
        QFile::setPermissions(profile.Folder.path(), readOnly | QFile::WriteOwner | QFile::WriteOther));
    const WithoutRootRights asUser; // root may write everywhere
    qputenv("XDG_DATA_HOME", profile.Folder.path().toUtf8());
    const QString folder = FindProgramFolder(place);
    qunsetenv("XDG_DATA_HOME");
    EXPECT_EQ(folder, profile.Folder.filePath(u"Varlo Pro"_s));
}

// A program folder with profiles that has become read-only, as a folder or as a whole.
class ReadOnlyStartTest : public StartUpTest {
protected:
    ReadOnlyStartTest() {
        qputenv("XDG_DATA_HOME", profile.Folder.path().toUtf8());
        EXPECT_TRUE(QDir().mkpath(profiles_));
        Allow(profile.Folder.path(), true);
    }
    ~ReadOnlyStartTest() override {
        qunsetenv("XDG_DATA_HOME");
        for (const QString &folder : {place_, profiles_})
            Allow(folder, true);
    }
    static void Allow(const QString &folder, bool write) {
        const auto read = QFile::ReadOwner | QFile::ExeOwner | QFile::ReadOther | QFile::ExeOther;
        EXPECT_TRUE(
            QFile::setPermissions(folder, write ? read | QFile::WriteOwner | QFile::WriteOther : read));
    }
    const QString place_ = profile.Folder.filePath(u"place"_s);
    const QString profiles_ = place_ + u"/profiles"_s;
};

TEST_F(ReadOnlyStartTest, ProfilesThatCannotBeWrittenAreNeverReplacedByOtherData) {
    Allow(profiles_, false);
    Allow(place_, false);
    const WithoutRootRights asUser; // root may write everywhere
    EXPECT_TRUE(HasReadOnlyProfiles(place_));
    EXPECT_EQ(FindProgramFolder(place_), place_);
    EXPECT_FALSE(QDir(profile.Folder.filePath(u"Varlo Pro"_s)).exists());
}

TEST_F(ReadOnlyStartTest, ProfilesThatCanBeWrittenInAReadOnlyFolderAreUsed) {
    Allow(profiles_, true);
    Allow(place_, false);
    const WithoutRootRights asUser;
    EXPECT_FALSE(HasReadOnlyProfiles(place_));
    EXPECT_EQ(FindProgramFolder(place_), place_);
}

TEST_F(ReadOnlyStartTest, AnInstalledCopyHasNoProfilesBesideIt) {
    EXPECT_FALSE(HasReadOnlyProfiles(u"/usr/bin"_s));
    EXPECT_FALSE(HasReadOnlyProfiles(profile.Folder.filePath(u"bare"_s)));
}

TEST_F(ReadOnlyStartTest, TheBoxNamesTheFolder) {
    ShowReadOnlyProfiles(profile.Boxes, place_);
    ASSERT_EQ(profile.Boxes.Shown.size(), 1U);
    EXPECT_TRUE(profile.Boxes.Shown[0].Text.contains(profiles_));
    EXPECT_EQ(profile.Boxes.Shown[0].Icon, BoxIcon::Critical);
}

TEST_F(StartUpTest, DocumentsLieBesideTheExecutableOrInTheSharedDataFolder) {
    EXPECT_EQ(FindDocumentFolders(u"/usr/bin"_s), QStringList({u"/usr/bin"_s, u"/usr/share/varlo-pro"_s}));
}

TEST_F(StartUpTest, MissingFoldersOfTheProfileAreCreated) {
    QDir(profile.session.ProfilePath).removeRecursively();
    PrepareProfile(profile.session, trap);
    const QStringList folders =
        QDir(profile.session.ProfilePath).entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
    EXPECT_EQ(folders, QStringList({u"lists"_s, u"logs"_s, u"sent"_s}));
    EXPECT_EQ(profile.session.INI.File(), profile.Path(u"prefs.ini"_s));
    EXPECT_TRUE(profile.Boxes.Shown.empty());
}

TEST_F(StartUpTest, AFolderThatCannotBeMadeIsReportedWhileTheOthersAre) {
    QDir(profile.session.ProfilesFolder()).removeRecursively();
    PrepareProfile(profile.session, trap);
    ASSERT_EQ(profile.Boxes.Shown.size(), 4U); // the profile's folder and the three in it
    EXPECT_EQ(profile.Boxes.Shown[0].Title, u"varlo-pro Error 76 in Main.Load"_s);
}

TEST_F(StartUpTest, AnEmptyProfileRunsWithAllDefaults) {
    profile.session.AllSettings.Load(trap);
    const Preferences &prefs = profile.session.Prefs;
    EXPECT_EQ(prefs.Notify, 0);
    EXPECT_EQ(prefs.SMTPServer, QString());
    EXPECT_EQ(prefs.SMTPPort, 25);
    EXPECT_EQ(prefs.SMTPWrap, 72);
    EXPECT_EQ(prefs.SubSubject, u"Mailing list subscription notification"_s);
    EXPECT_EQ(prefs.UnsubBody, u"Your e-mail address has been unsubscribed from our mailing list."_s);
}

TEST_F(StartUpTest, ASettingThatIsNoNumberIsReportedAndTheRestIsLoaded) {
    profile.Write(u"prefs.ini"_s, "[SMTP]\r\nSMTPServer=mail.test\r\nSMTPPort=many\r\n"
                                  "SMTPFrom=Ann\r\nSMTPWrap=70000\r\n");
    profile.session.AllSettings.Load(trap);
    EXPECT_EQ(profile.session.Prefs.SMTPServer, u"mail.test"_s);
    EXPECT_EQ(profile.session.Prefs.SMTPPort, 25);
    EXPECT_EQ(profile.session.Prefs.SMTPFrom, u"Ann"_s);
    EXPECT_EQ(profile.session.Prefs.SMTPWrap, 72);
    ASSERT_EQ(profile.Boxes.Shown.size(), 2U);
    EXPECT_EQ(profile.Boxes.Shown[0].Title, u"varlo-pro Error 13 in Main.Load"_s);
    EXPECT_EQ(profile.Boxes.Shown[1].Title, u"varlo-pro Error 6 in Main.Load"_s);
}

TEST_F(StartUpTest, EachLogGetsTwoMarkerLines) {
    WriteSessionMarkers(profile.session, u" SESSION STARTED"_s, trap);
    const QStringList expected{DateTimeText(profile.session) + u" SESSION STARTED"_s, QString(70, u'-')};
    for (const char *log : {"ErrorLog.txt", "StatusLog.txt", "PendingLog.txt"})
        EXPECT_EQ(profile.Log(QString::fromLatin1(log)), expected) << log;
}

TEST_F(StartUpTest, TheLogsGetTheirMarkersInTheirOrder) {
    QDir logs(profile.Path(u"logs"_s));
    QStringList order;
    profile.session.Now = [&] { // asked for each marker, before it is written
        order << logs.entryList(QDir::Files).join(u' ');
        return profile.Clock;
    };
    WriteSessionMarkers(profile.session, u" SESSION STARTED"_s, trap);
    order.removeDuplicates();
    EXPECT_EQ(order, QStringList({QString(), u"ErrorLog.txt"_s, u"ErrorLog.txt StatusLog.txt"_s}));
    EXPECT_EQ(logs.entryList(QDir::Files).size(), 3);
}

} // namespace
} // namespace varlo::test

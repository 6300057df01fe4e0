#include "core/Reporting.h"

#include "core/Literals.h"
#include "core/Preferences.h"
#include "core/Product.h"
#include "core/TextFile.h"
#include "support/TestProfile.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <stdexcept>

namespace varlo::test {
namespace {

class ReportingTest : public testing::Test {
protected:
    // The box that an error of this number, description and routine shows.
    static ShownBox ErrorBox(const char *number, const char *description, const char *routine) {
        return {u"varlo-pro Error %1 in %2"_s.arg(QString::fromLatin1(number), QString::fromLatin1(routine)),
                u"The following error has occured:\r\n[ %1 ]\rPlease report errors to %2\r\n"_s.arg(
                    QString::fromUtf8(description), Product::kSupportAddress),
                BoxButtons::Ok, BoxIcon::Critical};
    }
    QStringList LogInProfilesFolder(const char *file) const {
        const QString path = QDir(profile_.session.ProfilesFolder()).filePath(QString::fromLatin1(file));
        return QFile::exists(path) ? ReadLines(path) : QStringList();
    }
    // In place of the folder of the logs stands a file: no log can be written.
    void BreakLogs() {
        ASSERT_TRUE(QDir(profile_.Path(u"logs"_s)).removeRecursively());
        profile_.Write(u"logs"_s, "");
    }

    TestProfile profile_;
    Session &session_ = profile_.session;
    const QString time_ = TimeText(session_);
    const QString errorLog_ = u"ErrorLog.txt"_s;
    const QString statusLog_ = u"StatusLog.txt"_s;
};

TEST_F(ReportingTest, TimeHasSecondsAndNoDate) {
    EXPECT_TRUE(time_.contains(u"05"_s)) << time_.toStdString();
    EXPECT_TRUE(time_.contains(u"06"_s)) << time_.toStdString();
    EXPECT_TRUE(time_.contains(u"07"_s)) << time_.toStdString();
    EXPECT_FALSE(time_.contains(u"26"_s)) << time_.toStdString();
    EXPECT_TRUE(DateTimeText(session_).endsWith(u' ' + time_));
    EXPECT_TRUE(DateTimeText(session_).contains(u"26"_s)) << DateTimeText(session_).toStdString();
}

// In a process of its own, because the format is asked for once.
TEST_F(ReportingTest, SecondsStandBehindTheMinutesWhereTheSystemLeavesThemOut) {
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    const QByteArray before = qgetenv("LC_ALL");
    qputenv("LC_ALL", "en_US.UTF-8");
    const auto tell = [this] {
        std::fputs(qPrintable(time_), stderr);
        std::_Exit(0);
    };
    EXPECT_EXIT(tell(), testing::ExitedWithCode(0), "5:06:07 AM$");
    before.isNull() ? qunsetenv("LC_ALL") : qputenv("LC_ALL", before);
}

TEST_F(ReportingTest, TimeFollowsTheClockFromSecondToSecond) {
    const auto at = [&](const QTime &time) {
        session_.Now = [time] { return QDateTime(QDate(2026, 11, 21), time); };
        return TimeText(session_);
    };
    const QString noon = at(QTime(12, 0, 0));
    EXPECT_EQ(at(QTime(12, 0, 0, 999)), noon);
    const QString later = at(QTime(12, 0, 1));
    EXPECT_NE(later, noon);
    EXPECT_TRUE(later.contains(u"01"_s)) << later.toStdString();
    EXPECT_EQ(at(QTime(12, 0, 0)), noon);
}

TEST_F(ReportingTest, LogLinesAreAppended) {
    WriteLog(session_, u"PendingLog.txt"_s, u"one"_s);
    WriteLog(session_, u"PendingLog.txt"_s, u"caf\u00E9"_s);
    EXPECT_EQ(profile_.Read(u"logs/PendingLog.txt"_s), QByteArray("one\r\ncaf\xC3\xA9\r\n"));
}

TEST_F(ReportingTest, LogBeforeAProfileIsOpenGoesToTheProfilesFolder) {
    session_.ProfilePath.clear();
    WriteLog(session_, errorLog_, u"early"_s);
    EXPECT_EQ(LogInProfilesFolder("ErrorLog.txt"), QStringList{u"early"_s});
}

TEST_F(ReportingTest, LogAfterTheProfileVanishedGoesToTheProfilesFolder) {
    ASSERT_TRUE(QDir(session_.ProfilePath).removeRecursively());
    WriteLog(session_, errorLog_, u"late"_s);
    EXPECT_EQ(LogInProfilesFolder("ErrorLog.txt"), QStringList{u"late"_s});
    EXPECT_FALSE(QFileInfo::exists(session_.ProfilePath));
}

TEST_F(ReportingTest, LogThatCannotBeWrittenIsTheCallersError) {
    BreakLogs();
    try {
        WriteLog(session_, errorLog_, u"x"_s);
        ADD_FAILURE() << "nothing was thrown";
    } catch (const RuntimeError &error) {
        EXPECT_EQ(error.Number(), PathNotFound);
    }
}

TEST_F(ReportingTest, TheSameTroubleWithALogIsTheCallersErrorOnceForAnAction) {
    BreakLogs();
    EXPECT_THROW(WriteLog(session_, errorLog_, u"x"_s), RuntimeError);
    EXPECT_NO_THROW(WriteLog(session_, errorLog_, u"x"_s));
    EXPECT_NO_THROW(WriteLog(session_, statusLog_, u"x"_s));
    session_.LogTrouble.clear(); // the operator does something new
    EXPECT_THROW(WriteLog(session_, statusLog_, u"x"_s), RuntimeError);
    session_.LogTrouble = {{statusLog_, DiskFull}};
    EXPECT_THROW(WriteLog(session_, statusLog_, u"x"_s), RuntimeError) << "other trouble is news";
}

TEST_F(ReportingTest, TroubleThatCameBackIsNews) {
    BreakLogs();
    EXPECT_THROW(WriteLog(session_, statusLog_, u"x"_s), RuntimeError);
    QFile::remove(profile_.Path(u"logs"_s)); // whatever stands in its place
    ASSERT_TRUE(QDir().mkpath(profile_.Path(u"logs"_s)));
    WriteLog(session_, statusLog_, u"x"_s);
    ASSERT_TRUE(QDir(profile_.Path(u"logs"_s)).removeRecursively());
    EXPECT_THROW(WriteLog(session_, statusLog_, u"x"_s), RuntimeError);
}

TEST_F(ReportingTest, AnErrorThatTheProfileCannotLogReachesTheProfilesFolder) {
    BreakLogs();
    ShowError(session_, u"Main.Load"_s, RuntimeError(DiskFull));
    EXPECT_EQ(LogInProfilesFolder("ErrorLog.txt"),
              QStringList{time_ + u" Error 61 in Main.Load - Disk full"_s});
}

TEST_F(ReportingTest, AnErrorCanBeLoggedWithoutABox) {
    LogError(session_, QString(), RuntimeError(Overflow));
    EXPECT_EQ(profile_.Log(errorLog_), QStringList{time_ + u" Error 6 in Unknown - Overflow"_s});
    EXPECT_TRUE(profile_.Boxes.Shown.empty());
}

TEST_F(ReportingTest, ErrorIsLoggedAndShown) {
    session_.Boxes.SetHourglass(true);
    ShowError(session_, u"Main.Load"_s, RuntimeError(Overflow));
    EXPECT_EQ(profile_.Log(errorLog_), QStringList{time_ + u" Error 6 in Main.Load - Overflow"_s});
    EXPECT_EQ(profile_.Boxes.Shown, std::vector{ErrorBox("6", "Overflow", "Main.Load")});
    EXPECT_FALSE(profile_.Boxes.Hourglass);
}

TEST_F(ReportingTest, EmptyLabelIsUnknown) {
    ShowError(session_, QString(), RuntimeError(Overflow));
    EXPECT_EQ(profile_.Log(errorLog_), QStringList{time_ + u" Error 6 in Unknown - Overflow"_s});
    EXPECT_EQ(profile_.Boxes.Shown, std::vector{ErrorBox("6", "Overflow", "Unknown")});
}

TEST_F(ReportingTest, NumbersZeroAndTwentyAreIgnored) {
    session_.Boxes.SetHourglass(true);
    ShowError(session_, u"Main.Load"_s, RuntimeError(0, QString()));
    ShowError(session_, u"Main.Load"_s, RuntimeError(ResumeWithoutError));
    EXPECT_EQ(profile_.Log(errorLog_), QStringList());
    EXPECT_EQ(profile_.Boxes.Texts(), QStringList());
    EXPECT_TRUE(profile_.Boxes.Hourglass);
}

TEST_F(ReportingTest, ErrorWithoutALogIsStillShown) {
    BreakLogs();
    ShowError(session_, u"Main.Load"_s, RuntimeError(DiskFull));
    EXPECT_EQ(profile_.Boxes.Shown, std::vector{ErrorBox("61", "Disk full", "Main.Load")});
}

TEST_F(ReportingTest, StatusReachesConsoleBarAndLog) {
    StatusMessage(session_, u"Loading [news]"_s);
    const QStringList line{time_ + u" | Loading [news]"_s};
    EXPECT_EQ(profile_.ConsoleLines, line);
    EXPECT_EQ(profile_.StatusTexts, QStringList{u"Loading [news]"_s});
    EXPECT_EQ(profile_.Log(statusLog_), line);
}

TEST_F(ReportingTest, WithoutStatusLoggingTheLogStaysEmpty) {
    session_.Prefs.LogStatus = 0;
    StatusMessage(session_, u"x"_s);
    EXPECT_EQ(profile_.ConsoleLines, QStringList{time_ + u" | x"_s});
    EXPECT_EQ(profile_.StatusTexts, QStringList{u"x"_s});
    EXPECT_EQ(profile_.Log(statusLog_), QStringList());
}

TEST_F(ReportingTest, OnlyTheNumberOneTurnsStatusLoggingOn) {
    session_.Prefs.LogStatus = 2;
    StatusMessage(session_, u"x"_s);
    EXPECT_EQ(profile_.Log(statusLog_), QStringList());
}

TEST_F(ReportingTest, NoLogChangesTheStatusBarOnly) {
    StatusMessage(session_, u"x"_s, true);
    EXPECT_EQ(profile_.ConsoleLines, QStringList());
    EXPECT_EQ(profile_.StatusTexts, QStringList{u"x"_s});
    EXPECT_EQ(profile_.Log(statusLog_), QStringList());
}

TEST_F(ReportingTest, NoStatusBarChangesConsoleAndLogOnly) {
    StatusMessage(session_, u"x"_s, false, true);
    EXPECT_EQ(profile_.ConsoleLines, QStringList{time_ + u" | x"_s});
    EXPECT_EQ(profile_.StatusTexts, QStringList());
    EXPECT_EQ(profile_.Log(statusLog_), QStringList{time_ + u" | x"_s});
}

TEST_F(ReportingTest, NoLogAndNoStatusBarChangesNothing) {
    StatusMessage(session_, u"x"_s, true, true);
    EXPECT_EQ(profile_.ConsoleLines + profile_.StatusTexts + profile_.Log(statusLog_), QStringList());
}

TEST_F(ReportingTest, StatusThatCannotBeLoggedIsShownBeforeTheErrorIsReported) {
    BreakLogs();
    EXPECT_THROW(StatusMessage(session_, u"x"_s), RuntimeError);
    EXPECT_EQ(profile_.ConsoleLines, QStringList{time_ + u" | x"_s});
    EXPECT_EQ(profile_.StatusTexts, QStringList{u"x"_s});
}

TEST_F(ReportingTest, StatusLogThatIsFullIsContinuedInANewFile) {
    const QString older = u"logs/StatusLog.1.txt"_s;
    profile_.Write(older, "an older one");
    profile_.Write(u"logs/StatusLog.txt"_s, "first\r\n");
    const auto lineSize = qsizetype(time_.size() + 6); // " | x", CR, LF
    ASSERT_TRUE(QFile::resize(profile_.Path(u"logs/StatusLog.txt"_s), kLongestStatusLog - lineSize - 1));
    StatusMessage(session_, u"w"_s);
    EXPECT_EQ(profile_.Read(older), "an older one") << "one byte is left";
    StatusMessage(session_, u"x"_s);
    StatusMessage(session_, u"y"_s);
    EXPECT_EQ(profile_.Log(statusLog_), QStringList{time_ + u" | y"_s});
    EXPECT_TRUE(profile_.Read(older).startsWith("first\r\n"));
    EXPECT_TRUE(profile_.Read(older).endsWith(" | x\r\n"));
}

TEST_F(ReportingTest, FullStatusLogThatCannotBeKeptGrowsOn) {
    ASSERT_TRUE(QDir().mkpath(profile_.Path(u"logs/StatusLog.1.txt/x"_s)));
    profile_.Write(u"logs/StatusLog.txt"_s, "");
    ASSERT_TRUE(QFile::resize(profile_.Path(u"logs/StatusLog.txt"_s), kLongestStatusLog));
    StatusMessage(session_, u"x"_s);
    EXPECT_TRUE(profile_.Read(u"logs/StatusLog.txt"_s).endsWith(" | x\r\n"));
}

TEST_F(ReportingTest, OtherLogsAreNeverCut) {
    profile_.Write(u"logs/PendingLog.txt"_s, "");
    ASSERT_TRUE(QFile::resize(profile_.Path(u"logs/PendingLog.txt"_s), kLongestStatusLog));
    WriteLog(session_, u"PendingLog.txt"_s, u"x"_s);
    EXPECT_TRUE(profile_.Read(u"logs/PendingLog.txt"_s).endsWith("x\r\n"));
    EXPECT_EQ(profile_.Read(u"logs/PendingLog.txt"_s).size(), kLongestStatusLog + 3);
}

TEST_F(ReportingTest, SessionMarkersAreTwoLines) {
    WriteSessionMarker(session_, errorLog_, u" SESSION STARTED"_s);
    EXPECT_EQ(profile_.Log(errorLog_),
              (QStringList{DateTimeText(session_) + u" SESSION STARTED"_s, QString(70, u'-')}));
}

TEST_F(ReportingTest, ErrorTrapCarriesOnWithTheNextStatement) {
    QStringList ran;
    ErrorTrap trap(session_, u"Main.Load"_s);
    EXPECT_TRUE(trap([&] { ran << u"first"_s; }));
    EXPECT_FALSE(trap([&] {
        ran << u"second"_s;
        throw RuntimeError(FileNotFound);
    }));
    EXPECT_TRUE(trap([&] { ran << u"third"_s; }));
    EXPECT_EQ(ran, (QStringList{u"first"_s, u"second"_s, u"third"_s}));
    EXPECT_EQ(profile_.Boxes.Shown, std::vector{ErrorBox("53", "File not found", "Main.Load")});
}

TEST_F(ReportingTest, TrappedLeavesTheRoutine) {
    bool reached = false;
    EXPECT_FALSE(Trapped(session_, u"Compose.cmdSend"_s, [&] {
        To16Bit(40'000);
        reached = true;
    }));
    EXPECT_FALSE(reached);
    EXPECT_EQ(profile_.Boxes.Shown, std::vector{ErrorBox("6", "Overflow", "Compose.cmdSend")});
    EXPECT_TRUE(Trapped(session_, u"Compose.cmdSend"_s, [&] { reached = true; }));
    EXPECT_TRUE(reached);
}

TEST_F(ReportingTest, LastResortReportsWithoutALabel) {
    LastResort(session_, [] { throw RuntimeError(KeyAlreadyPresent); });
    LastResort(session_, [] { throw std::length_error("vector too long"); });
    EXPECT_EQ(
        profile_.Boxes.Shown,
        (std::vector{
            ErrorBox("457", "This key is already associated with an element of this collection", "Unknown"),
            ErrorBox("5", "vector too long", "Unknown")}));
}

TEST_F(ReportingTest, LastResortLeavesAGoodEventAlone) {
    bool ran = false;
    LastResort(session_, [&] { ran = true; });
    EXPECT_TRUE(ran);
    EXPECT_EQ(profile_.Boxes.Texts(), QStringList());
}

} // namespace
} // namespace varlo::test

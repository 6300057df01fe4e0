#include "core/Reporting.h"

#include "core/Product.h"
#include "core/TextFile.h"
#include "support/TestProfile.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace varlo::test {
namespace {

class ReportingTest : public testing::Test {
protected:
    // The box that an error of this number, description and routine shows.
    static ShownBox ErrorBox(const char *number, const char *description, const char *routine) {
        return {QStringLiteral("varlo-pro Error %1 in %2")
                    .arg(QString::fromLatin1(number), QString::fromLatin1(routine)),
                QStringLiteral("The following error has occured:\r\n[ %1 ]\rPlease report errors to %2\r\n")
                    .arg(QString::fromUtf8(description), Product::kSupportAddress),
                BoxButtons::Ok, BoxIcon::Critical};
    }
    QStringList LogInProfilesFolder(const char *file) const {
        const QString path = QDir(profile_.session.ProfilesFolder()).filePath(QString::fromLatin1(file));
        return QFile::exists(path) ? ReadLines(path) : QStringList();
    }
    // In place of the folder of the logs stands a file: no log can be written.
    void BreakLogs() {
        ASSERT_TRUE(QDir(profile_.Path(QStringLiteral("logs"))).removeRecursively());
        profile_.Write(QStringLiteral("logs"), "");
    }

    TestProfile profile_;
    Session &session_ = profile_.session;
    const QString time_ = TimeText(session_);
    const QString errorLog_ = QStringLiteral("ErrorLog.txt");
    const QString statusLog_ = QStringLiteral("StatusLog.txt");
};

TEST_F(ReportingTest, TimeHasSecondsAndNoDate) {
    EXPECT_TRUE(time_.contains(QStringLiteral("05"))) << time_.toStdString();
    EXPECT_TRUE(time_.contains(QStringLiteral("06"))) << time_.toStdString();
    EXPECT_TRUE(time_.contains(QStringLiteral("07"))) << time_.toStdString();
    EXPECT_FALSE(time_.contains(QStringLiteral("26"))) << time_.toStdString();
    EXPECT_TRUE(DateTimeText(session_).endsWith(u' ' + time_));
    EXPECT_TRUE(DateTimeText(session_).contains(QStringLiteral("26")))
        << DateTimeText(session_).toStdString();
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
    EXPECT_TRUE(later.contains(QStringLiteral("01"))) << later.toStdString();
    EXPECT_EQ(at(QTime(12, 0, 0)), noon);
}

TEST_F(ReportingTest, LogLinesAreAppended) {
    WriteLog(session_, QStringLiteral("PendingLog.txt"), QStringLiteral("one"));
    WriteLog(session_, QStringLiteral("PendingLog.txt"), QStringLiteral("caf\u00E9"));
    EXPECT_EQ(profile_.Read(QStringLiteral("logs/PendingLog.txt")), QByteArray("one\r\ncaf\xC3\xA9\r\n"));
}

TEST_F(ReportingTest, LogBeforeAProfileIsOpenGoesToTheProfilesFolder) {
    session_.ProfilePath.clear();
    WriteLog(session_, errorLog_, QStringLiteral("early"));
    EXPECT_EQ(LogInProfilesFolder("ErrorLog.txt"), QStringList{QStringLiteral("early")});
}

TEST_F(ReportingTest, LogAfterTheProfileVanishedGoesToTheProfilesFolder) {
    ASSERT_TRUE(QDir(session_.ProfilePath).removeRecursively());
    WriteLog(session_, errorLog_, QStringLiteral("late"));
    EXPECT_EQ(LogInProfilesFolder("ErrorLog.txt"), QStringList{QStringLiteral("late")});
    EXPECT_FALSE(QFileInfo::exists(session_.ProfilePath));
}

TEST_F(ReportingTest, LogThatCannotBeWrittenIsTheCallersError) {
    BreakLogs();
    try {
        WriteLog(session_, errorLog_, QStringLiteral("x"));
        ADD_FAILURE() << "nothing was thrown";
    } catch (const RuntimeError &error) {
        EXPECT_EQ(error.Number(), PathNotFound);
    }
}

TEST_F(ReportingTest, ErrorIsLoggedAndShown) {
    session_.Boxes.SetHourglass(true);
    ShowError(session_, QStringLiteral("Main.Load"), RuntimeError(Overflow));
    EXPECT_EQ(profile_.Log(errorLog_),
              QStringList{time_ + QStringLiteral(" Error 6 in Main.Load - Overflow")});
    EXPECT_EQ(profile_.Boxes.Shown, std::vector{ErrorBox("6", "Overflow", "Main.Load")});
    EXPECT_FALSE(profile_.Boxes.Hourglass);
}

TEST_F(ReportingTest, EmptyLabelIsUnknown) {
    ShowError(session_, QString(), RuntimeError(Overflow));
    EXPECT_EQ(profile_.Log(errorLog_), QStringList{time_ + QStringLiteral(" Error 6 in Unknown - Overflow")});
    EXPECT_EQ(profile_.Boxes.Shown, std::vector{ErrorBox("6", "Overflow", "Unknown")});
}

TEST_F(ReportingTest, NumbersZeroAndTwentyAreIgnored) {
    session_.Boxes.SetHourglass(true);
    ShowError(session_, QStringLiteral("Main.Load"), RuntimeError(0, QString()));
    ShowError(session_, QStringLiteral("Main.Load"), RuntimeError(ResumeWithoutError));
    EXPECT_EQ(profile_.Log(errorLog_), QStringList());
    EXPECT_EQ(profile_.Boxes.Texts(), QStringList());
    EXPECT_TRUE(profile_.Boxes.Hourglass);
}

TEST_F(ReportingTest, ErrorWithoutALogIsStillShown) {
    BreakLogs();
    ShowError(session_, QStringLiteral("Main.Load"), RuntimeError(DiskFull));
    EXPECT_EQ(profile_.Boxes.Shown, std::vector{ErrorBox("61", "Disk full", "Main.Load")});
}

TEST_F(ReportingTest, StatusReachesConsoleBarAndLog) {
    StatusMessage(session_, QStringLiteral("Loading [news]"));
    const QStringList line{time_ + QStringLiteral(" | Loading [news]")};
    EXPECT_EQ(profile_.ConsoleLines, line);
    EXPECT_EQ(profile_.StatusTexts, QStringList{QStringLiteral("Loading [news]")});
    EXPECT_EQ(profile_.Log(statusLog_), line);
}

TEST_F(ReportingTest, WithoutStatusLoggingTheLogStaysEmpty) {
    session_.Prefs.LogStatus = 0;
    StatusMessage(session_, QStringLiteral("x"));
    EXPECT_EQ(profile_.ConsoleLines, QStringList{time_ + QStringLiteral(" | x")});
    EXPECT_EQ(profile_.StatusTexts, QStringList{QStringLiteral("x")});
    EXPECT_EQ(profile_.Log(statusLog_), QStringList());
}

TEST_F(ReportingTest, OnlyTheNumberOneTurnsStatusLoggingOn) {
    session_.Prefs.LogStatus = 2;
    StatusMessage(session_, QStringLiteral("x"));
    EXPECT_EQ(profile_.Log(statusLog_), QStringList());
}

TEST_F(ReportingTest, NoLogChangesTheStatusBarOnly) {
    StatusMessage(session_, QStringLiteral("x"), true);
    EXPECT_EQ(profile_.ConsoleLines, QStringList());
    EXPECT_EQ(profile_.StatusTexts, QStringList{QStringLiteral("x")});
    EXPECT_EQ(profile_.Log(statusLog_), QStringList());
}

TEST_F(ReportingTest, NoStatusBarChangesConsoleAndLogOnly) {
    StatusMessage(session_, QStringLiteral("x"), false, true);
    EXPECT_EQ(profile_.ConsoleLines, QStringList{time_ + QStringLiteral(" | x")});
    EXPECT_EQ(profile_.StatusTexts, QStringList());
    EXPECT_EQ(profile_.Log(statusLog_), QStringList{time_ + QStringLiteral(" | x")});
}

TEST_F(ReportingTest, NoLogAndNoStatusBarChangesNothing) {
    StatusMessage(session_, QStringLiteral("x"), true, true);
    EXPECT_EQ(profile_.ConsoleLines + profile_.StatusTexts + profile_.Log(statusLog_), QStringList());
}

TEST_F(ReportingTest, StatusThatCannotBeLoggedIsShownBeforeTheErrorIsReported) {
    BreakLogs();
    EXPECT_THROW(StatusMessage(session_, QStringLiteral("x")), RuntimeError);
    EXPECT_EQ(profile_.ConsoleLines, QStringList{time_ + QStringLiteral(" | x")});
    EXPECT_EQ(profile_.StatusTexts, QStringList{QStringLiteral("x")});
}

TEST_F(ReportingTest, SessionMarkersAreTwoLines) {
    WriteSessionMarker(session_, errorLog_, QStringLiteral(" SESSION STARTED"));
    EXPECT_EQ(profile_.Log(errorLog_),
              (QStringList{DateTimeText(session_) + QStringLiteral(" SESSION STARTED"), QString(70, u'-')}));
}

TEST_F(ReportingTest, ErrorTrapCarriesOnWithTheNextStatement) {
    QStringList ran;
    ErrorTrap trap(session_, QStringLiteral("Main.Load"));
    EXPECT_TRUE(trap([&] { ran << QStringLiteral("first"); }));
    EXPECT_FALSE(trap([&] {
        ran << QStringLiteral("second");
        throw RuntimeError(FileNotFound);
    }));
    EXPECT_TRUE(trap([&] { ran << QStringLiteral("third"); }));
    EXPECT_EQ(ran, (QStringList{QStringLiteral("first"), QStringLiteral("second"), QStringLiteral("third")}));
    EXPECT_EQ(profile_.Boxes.Shown, std::vector{ErrorBox("53", "File not found", "Main.Load")});
}

TEST_F(ReportingTest, TrappedLeavesTheRoutine) {
    bool reached = false;
    EXPECT_FALSE(Trapped(session_, QStringLiteral("Compose.cmdSend"), [&] {
        To16Bit(40'000);
        reached = true;
    }));
    EXPECT_FALSE(reached);
    EXPECT_EQ(profile_.Boxes.Shown, std::vector{ErrorBox("6", "Overflow", "Compose.cmdSend")});
    EXPECT_TRUE(Trapped(session_, QStringLiteral("Compose.cmdSend"), [&] { reached = true; }));
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

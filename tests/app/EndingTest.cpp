#include "app/Ending.h"

#include "app/MainWindowFixture.h"
#include "core/Literals.h"

#include <QCheckBox>
#include <QDialog>
#include <QLineEdit>
#include <QSignalSpy>
#include <QtTest>
#include <gtest/gtest.h>

namespace varlo::test {
namespace {

using namespace std::chrono_literals;

class EndingTest : public frmMainTest {
protected:
    EndingTest() {
        profile.Write(u"lists/news.vlo"_s, "a@x.test\r\n");
        Load();
        ending_ = std::make_unique<Ending>(profile.session, *window_, 30ms);
        ended_ = std::make_unique<QSignalSpy>(ending_.get(), &Ending::Ended);
    }
    void ChangeTheList() {
        TypeAddress(u"b@x.test"_s);
        Click("cmdCapturesAdd");
    }
    // The operator is away: each box waits in an event loop of its own, until somebody closes it.
    void NobodyAnswers() {
        profile.Boxes.OnBox = [this](const QString &) {
            QDialog box(window_.get());
            ++waited_;
            box.exec();
        };
    }
    bool Kept() const { return QFile::exists(profile.Path(kKept)); }
    void ExpectOrderlyEnd() {
        EXPECT_TRUE(profile.session.AppExiting);
        EXPECT_FALSE(window_->isVisible());
        EXPECT_EQ(ended_->count(), 1);
        for (const char *log : {"ErrorLog.txt", "StatusLog.txt", "PendingLog.txt"})
            EXPECT_TRUE(profile.Log(QString::fromLatin1(log)).join(u'\n').contains(u" SESSION ENDED"_s))
                << log;
        EXPECT_EQ(Ini("Main", "BypassPending"), u"1"_s);
    }

    const QString kKept = u"lists/news.vlo.unsaved"_s;
    const QString kQuestion = u"The changes to list [news] have not been saved, save now?"_s;
    std::unique_ptr<Ending> ending_;
    std::unique_ptr<QSignalSpy> ended_;
    int waited_ = 0;
};

TEST_F(EndingTest, ASignalEndsAProgramWithNothingToAsk) {
    Find<QCheckBox>("chkInstantAdd")->setChecked(true);
    ending_->Terminate();
    ExpectOrderlyEnd();
    EXPECT_TRUE(profile.Boxes.Shown.empty());
}

TEST_F(EndingTest, ASignalAsksAsClosingTheWindowDoes) {
    ChangeTheList();
    Find<QCheckBox>("chkInstantAdd")->setChecked(true);
    profile.Boxes.Answers = {BoxAnswer::Yes};
    ending_->Terminate();
    EXPECT_EQ(profile.Boxes.Texts(), QStringList(kQuestion));
    EXPECT_EQ(profile.Read(u"lists/news.vlo"_s), QByteArray("a@x.test\r\nb@x.test\r\n"));
    ExpectOrderlyEnd();
    EXPECT_FALSE(Kept());
}

TEST_F(EndingTest, AnOperatorWhoSaysCancelKeepsTheProgram) {
    ChangeTheList();
    profile.Boxes.Answers = {BoxAnswer::Cancel};
    ending_->Terminate();
    QTest::qWait(100); // longer than a signal would wait
    EXPECT_FALSE(profile.session.AppExiting);
    EXPECT_TRUE(window_->isVisible());
    EXPECT_FALSE(Kept());
    EXPECT_EQ(ended_->count(), 0);
}

TEST_F(EndingTest, WhenNobodyAnswersTheListIsKeptBesideItsFile) {
    ChangeTheList();
    Find<QCheckBox>("chkInstantAdd")->setChecked(true);
    NobodyAnswers();
    profile.Boxes.Answers = {BoxAnswer::Cancel};
    ending_->Terminate();
    EXPECT_EQ(waited_, 1);
    EXPECT_EQ(profile.Read(kKept), QByteArray("a@x.test\r\nb@x.test\r\n"));
    EXPECT_EQ(profile.Read(u"lists/news.vlo"_s), QByteArray("a@x.test\r\n"));
    ExpectOrderlyEnd();
}

TEST_F(EndingTest, AQuestionThatIsOpenAlreadyWaitsNoLonger) {
    ChangeTheList();
    Find<QCheckBox>("chkInstantAdd")->setChecked(true);
    NobodyAnswers();
    profile.Boxes.Answers = {BoxAnswer::Cancel};
    QTimer::singleShot(0, window_.get(), [this] {
        ending_->Terminate();
        ending_->Terminate(); // systems send several signals
    });
    window_->close();
    EXPECT_TRUE(Kept());
    EXPECT_EQ(waited_, 1);
    EXPECT_TRUE(profile.session.AppExiting);
}

TEST_F(EndingTest, ALogOffAsksAndIsHeldOnCancel) {
    ChangeTheList();
    profile.Boxes.Answers = {BoxAnswer::Cancel};
    EXPECT_FALSE(ending_->LogOff(true));
    EXPECT_TRUE(window_->isVisible());
    Find<QCheckBox>("chkInstantAdd")->setChecked(true);
    profile.Boxes.Answers = {BoxAnswer::No};
    EXPECT_TRUE(ending_->LogOff(true));
    ExpectOrderlyEnd();
    EXPECT_FALSE(Kept()) << "the operator said No";
}

TEST_F(EndingTest, ALogOffThatAllowsNoQuestionKeepsTheChanges) {
    ChangeTheList();
    Find<QCheckBox>("chkInstantAdd")->setChecked(true);
    EXPECT_TRUE(ending_->LogOff(false));
    EXPECT_TRUE(profile.Boxes.Shown.empty());
    EXPECT_EQ(profile.Read(kKept), QByteArray("a@x.test\r\nb@x.test\r\n"));
    ExpectOrderlyEnd();
}

TEST_F(EndingTest, WhatWasKeptIsOfferedAtTheNextLoad) {
    ChangeTheList();
    ending_->LogOff(false);
    profile.session.AppExiting = false;
    Load();
    auto *bar = Find<QWidget>("barUnsaved");
    EXPECT_TRUE(bar->isVisible());
    Click("cmdUnsavedRestore");
    EXPECT_FALSE(bar->isVisible());
    EXPECT_EQ(Rows("lstEmailList_0"), QStringList({u"a@x.test"_s, u"b@x.test"_s}));
    EXPECT_FALSE(Kept());
    profile.Boxes.Answers = {BoxAnswer::Yes};
    EXPECT_TRUE(window_->close());
    EXPECT_EQ(profile.Read(u"lists/news.vlo"_s), QByteArray("a@x.test\r\nb@x.test\r\n"));
}

} // namespace
} // namespace varlo::test

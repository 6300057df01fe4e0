// A mail check with "Bypass" whose requests wait for their notifications.

#include "core/Literals.h"
#include "core/Settings.h"
#include "lists/ListStore.h"
#include "lists/PendingProcessing.h"
#include "pop3/Pop3Check.h"
#include "support/FakeMailer.h"
#include "support/FakePop3Server.h"
#include "support/TestProfile.h"
#include "support/WaitUntil.h"

#include <QSignalSpy>
#include <gtest/gtest.h>

namespace varlo::test {
namespace {

class CheckBesideOthersTest : public testing::Test {
protected:
    CheckBesideOthersTest() {
        session.Prefs.POPServer = u"127.0.0.1"_s;
        session.Prefs.POPUsername = u"joe"_s;
        session.Prefs.POPPassword = u"secret"_s;
        session.AllSettings.Store(session.Prefs);
        session.Prefs.Notify = 1;
        profile.Write(u"lists/news.vlo"_s, "b@x.test\r\n");
        lists.Open.Load(u"news"_s);
        mailers.OnSend = [] { return std::nullopt; };
    }

    PendingDoor Door() {
        return {.Offer =
                    [this](const PendingRequest &request) {
                        return lists.Pending.Offer(request) == PendingList::Answer::Added;
                    },
                .SelectLast = [] {},
                .Bypass = [this] { return bypass; },
                .ProcessPending = [this] { processing.Run(); }};
    }
    static QByteArray Request(const char *address) {
        return "From: " + QByteArray(address) + "\r\nSubject: subscribe\r\nMessage-ID: <" + address +
               ">\r\n\r\nbody\r\n";
    }
    bool Check() {
        const qsizetype done = Completed();
        check.Start();
        return WaitUntil([&] { return Completed() > done; }, 5000);
    }
    qsizetype Completed() const { return profile.StatusTexts.filter(u"POP3 check complete"_s).size(); }

    bool bypass = true;
    TestProfile profile;
    Session &session = profile.session;
    FakeMailers mailers;
    FakePop3Server server;
    ListStore lists{session};
    PendingProcessing processing{session, lists, mailers.Maker()};
    Pop3Check check{session, Door(), [] {}, server.serverPort()};
};

TEST_F(CheckBesideOthersTest, ANotificationThatWaitsHoldsNoCheckUp) {
    server.Mailbox = {Request("a@x.test")};
    ASSERT_TRUE(Check());
    ASSERT_TRUE(WaitUntil([this] { return mailers.IsBusy(); }));
    server.Mailbox = {Request("c@x.test")};
    EXPECT_TRUE(Check());
    EXPECT_TRUE(processing.IsRunning());
    EXPECT_EQ(lists.lstEmailList(kPending).Entries(), (QStringList{u"+a@x.test"_s, u"+c@x.test"_s}));
    mailers.Finish();
    EXPECT_TRUE(WaitUntil([this] { return !processing.IsRunning(); }));
    EXPECT_EQ(lists.lstEmailList(kChronological).Entries(), (QStringList{u"b@x.test"_s, u"a@x.test"_s}));
}

TEST_F(CheckBesideOthersTest, RequestsThatFindNoRoomAreToldAndTheOthersCaptured) {
    bypass = false;
    QStringList addresses;
    for (int i = 0; i < EntryListModel::kMostEntries - 1; ++i)
        addresses << u"%1@y.test"_s.arg(i);
    lists.Pending.AddAll(RequestKind::Subscribe, addresses);
    QSignalSpy changes(&lists.Pending, &PendingList::Changed);
    EXPECT_TRUE(changes.wait());
    changes.clear();
    server.Mailbox = {Request("a@x.test"), Request("c@x.test"), Request("d@x.test")};
    EXPECT_TRUE(Check());
    EXPECT_EQ(profile.StatusTexts.last(), u"POP3 check complete (+1)"_s);
    EXPECT_EQ(lists.lstEmailList(kPending).Entries().last(), u"+a@x.test"_s);
    EXPECT_TRUE(WaitUntil([&] { return !changes.isEmpty(); }));
    ASSERT_EQ(profile.Boxes.Shown.size(), 1U);
    EXPECT_TRUE(profile.Boxes.Shown[0].Title.endsWith(u" Error 6 in Unknown"_s));
    EXPECT_TRUE(profile.Boxes.Shown[0].Text.contains(u"c@x.test"_s));
    EXPECT_EQ(profile.Log(u"ErrorLog.txt"_s).size(), 2);
}

} // namespace
} // namespace varlo::test

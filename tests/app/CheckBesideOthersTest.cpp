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
                .Bypass = [] { return true; },
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

} // namespace
} // namespace varlo::test

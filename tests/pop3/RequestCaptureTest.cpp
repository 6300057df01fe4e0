// From requests to the Pending list.
#include "pop3/RequestCapture.h"

#include "core/Literals.h"
#include "pop3/FakePending.h"
#include "support/TestProfile.h"

#include <gtest/gtest.h>

namespace varlo {

namespace {

class RequestCaptureTest : public testing::Test {
protected:
    void Request(const char *subject, const char *from) {
        clsMessage message;
        ASSERT_TRUE(message.CreateFromText(QString::fromUtf8("Subject: %1\r\nFrom: %2\r\n\r\n")
                                               .arg(QString::fromLatin1(subject), QString::fromUtf8(from))));
        ASSERT_NE(Recognise(message, requests), Recognised::Unrelated);
    }
    QStringList Titles() const {
        QStringList titles;
        for (const test::ShownBox &box : profile.Boxes.Shown)
            titles << box.Title;
        return titles;
    }
    void Capture() { CaptureRequests(profile.session, requests, pending.Door()); }

    test::TestProfile profile;
    test::FakePending pending{profile.session};
    Requests requests;
};

QStringList Texts(std::initializer_list<const char *> texts) {
    QStringList list;
    for (const char *text : texts)
        list << QString::fromUtf8(text);
    return list;
}

} // namespace

TEST_F(RequestCaptureTest, SubscribersThenUnsubscribersThenTheSummary) {
    Request("UNSUBSCRIBE", "Joe <j@x.test>");
    Request("subscribe", "a@b.test");
    Capture();
    EXPECT_EQ(pending.Calls, Texts({"offer +a@b.test", "offer -j@x.test", "select last"}));
    EXPECT_EQ(profile.StatusTexts, Texts({"POP3 check complete (+1, -1)"}));
    EXPECT_TRUE(profile.Log(u"StatusLog.txt"_s).last().endsWith(profile.StatusTexts.last()));
}

TEST_F(RequestCaptureTest, NoRequestIsNoActivity) {
    Capture();
    EXPECT_EQ(pending.Calls, Texts({"select last"}));
    EXPECT_EQ(profile.StatusTexts, Texts({"POP3 check complete (no activity)"}));
}

TEST_F(RequestCaptureTest, OneKindAloneHasNoComma) {
    Request("unsubscribe", "a@b.test");
    Request("unsubscribe", "c@d.test");
    Capture();
    EXPECT_EQ(profile.StatusTexts, Texts({"POP3 check complete (-2)"}));
    requests = Requests();
    pending.Entries.clear();
    Request("subscribe", "a@b.test");
    Capture();
    EXPECT_EQ(profile.StatusTexts.last(), u"POP3 check complete (+1)"_s);
}

TEST_F(RequestCaptureTest, SameSenderTwiceIsOneEntryWithALine) {
    Request("subscribe", "a@b.test");
    Request("subscribe", "A@B.test");
    Capture();
    EXPECT_EQ(pending.Entries, Texts({"+a@b.test"}));
    EXPECT_EQ(profile.StatusTexts,
              Texts({"Duplicate address [+A@B.test] ignored", "POP3 check complete (+1)"}));
}

TEST_F(RequestCaptureTest, SameSenderOfBothKindsIsTwoEntries) {
    Request("subscribe", "a@b.test");
    Request("unsubscribe", "a@b.test");
    Capture();
    EXPECT_EQ(pending.Entries, Texts({"+a@b.test", "-a@b.test"}));
}

TEST_F(RequestCaptureTest, InvalidAddressIsDroppedSilently) {
    Request("subscribe", "nobody");
    Request("subscribe", "Jones <a@b.test>"); // the positions of the brackets share no bit
    Request("subscribe", "");
    Capture();
    EXPECT_EQ(pending.Entries, QStringList());
    EXPECT_EQ(profile.StatusTexts, Texts({"POP3 check complete (no activity)"}));
}

TEST_F(RequestCaptureTest, DuplicateIsLoggedThoughTheAddressIsInvalid) {
    pending.Entries << u"+nobody"_s;
    Request("subscribe", "nobody");
    Capture();
    EXPECT_EQ(profile.StatusTexts,
              Texts({"Duplicate address [+nobody] ignored", "POP3 check complete (no activity)"}));
}

TEST_F(RequestCaptureTest, AddressKeepsItsCaseAndBlanks) {
    Request("subscribe", "Xyz <J@X.Test>");
    Capture();
    EXPECT_EQ(pending.Entries, Texts({"+J@X.Test"}));
}

TEST_F(RequestCaptureTest, BypassProcessesAfterTheSummary) {
    pending.BypassTicked = true;
    pending.OnProcess = [this] { EXPECT_EQ(profile.StatusTexts, Texts({"POP3 check complete (+1)"})); };
    Request("subscribe", "a@b.test");
    Capture();
    EXPECT_EQ(pending.Calls.mid(1), Texts({"select last", "process"}));
}

TEST_F(RequestCaptureTest, SenderThatCannotBeCutIsReportedAndTheOthersAreCaptured) {
    Request("subscribe", "a@b.test");
    Request("subscribe", "\"ab -> c\" <evil@x.test>");
    Request("subscribe", "c@d.test");
    Request("unsubscribe", "Joe <j@x.test>");
    profile.Boxes.OnBox = [this](const QString &text) {
        EXPECT_TRUE(text.contains(u"\"ab -> c\" <evil@x.test>"_s));
        EXPECT_EQ(pending.Calls.last(), u"select last"_s);
        EXPECT_EQ(profile.StatusTexts, Texts({"POP3 check complete (+2, -1)"}));
    };
    Capture();
    EXPECT_EQ(pending.Entries, Texts({"+a@b.test", "+c@d.test", "-j@x.test"}));
    EXPECT_EQ(Titles(), Texts({"varlo-pro Error 5 in Unknown"}));
    EXPECT_EQ(profile.Log(u"ErrorLog.txt"_s).size(), 1);
}

TEST_F(RequestCaptureTest, EachSenderThatFindsNoRoomIsLoggedAndOneBoxTells) {
    pending.MostEntries = 1;
    for (const char *sender : {"a@b.test", "c@d.test", "e@f.test", ">x<"})
        Request("subscribe", sender);
    Capture();
    EXPECT_EQ(pending.Entries, Texts({"+a@b.test"}));
    EXPECT_EQ(profile.StatusTexts, Texts({"POP3 check complete (+1)"}));
    EXPECT_EQ(Titles(), Texts({"varlo-pro Error 6 in Unknown", "varlo-pro Error 5 in Unknown"}));
    const QStringList log = profile.Log(u"ErrorLog.txt"_s);
    ASSERT_EQ(log.size(), 3);
    EXPECT_TRUE(log[0].endsWith(u" Error 6 in Unknown - Overflow [c@d.test]"_s));
    EXPECT_TRUE(log[1].endsWith(u" Error 6 in Unknown - Overflow [e@f.test]"_s));
}

TEST_F(RequestCaptureTest, SenderThatCannotBeCutStopsNoProcessing) {
    pending.BypassTicked = true;
    Request("subscribe", ">x<");
    Request("subscribe", "a@b.test");
    Capture();
    EXPECT_EQ(pending.Calls, Texts({"offer +a@b.test", "select last", "process"}));
    EXPECT_EQ(profile.Boxes.Shown.size(), 1U);
}

TEST_F(RequestCaptureTest, LogThatCannotBeWrittenStopsNothing) {
    ASSERT_TRUE(QDir(profile.Path(u"logs"_s)).removeRecursively());
    pending.BypassTicked = true;
    pending.Entries = Texts({"+a@b.test"});
    Request("subscribe", "a@b.test");
    Request("subscribe", "c@d.test");
    Capture();
    EXPECT_EQ(pending.Entries, Texts({"+a@b.test", "+c@d.test"}));
    EXPECT_EQ(pending.Calls.mid(2), Texts({"select last", "process"}));
    EXPECT_EQ(profile.StatusTexts.last(), u"POP3 check complete (+1)"_s);
    EXPECT_EQ(Titles(), Texts({"varlo-pro Error 76 in Unknown"}));
}

} // namespace varlo

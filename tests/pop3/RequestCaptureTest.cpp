// From requests to the Pending list.
#include "pop3/RequestCapture.h"

#include "core/Literals.h"
#include "core/RuntimeError.h"
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

TEST_F(RequestCaptureTest, SenderThatCannotBeCutEndsTheCaptureKeepingWhatWasAdded) {
    Request("subscribe", "a@b.test");
    Request("subscribe", ">x<");
    Request("subscribe", "c@d.test");
    try {
        Capture();
        FAIL() << "no error";
    } catch (const RuntimeError &error) {
        EXPECT_EQ(error.Number(), int(InvalidProcedureCall));
    }
    EXPECT_EQ(pending.Entries, Texts({"+a@b.test"}));
    EXPECT_EQ(profile.StatusTexts, QStringList());
}

} // namespace varlo

#include "compose/FakedEngine.h"
#include "compose/SendEngine.h"
#include "core/Preferences.h"
#include "core/RuntimeError.h"

#include <QPointer>
#include <gtest/gtest.h>

#include <utility>

namespace varlo {
namespace {

using test::Failure;
using test::OwnFailure;
using test::SentMail;
using test::Text;

class SendEngineTroubleTest : public test::FakedEngine {};

// ---- Attachments

TEST_F(SendEngineTroubleTest, EveryMessageGetsEveryAttachment) {
    profile.Write(Text("a.txt"), "a");
    profile.Write(Text("b.txt"), "b");
    message.Attachments = {profile.Path(Text("b.txt")), profile.Path(Text("a.txt"))};
    EXPECT_TRUE(Send());
    ASSERT_EQ(fake.Sent.size(), 3U);
    for (const SentMail &sent : fake.Sent)
        EXPECT_EQ(sent.Attachments, message.Attachments);
}

TEST_F(SendEngineTroubleTest, AFileThatWasChosenTwiceGoesAlongOnce) {
    profile.Write(Text("a.txt"), "a");
    message.Attachments = {profile.Path(Text("a.txt")), QString(), profile.Path(Text("a.txt"))};
    EXPECT_TRUE(Send());
    EXPECT_EQ(fake.Sent.at(2).Attachments, QStringList(profile.Path(Text("a.txt"))));
}

TEST_F(SendEngineTroubleTest, AVanishedAttachmentStopsTheSendBeforeItBegins) {
    profile.Write(Text("a.txt"), "a");
    message.Attachments = {profile.Path(Text("a.txt")), profile.Path(Text("gone.txt"))};
    EXPECT_FALSE(Send());
    ExpectNothingSent("53 in Compose.cmdSend - File not found");
    EXPECT_EQ(statuses,
              QStringList(Text("Attachment [") + profile.Path(Text("gone.txt")) + Text("] cannot be read")));
}

TEST_F(SendEngineTroubleTest, AFolderIsNoAttachment) {
    message.Attachments = {profile.Path(Text("lists"))};
    EXPECT_FALSE(Send());
    ExpectNothingSent("70 in Compose.cmdSend - Permission denied");
}

TEST_F(SendEngineTroubleTest, AnAttachmentThatVanishesInTheMiddleEndsTheSend) {
    profile.Write(Text("a.txt"), "a");
    message.Attachments = {profile.Path(Text("a.txt"))};
    fake.OnSend = [this] {
        return fake.Sent.size() < 3 ? Outcome() : OwnFailure(FileNotFound, Text("File not found"));
    };
    EXPECT_FALSE(Send());
    EXPECT_EQ(fake.Sent.size(), 2U);
    EXPECT_EQ(Errors(), QStringList(Text("53 in Compose.cmdSend - File not found")));
    EXPECT_EQ(statuses.last(), Text("Sending stopped after 2/3 messages"));
    EXPECT_EQ(sendings, (std::vector<bool>{true, false}));
}

TEST_F(SendEngineTroubleTest, AfterAnAttachmentThatVanishedTheNextSendHasOnlyItsOwn) {
    profile.Write(Text("a.txt"), "a");
    profile.Write(Text("b.txt"), "b");
    message.Attachments = {profile.Path(Text("a.txt")), profile.Path(Text("b.txt"))};
    fake.OnSend = [this] {
        return fake.Sent.back().Attachments.size() < 2 ? Outcome()
                                                       : OwnFailure(FileNotFound, Text("File not found"));
    };
    EXPECT_FALSE(Send());
    message.Attachments = {profile.Path(Text("a.txt"))};
    EXPECT_TRUE(Send());
    EXPECT_EQ(fake.Sent.at(0).Attachments, message.Attachments);
}

TEST_F(SendEngineTroubleTest, AnAttachmentThatTheComponentCannotReadEndsTheSend) {
    fake.OnSend = [this] {
        return fake.Sent.size() == 1 ? Outcome() : OwnFailure(DeviceIoError, Text("Device I/O error"));
    };
    EXPECT_FALSE(Send());
    EXPECT_EQ(Errors(), QStringList(Text("57 in Compose.cmdSend - Device I/O error")));
    EXPECT_EQ(pending, QStringList());
    EXPECT_EQ(statuses.last(), Text("Sending stopped after 1/3 messages"));
}

// ---- Run-time failures

TEST_F(SendEngineTroubleTest, AVanishedSentFolderStopsTheSendBeforeItBegins) {
    ASSERT_TRUE(QDir(profile.Path(Text("sent"))).removeRecursively());
    EXPECT_FALSE(Send());
    ExpectNothingSent("76 in Compose.cmdSend - Path not found");
}

TEST_F(SendEngineTroubleTest, ASettingThatIsNoNumberStopsTheSendBeforeItBegins) {
    profile.Write(Text("prefs.ini"), "[General]\r\nLogEmails=on\r\n");
    EXPECT_FALSE(Send());
    ExpectNothingSent("13 in Compose.cmdSend - Type mismatch");
}

TEST_F(SendEngineTroubleTest, AWrapWidthBelowOneSendsNoEmptyMessages) {
    session.Prefs.SMTPWrap = 0;
    EXPECT_FALSE(Send());
    ExpectNothingSent("5 in Public.WordWrap - Invalid procedure call or argument");
}

TEST_F(SendEngineTroubleTest, ALogThatCannotBeWrittenEndsTheSendWithOneError) {
    message.Recipients = Addresses(5);
    fake.OnSend = [this] {
        if (fake.Sent.size() == 2)
            SpoilLog(Text("StatusLog.txt"));
        return Outcome();
    };
    EXPECT_FALSE(Send());
    EXPECT_EQ(fake.Recipients(), (QStringList{Text("\"Mailing List\" <a1@example.org>"),
                                              Text("\"Mailing List\" <a2@example.org>")}));
    EXPECT_EQ(Errors(), QStringList(Text("70 in Compose.cmdSend - Permission denied")));
    EXPECT_EQ(profile.Boxes.Shown.size(), 1U);
    EXPECT_EQ(statuses.last(), Text("Sending stopped after 2/5 messages"));
    EXPECT_EQ(sendings, (std::vector<bool>{true, false}));
    EXPECT_FALSE(Timer()->isActive());
}

TEST_F(SendEngineTroubleTest, AFailureIsCountedThoughItCannotBeLogged) {
    fake.OnSend = [this] {
        SpoilLog(Text("StatusLog.txt"));
        return Failure(550, Text("no"));
    };
    EXPECT_FALSE(Send());
    EXPECT_EQ(fake.Sent.size(), 1U);
    EXPECT_EQ(pending, QStringList(Text("-a1@example.org")));
    EXPECT_EQ(Errors(), QStringList(Text("70 in Compose.cmdSend - Permission denied")));
    EXPECT_EQ(statuses.last(), Text("Sending stopped after 1/3 messages"));
}

TEST_F(SendEngineTroubleTest, APendingListThatIsFullEndsTheSend) {
    offer = [](const PendingRequest &) { throw RuntimeError(Overflow); };
    fake.OnSend = [this] { return fake.Sent.size() < 2 ? Outcome() : Failure(550, Text("no")); };
    EXPECT_FALSE(Send());
    EXPECT_EQ(Errors(), QStringList(Text("6 in Compose.cmdSend - Overflow")));
    EXPECT_EQ(statuses.last(), Text("Sending stopped after 2/3 messages"));
}

TEST_F(SendEngineTroubleTest, AFailureAtTheEndTellsThatAllWereSent) {
    fake.OnSend = [this] {
        if (fake.Sent.size() == 3)
            SpoilLog(Text("StatusLog.txt"));
        return Outcome();
    };
    EXPECT_FALSE(Send());
    EXPECT_EQ(statuses.last(), Text("Sending stopped after 3/3 messages"));
}

TEST_F(SendEngineTroubleTest, AfterAFailedSendAnotherCanBegin) {
    session.Prefs.SMTPWrap = -1;
    EXPECT_FALSE(Send());
    session.Prefs.SMTPWrap = 72;
    EXPECT_TRUE(Send());
    EXPECT_EQ(fake.Sent.size(), 3U);
}

TEST_F(SendEngineTroubleTest, ASecondSendKnowsNothingOfTheFailuresOfTheFirst) {
    fake.OnSend = [] { return Failure(550, Text("no")); };
    offer = [](const PendingRequest &) { throw RuntimeError(Overflow); };
    EXPECT_FALSE(Send());
    fake.OnSend = [] { return Outcome(); };
    EXPECT_TRUE(Send());
    EXPECT_TRUE(profile.Boxes.Texts().last().endsWith(Text("- The message was sent to 3 recipients")));
}

// ---- Cancelling

TEST_F(SendEngineTroubleTest, ACancelledSendStopsBeforeTheNextRecipientWithoutASummary) {
    fake.OnSend = [this] {
        engine->Cancel();
        return Failure(550, Text("too late to count"));
    };
    EXPECT_FALSE(Send());
    EXPECT_EQ(fake.Sent.size(), 1U);
    EXPECT_EQ(fake.Alive, 0) << "the mail under way is dropped";
    EXPECT_EQ(pending, QStringList());
    EXPECT_EQ(statuses, QStringList(Text("Sending message 1/3")));
    EXPECT_EQ(profile.Boxes.Texts(), QStringList());
    EXPECT_EQ(sendings, (std::vector<bool>{true, false}));
    EXPECT_FALSE(Timer()->isActive());
}

TEST_F(SendEngineTroubleTest, ACancelFromAnEventComesBeforeTheMessageThatIsNext) {
    QTimer::singleShot(0, &keeper, [this] { engine->Cancel(); });
    EXPECT_FALSE(Send());
    EXPECT_EQ(fake.Sent.size(), 0U);
    EXPECT_EQ(statuses, QStringList(Text("Sending message 1/3")));
}

TEST_F(SendEngineTroubleTest, EventsRunInTheTurnOfADuplicateToo) {
    message.Recipients = QStringList(1000, Text("a@b.org"));
    fake.OnSend = [this] {
        QTimer::singleShot(0, &keeper, [this] { engine->Cancel(); });
        return Outcome();
    };
    EXPECT_FALSE(Send());
    EXPECT_EQ(statuses,
              (QStringList{Text("Sending message 1/1000"), Text("Duplicate recipient [a@b.org] ignored")}));
}

TEST_F(SendEngineTroubleTest, ACancelBeforeASendDoesNotStopIt) {
    engine->Cancel();
    EXPECT_TRUE(Send());
    EXPECT_EQ(fake.Sent.size(), 3U);
}

TEST_F(SendEngineTroubleTest, ACancelUnderTheSummaryChangesNothing) {
    profile.Boxes.OnBox = [this](const QString &) { engine->Cancel(); };
    EXPECT_TRUE(Send());
}

TEST_F(SendEngineTroubleTest, AnEngineDestroyedInTheMiddleEndsItsSend) {
    fake.OnSend = [this] {
        engine.reset();
        return Outcome();
    };
    EXPECT_FALSE(Send());
    EXPECT_EQ(fake.Sent.size(), 1U);
    EXPECT_EQ(fake.Alive, 0);
    EXPECT_EQ(statuses, QStringList(Text("Sending message 1/3")));
    EXPECT_EQ(sendings, std::vector<bool>{true});
    EXPECT_EQ(profile.Boxes.Texts(), QStringList());
}

TEST_F(SendEngineTroubleTest, AnEngineDestroyedByItsOwnStatusEndsItsSend) {
    QObject::connect(engine.get(), &SendEngine::StatusChanged, &keeper, [this] { engine.reset(); });
    EXPECT_FALSE(Send());
    EXPECT_EQ(fake.Sent.size(), 0U);
}

TEST_F(SendEngineTroubleTest, AnEngineDestroyedUnderTheSummaryHasSent) {
    profile.Boxes.OnBox = [this](const QString &) { engine.reset(); };
    Send();
    EXPECT_EQ(fake.Sent.size(), 3U);
    EXPECT_EQ(profile.Boxes.Shown.size(), 1U);
    EXPECT_FALSE(completed) << "there is nobody left to tell";
}

TEST_F(SendEngineTroubleTest, AnEngineDestroyedUnderTheBoxOfAFailureSaysNothingMore) {
    profile.Boxes.OnBox = [this](const QString &) { engine.reset(); };
    fake.OnSend = [] { return OwnFailure(FileNotFound, Text("File not found")); };
    Send();
    EXPECT_EQ(statuses, QStringList(Text("Sending message 1/3")));
    EXPECT_EQ(sendings, std::vector<bool>{true});
}

// ---- Beside others

TEST_F(SendEngineTroubleTest, SendReturnsBeforeTheFirstMessageIsGivenAway) {
    engine->Send(message);
    EXPECT_TRUE(engine->IsSending());
    EXPECT_EQ(statuses, QStringList(Text("Sending message 1/3")));
    EXPECT_EQ(sendings, std::vector<bool>{true});
    EXPECT_EQ(fake.Sent.size(), 0U);
}

TEST_F(SendEngineTroubleTest, ABoxThatIsOpenHoldsNothingUp) {
    bool underTheBox = false;
    profile.Boxes.OnBox = [&](const QString &text) {
        if (text == Text("open"))
            underTheBox = test::WaitUntil([this] { return !engine->IsSending(); });
    };
    engine->Send(message);
    session.Boxes.MsgBox(Text("open"));
    EXPECT_TRUE(underTheBox);
    EXPECT_TRUE(completed);
    EXPECT_EQ(fake.Sent.size(), 3U);
}

// Meets every mail's fate in the event that the first of them began.
class RestlessMailer : public Mailer {
public:
    explicit RestlessMailer(std::function<void()> onSubmit) : onSubmit_(std::move(onSubmit)) {}
    void Submit(const Mail &) override {
        onSubmit_();
        if (!std::exchange(submitted_, true) && !running_)
            QMetaObject::invokeMethod(this, &RestlessMailer::Run, Qt::QueuedConnection);
    }

private:
    void Run() {
        const QPointer<RestlessMailer> self(this);
        running_ = true;
        while (self && std::exchange(submitted_, false))
            Q_EMIT Finished({});
        if (self)
            running_ = false;
    }

    const std::function<void()> onSubmit_;
    bool submitted_ = false;
    bool running_ = false;
};

TEST_F(SendEngineTroubleTest, WindowsHaveTheirEventsThoughTheMailerNeverRests) {
    int sent = 0;
    const auto press = [&] { // in the middle, a button that ends it
        if (++sent == 1)
            QTimer::singleShot(1, engine.get(), &SendEngine::Cancel);
    };
    makeMailer = [&](const MailAccount &) { return std::make_unique<RestlessMailer>(press); };
    session.Prefs.LogStatus = 0;
    message.Recipients = Addresses(100'000);
    EXPECT_FALSE(Send());
    EXPECT_GT(sent, 0);
    EXPECT_LT(sent, 50'000) << "100,000 take longer than a slice, whatever the machine";
}

TEST_F(SendEngineTroubleTest, UnderTheSummaryOfOneSendAnotherGoesOn) {
    SendEngine other(session, fake.Maker(), offer);
    profile.Boxes.OnBox = [&](const QString &) {
        profile.Boxes.OnBox = nullptr;
        EXPECT_TRUE(test::WaitUntil([&] { return !other.IsSending(); }));
    };
    ComposedMessage longer = message;
    longer.Recipients = Addresses(20);
    other.Send(longer);
    EXPECT_TRUE(Send());
    EXPECT_EQ(fake.Sent.size(), 23U);
}

} // namespace
} // namespace varlo

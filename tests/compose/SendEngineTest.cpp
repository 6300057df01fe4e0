#include "compose/SendEngine.h"

#include "compose/FakedEngine.h"
#include "core/RuntimeError.h"

#include <gtest/gtest.h>

namespace varlo {
namespace {

using test::Failure;
using test::SentMail;
using test::ShownBox;
using test::Text;

class SendEngineTest : public test::FakedEngine {};

// ---- Checks before the send

constexpr const char *kNoMessage = "You must enter a subject and a message before you can send an e-mail.";
constexpr const char *kNoRecipients = "You must select some recipients before you can send an e-mail.";
constexpr const char *kNoServer =
    "You must configure your SMTP server and e-mail sending details from preferences "
    "before you can send a message.";

TEST_F(SendEngineTest, ACompleteMessagePassesTheChecks) {
    EXPECT_TRUE(engine->Validate(message));
    EXPECT_EQ(profile.Boxes.Texts(), QStringList());
}

TEST_F(SendEngineTest, AMessageWithoutASubjectIsRefused) {
    message.Subject.clear();
    ExpectRefusal(kNoMessage);
}

TEST_F(SendEngineTest, AMessageWithoutATextIsRefused) {
    message.Text.clear();
    ExpectRefusal(kNoMessage);
}

TEST_F(SendEngineTest, TheUntouchedSignatureIsRefused) {
    message.Signature = Text("--\r\nAnn");
    message.Text = Text("\r\n--\r\nAnn");
    ExpectRefusal(kNoMessage);
}

TEST_F(SendEngineTest, AnEmptyLineWithoutASignatureIsRefused) {
    message.Text = Text("\r\n");
    ExpectRefusal(kNoMessage);
}

TEST_F(SendEngineTest, ABlankBeforeTheSignatureIsAMessage) {
    message.Signature = Text("Ann");
    message.Text = Text(" \r\nAnn");
    EXPECT_TRUE(engine->Validate(message));
    message.Text = Text("Ann");
    EXPECT_TRUE(engine->Validate(message));
}

TEST_F(SendEngineTest, AMessageToNobodyIsRefused) {
    message.Recipients.clear();
    ExpectRefusal(kNoRecipients);
}

TEST_F(SendEngineTest, AMissingServerIsRefused) {
    session.Prefs.SMTPServer.clear();
    ExpectRefusal(kNoServer);
}

TEST_F(SendEngineTest, AMissingSenderNameIsRefused) {
    session.Prefs.SMTPFrom.clear();
    ExpectRefusal(kNoServer);
}

TEST_F(SendEngineTest, AMissingSenderAddressIsRefused) {
    session.Prefs.SMTPEmail.clear();
    ExpectRefusal(kNoServer);
}

TEST_F(SendEngineTest, OfSeveralLacksTheFirstIsNamed) {
    message.Recipients.clear();
    session.Prefs.SMTPServer.clear();
    ExpectRefusal(kNoRecipients);
    profile.Boxes.Shown.clear();
    message.Subject.clear();
    ExpectRefusal(kNoMessage);
}

// ---- A send without trouble

TEST_F(SendEngineTest, EveryRecipientGetsHisOwnCopy) {
    EXPECT_TRUE(Send());
    const SentMail first{Text("mail.example.org"),
                         2525,
                         Text("\"Ann Editor\" <ann@example.org>"),
                         Text("News"),
                         Text("Hello."),
                         Text("\"Mailing List\" <a1@example.org>"),
                         {}};
    SentMail second = first;
    SentMail third = first;
    second.Recipient = Text("\"Mailing List\" <a2@example.org>");
    third.Recipient = Text("\"Mailing List\" <a3@example.org>");
    EXPECT_EQ(fake.Sent, (std::vector<SentMail>{first, second, third}));
}

TEST_F(SendEngineTest, TheWindowIsToldEveryStep) {
    EXPECT_TRUE(Send());
    EXPECT_EQ(statuses, (QStringList{Text("Sending message 1/3"), Text("Sending message 2/3"),
                                     Text("Sending message 3/3"), Text("E-mail sending complete")}));
    EXPECT_EQ(captions, (QStringList{Text("Sending: 0% Complete"), Text("Send Complete")}));
    EXPECT_EQ(progress, (std::vector<int>{0, 100}));
    EXPECT_EQ(sendings, (std::vector<bool>{true, false}));
}

TEST_F(SendEngineTest, TheLastStatusComesBeforeTheLastCaption) {
    QStringList told;
    QObject::connect(engine.get(), &SendEngine::StatusChanged, &keeper,
                     [&](const QString &text) { told << text; });
    QObject::connect(engine.get(), &SendEngine::CaptionChanged, &keeper,
                     [&](const QString &text) { told << text; });
    profile.Boxes.OnBox = [&](const QString &) { told << Text("summary"); };
    message.Recipients = Addresses(1);
    EXPECT_TRUE(Send());
    EXPECT_EQ(told, (QStringList{Text("Sending: 0% Complete"), Text("Sending message 1/1"),
                                 Text("E-mail sending complete"), Text("Send Complete"), Text("summary")}));
}

TEST_F(SendEngineTest, StatusTextsGoToTheConsoleAndTheLogButNotToTheStatusBar) {
    message.Recipients = Addresses(1);
    EXPECT_TRUE(Send());
    const QStringList lines = profile.Log(Text("StatusLog.txt"));
    EXPECT_EQ(lines, profile.ConsoleLines);
    ASSERT_EQ(lines.size(), 2);
    EXPECT_TRUE(lines[0].endsWith(Text(" | Sending message 1/1")));
    EXPECT_TRUE(lines[1].endsWith(Text(" | E-mail sending complete")));
    EXPECT_EQ(profile.StatusTexts, QStringList());
}

TEST_F(SendEngineTest, WithoutStatusLoggingOnlyTheConsoleHasTheTexts) {
    session.Prefs.LogStatus = 0;
    EXPECT_TRUE(Send());
    EXPECT_EQ(profile.Log(Text("StatusLog.txt")), QStringList());
    EXPECT_EQ(profile.ConsoleLines.size(), 4);
}

TEST_F(SendEngineTest, TheSummaryIsAnInformation) {
    fake.OnSend = [this] {
        profile.Clock = profile.Clock.addSecs(31);
        return Outcome();
    };
    EXPECT_TRUE(Send());
    EXPECT_EQ(profile.Boxes.Shown,
              (std::vector<ShownBox>{
                  {kApplicationTitle,
                   Text("Message sending complete.\r\n\r\n- The sending process lasted 1 mins, 33 "
                        "secs\r\n- The message was sent to 3 recipients"),
                   BoxButtons::Ok, BoxIcon::Information}}));
}

TEST_F(SendEngineTest, OfTheDurationOnlyWholeSecondsCount) {
    profile.Clock = profile.Clock.addMSecs(900);
    fake.OnSend = [this] {
        profile.Clock = profile.Clock.addMSecs(1999); // two turns of the clock's hand
        return Outcome();
    };
    message.Recipients = Addresses(1);
    EXPECT_TRUE(Send());
    EXPECT_TRUE(profile.Boxes.Texts().value(0).contains(Text("lasted 1 secs\r\n")));
}

TEST_F(SendEngineTest, TheTextIsWrappedAndTheKeptCopyIsNot) {
    session.Prefs.SMTPWrap = 10;
    message.Text = Text("aaaa bbbb cccc");
    EXPECT_TRUE(Send());
    EXPECT_EQ(fake.Sent.at(0).Text, Text("aaaa bbbb\r\ncccc"));
    EXPECT_EQ(profile.Read(Text("sent/26.03.04 @ 0506 - News.txt")),
              "From: ann@example.org\r\nTo: Mailing List\r\nSubject: News\r\n\r\naaaa bbbb cccc\r\n");
}

TEST_F(SendEngineTest, ASubjectWithForbiddenCharactersIsSentWhole) {
    message.Subject = Text("Re: what?\r\nX");
    EXPECT_TRUE(Send());
    EXPECT_EQ(fake.Sent.at(0).Subject, message.Subject);
    EXPECT_EQ(SentFiles(), QStringList(Text("26.03.04 @ 0506 - Re whatX.txt")));
}

TEST_F(SendEngineTest, NoCopyIsKeptWhenTheSettingIsOff) {
    profile.Write(Text("prefs.ini"), "[General]\r\nLogEmails=0\r\n");
    EXPECT_TRUE(Send());
    EXPECT_EQ(SentFiles(), QStringList());
    EXPECT_EQ(fake.Sent.size(), 3U);
}

TEST_F(SendEngineTest, TheCopyIsThereBeforeTheFirstMessageGoesOut) {
    QStringList files;
    fake.OnSend = [&] {
        files = SentFiles();
        return Outcome();
    };
    message.Recipients = Addresses(1);
    EXPECT_TRUE(Send());
    EXPECT_EQ(files, QStringList(Text("26.03.04 @ 0506 - News.txt")));
}

TEST_F(SendEngineTest, OneRecipientIsEnough) {
    message.Recipients = Addresses(1);
    EXPECT_TRUE(Send());
    EXPECT_EQ(fake.Recipients(), QStringList(Text("\"Mailing List\" <a1@example.org>")));
    EXPECT_EQ(captions, (QStringList{Text("Sending: 0% Complete"), Text("Send Complete")}));
}

TEST_F(SendEngineTest, NoRecipientsMakeAnEmptySummary) {
    message.Recipients.clear();
    EXPECT_TRUE(Send());
    EXPECT_EQ(fake.Sent.size(), 0U);
    EXPECT_TRUE(profile.Boxes.Texts().value(0).endsWith(Text("- The message was sent to 0 recipients")));
}

TEST_F(SendEngineTest, ABlankLineOfAListIsARecipientAsItStands) {
    message.Recipients = {QString(), Text(" ")};
    EXPECT_TRUE(Send());
    EXPECT_EQ(fake.Recipients(), (QStringList{Text("\"Mailing List\" <>"), Text("\"Mailing List\" < >")}));
}

TEST_F(SendEngineTest, NamesAndAddressesOutsideAsciiArePassedOn) {
    message.ToName = Text("Gärtner");
    message.Recipients = {Text("jürgen@exämple.org")};
    EXPECT_TRUE(Send());
    EXPECT_EQ(fake.Recipients(), QStringList(Text("\"Gärtner\" <jürgen@exämple.org>")));
}

TEST_F(SendEngineTest, ASecondSendBeginsAnew) {
    message.Recipients = {Text("a@b.org"), Text("A@B.org")};
    EXPECT_TRUE(Send());
    EXPECT_TRUE(Send());
    EXPECT_EQ(fake.Sent.size(), 2U);
    EXPECT_EQ(profile.Boxes.Texts().value(0), profile.Boxes.Texts().value(1));
}

// ---- Duplicates

TEST_F(SendEngineTest, ADuplicateIsSkippedAndCounted) {
    message.Recipients = {Text("a@b.org"), Text("c@d.org"), Text("A@B.org"), Text("e@f.org")};
    EXPECT_TRUE(Send());
    EXPECT_EQ(fake.Recipients(),
              (QStringList{Text("\"Mailing List\" <a@b.org>"), Text("\"Mailing List\" <c@d.org>"),
                           Text("\"Mailing List\" <e@f.org>")}));
    EXPECT_EQ(statuses, (QStringList{Text("Sending message 1/4"), Text("Sending message 2/4"),
                                     Text("Duplicate recipient [A@B.org] ignored"),
                                     Text("Sending message 4/4"), Text("E-mail sending complete")}));
    EXPECT_EQ(profile.Boxes.Texts(),
              QStringList(Text(
                  "Message sending complete.\r\n\r\n- The sending process lasted 0 secs\r\n- The message "
                  "was sent to 3 recipients\r\n- 1 duplicate recipients were ignored")));
}

TEST_F(SendEngineTest, OfNothingButDuplicatesOneIsSent) {
    message.Recipients = QStringList(100, Text("a@b.org"));
    EXPECT_TRUE(Send());
    EXPECT_EQ(fake.Sent.size(), 1U);
    EXPECT_TRUE(profile.Boxes.Texts().value(0).endsWith(
        Text("sent to 1 recipients\r\n- 99 duplicate recipients were ignored")));
}

TEST_F(SendEngineTest, ADuplicateOfAFailedRecipientIsNotTriedAgain) {
    message.Recipients = {Text("a@b.org"), Text("A@b.org")};
    fake.OnSend = [] { return Failure(550, Text("no")); };
    EXPECT_TRUE(Send());
    EXPECT_EQ(fake.Sent.size(), 1U);
    EXPECT_TRUE(profile.Boxes.Texts().value(0).contains(Text("sent to 0 recipients\r\n- 1 duplicate")));
}

// ---- Failures that the component reports

TEST_F(SendEngineTest, AFailedRecipientIsMarkedForRemovalAndTheNextIsSent) {
    fake.OnSend = [this] {
        return fake.Sent.size() != 2 ? Outcome() : Failure(550, Text("no such\r\nuser"));
    };
    EXPECT_TRUE(Send());
    EXPECT_EQ(fake.Sent.size(), 3U);
    EXPECT_EQ(pending, QStringList(Text("-a2@example.org")));
    EXPECT_EQ(statuses, (QStringList{Text("Sending message 1/3"), Text("Sending message 2/3"),
                                     Text("SMTP error 550 - no such user"), Text("Sending message 3/3"),
                                     Text("E-mail sending complete")}));
    EXPECT_EQ(profile.Boxes.Texts(),
              QStringList(Text(
                  "Message sending complete.\r\n\r\n- The sending process lasted 0 secs\r\n- The message "
                  "was sent to 2 recipients\r\n- The message could not be delivered to 1 recipients*\r\n"
                  "\r\n* Failed addresses are added to the pending list flagged for removal.")));
}

TEST_F(SendEngineTest, ATimeOutIsLoggedAndNeverCounts) {
    fake.OnSend = [] { return Failure(12002, Text("timed out")); };
    EXPECT_TRUE(Send());
    EXPECT_EQ(fake.Sent.size(), 3U);
    EXPECT_EQ(pending, QStringList());
    EXPECT_EQ(statuses.count(Text("SMTP error 12002 - timed out")), 3);
    EXPECT_TRUE(profile.Boxes.Texts().value(0).endsWith(Text("- The message was sent to 3 recipients")));
}

TEST_F(SendEngineTest, EveryOtherConnectionErrorCounts) {
    fake.OnSend = [] { return Failure(12029, Text("refused")); };
    EXPECT_TRUE(Send());
    EXPECT_EQ(pending,
              (QStringList{Text("-a1@example.org"), Text("-a2@example.org"), Text("-a3@example.org")}));
}

TEST_F(SendEngineTest, TwoEventsForOneRecipientCountOnce) {
    fake.OnSend = [this] {
        Q_EMIT fake.Newest->Finished(Failure(550, Text("first")));
        return Failure(451, Text("second"));
    };
    message.Recipients = Addresses(1);
    EXPECT_TRUE(Send());
    EXPECT_EQ(pending, QStringList(Text("-a1@example.org")));
    EXPECT_TRUE(profile.Boxes.Texts().value(0).contains(Text("sent to 0 recipients")));
}

TEST_F(SendEngineTest, AnEventWithoutASendIsNobodysFailure) {
    QTimer::singleShot(0, &keeper, [this] { Q_EMIT fake.Newest->Finished(Failure(550, Text("no"))); });
    EXPECT_TRUE(Send());
    EXPECT_EQ(pending, QStringList());
    EXPECT_EQ(statuses.filter(Text("SMTP error")), QStringList());
}

// ---- While it runs

TEST_F(SendEngineTest, ASecondSendWhileOneRunsDoesNothing) {
    bool second = true;
    fake.OnSend = [&] {
        second = Send();
        return Outcome();
    };
    EXPECT_TRUE(Send());
    EXPECT_FALSE(second);
    EXPECT_EQ(fake.Sent.size(), 3U);
    EXPECT_EQ(profile.Boxes.Shown.size(), 1U);
}

TEST_F(SendEngineTest, ASendUnderTheSummaryDoesNothing) {
    profile.Boxes.OnBox = [this](const QString &) { EXPECT_FALSE(Send()); };
    EXPECT_TRUE(Send());
    EXPECT_EQ(fake.Sent.size(), 3U);
}

TEST_F(SendEngineTest, KnowsWhetherItSends) {
    std::vector<bool> during;
    fake.OnSend = [&] {
        during.push_back(engine->IsSending());
        return Outcome();
    };
    profile.Boxes.OnBox = [&](const QString &) { during.push_back(engine->IsSending()); };
    EXPECT_FALSE(engine->IsSending());
    EXPECT_TRUE(Send());
    EXPECT_EQ(during, (std::vector<bool>{true, true, true, true}));
    EXPECT_FALSE(engine->IsSending());
}

TEST_F(SendEngineTest, TheTimerTicksEveryThreeSecondsWhileMessagesGoOut) {
    std::vector<bool> active;
    fake.OnSend = [&] {
        active.push_back(Timer()->isActive());
        return Outcome();
    };
    profile.Boxes.OnBox = [&](const QString &) { active.push_back(Timer()->isActive()); };
    EXPECT_EQ(Timer()->interval(), 3000);
    EXPECT_FALSE(Timer()->isActive());
    EXPECT_TRUE(Send());
    EXPECT_EQ(active, (std::vector<bool>{true, true, true, false}));
}

TEST_F(SendEngineTest, ATickShowsThePercentageAndTheEstimate) {
    message.Recipients = Addresses(5);
    fake.OnSend = [this] {
        profile.Clock = profile.Clock.addSecs(10);
        Tick();
        return Outcome();
    };
    EXPECT_TRUE(Send());
    EXPECT_EQ(captions,
              (QStringList{Text("Sending: 0% Complete"), Text("Sending: 25% Complete (30 secs remaining)"),
                           Text("Sending: 50% Complete (20 secs remaining)"),
                           Text("Sending: 75% Complete (10 secs remaining)"),
                           Text("Sending: 100% Complete (1 second remaining)"), Text("Send Complete")}));
    EXPECT_EQ(progress, (std::vector<int>{0, 25, 50, 75, 100, 100}));
}

TEST_F(SendEngineTest, ATickWithoutASendShowsNothing) {
    Tick();
    EXPECT_TRUE(Send());
    Tick();
    EXPECT_EQ(captions, (QStringList{Text("Sending: 0% Complete"), Text("Send Complete")}));
}

TEST_F(SendEngineTest, AClockThatIsSetBackMakesNoNegativeTime) {
    fake.OnSend = [this] {
        profile.Clock = profile.Clock.addSecs(-3607);
        Tick();
        return Outcome();
    };
    EXPECT_TRUE(Send());
    EXPECT_EQ(captions.value(1), Text("Sending: 50% Complete (1 second remaining)"));
    EXPECT_TRUE(profile.Boxes.Texts().value(0).contains(Text("lasted 0 secs")));
}

} // namespace
} // namespace varlo

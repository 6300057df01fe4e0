// Whole mailbox checks: preferences, server, boxes, logs and the Pending list.
#include "pop3/Pop3Check.h"

#include "core/Literals.h"
#include "pop3/FakePending.h"
#include "support/FakePop3Server.h"
#include "support/Printers.h"
#include "support/Settle.h"
#include "support/TestProfile.h"
#include "support/WaitUntil.h"

#include <gtest/gtest.h>

#include <memory>

namespace varlo {

using test::ServerReply;
using test::ShownBox;

namespace {

const ShownBox kNotConfigured{kApplicationTitle,
                              u"You must configure your POP3 server, username and password from "
                              "preferences before you can use this feature."_s,
                              BoxButtons::Ok, BoxIcon::Exclamation};

ShownBox ReplyBox(const QString &reply) {
    return {u"Varlo POP3 Error"_s, u"POP3 Error ["_s + reply + u']', BoxButtons::Ok, BoxIcon::Exclamation};
}

QStringList Texts(std::initializer_list<const char *> texts) {
    QStringList list;
    for (const char *text : texts)
        list << QString::fromUtf8(text);
    return list;
}

QByteArray Mail(const char *subject, const char *from, const char *id = "") {
    return QByteArray("From: ") + from + "\r\nSubject: " + subject + "\r\nMessage-ID: " + id +
           "\r\n\r\nbody\r\n";
}

class Pop3CheckTest : public testing::Test {
protected:
    Pop3CheckTest() {
        Set("POPServer", u"127.0.0.1"_s);
        Set("POPUsername", u"joe"_s);
        Set("POPPassword", u"secret"_s);
        Set("POPPort", u"1"_s); // stored, and never used
    }

    // As the file has it, where the check reads it.
    void Set(const char *key, const QString &value) {
        profile.session.INI.SetSection(u"POP3"_s);
        profile.session.INI.Values(QString::fromLatin1(key), value);
    }

    static bool Until(const std::function<bool()> &condition) { return test::WaitUntil(condition); }
    bool UntilComplete(int checks = 1) {
        return Until([&] { return Completed() == checks; });
    }
    qsizetype Completed() const { return profile.StatusTexts.filter(u"POP3 check complete"_s).size(); }
    bool UntilSent(const char *command) {
        return Until([&] { return server.Commands.contains(command); });
    }
    bool UntilBox() {
        return Until([&] { return !profile.Boxes.Shown.empty(); });
    }
    // The console's lines without their times.
    QStringList Console() const {
        QStringList lines;
        for (const QString &line : profile.ConsoleLines)
            lines << line.mid(line.indexOf(u'|') + 2);
        return lines;
    }
    // The folder of the logs goes when the console has the line that ends so.
    QMetaObject::Connection LoseLogsAt(const QString &ending) {
        return QObject::connect(&profile.session.Status, &StatusFeed::ConsoleLine,
                                [this, ending](const QString &line) {
                                    if (line.endsWith(ending))
                                        QDir(profile.Path(u"logs"_s)).removeRecursively();
                                });
    }
    ShownBox ErrorBox(int number) const {
        ShownBox box = profile.Boxes.Shown.back();
        EXPECT_TRUE(box.Title.endsWith(u" Error %1 in Unknown"_s.arg(number))) << box.Title.toStdString();
        return box;
    }

    test::TestProfile profile;
    test::FakePop3Server server;
    test::FakePending pending{profile.session};
    int PreferencesOpened = 0;
    std::unique_ptr<Pop3Check> check = std::make_unique<Pop3Check>(
        profile.session, pending.Door(), [this] { ++PreferencesOpened; }, server.serverPort());
};

} // namespace

TEST_F(Pop3CheckTest, MissingServerUserOrPasswordOpensThePreferences) {
    for (const char *key : {"POPServer", "POPUsername", "POPPassword"}) {
        const QString value = profile.session.INI.GetValue(QString::fromLatin1(key));
        profile.Boxes.Shown.clear();
        PreferencesOpened = 0;
        Set(key, QString());
        check->Start();
        EXPECT_EQ(profile.Boxes.Shown, std::vector<ShownBox>{kNotConfigured}) << key;
        EXPECT_EQ(PreferencesOpened, 1);
        Set(key, value);
    }
    test::Settle();
    EXPECT_EQ(server.Connections, 0);
    EXPECT_EQ(Console(), QStringList());
}

TEST_F(Pop3CheckTest, DeleteSettingThatIsNoNumberEndsTheClick) {
    Set("POPDeleteAll", u"yes"_s);
    check->Start();
    ErrorBox(13);
    test::Settle();
    EXPECT_EQ(server.Connections, 0);
}

TEST_F(Pop3CheckTest, PortIsTheFixedOne) {
    EXPECT_EQ(Pop3Check::kPort, 110);
}

TEST_F(Pop3CheckTest, EmptyMailboxFromTheClickToTheSummary) {
    server.Script[""] = {{"+OK ready\r\n"}};
    check->Start();
    EXPECT_EQ(profile.StatusTexts, Texts({"Connecting to POP3 server"}));
    EXPECT_TRUE(UntilComplete());
    EXPECT_EQ(server.Commands, (QByteArrayList{"USER joe", "PASS secret", "STAT", "QUIT"}));
    EXPECT_EQ(Console(), Texts({"Connecting to POP3 server", "POP: +OK ready", "Connected to POP3 server",
                                "USER joe", "POP: +OK", "PASS ********", "POP: +OK", "STAT", "POP: +OK 0 0",
                                "QUIT", "POP: +OK bye", "POP3 check complete (no activity)"}));
    EXPECT_EQ(profile.StatusTexts, Texts({"Connecting to POP3 server", "Connected to POP3 server",
                                          "POP3 check complete (no activity)"}));
    EXPECT_TRUE(Until([&] { return server.Open() == 0; }));
}

TEST_F(Pop3CheckTest, RequestsGoFromTheMailboxToThePendingList) {
    server.Mailbox = {Mail("subscribe", "a@b.test", "<1>"), Mail("UNSUBSCRIBE", "Joe <j@x.test>", "<2>"),
                      Mail("Subscribe", "nobody", "<3>")};
    check->Start();
    EXPECT_TRUE(UntilComplete());
    EXPECT_EQ(server.Commands, (QByteArrayList{"USER joe", "PASS secret", "STAT", "RETR 1", "DELE 1",
                                               "RETR 2", "DELE 2", "RETR 3", "DELE 3", "QUIT"}));
    EXPECT_EQ(pending.Entries, Texts({"+a@b.test", "-j@x.test"}));
    EXPECT_EQ(Console().last(), u"POP3 check complete (+1, -1)"_s);
    EXPECT_EQ(server.Mailbox, QByteArrayList());
}

TEST_F(Pop3CheckTest, SecondCheckStartsWithoutTheRequestsOfTheFirst) {
    server.Mailbox = {Mail("subscribe", "a@b.test", "<1>")};
    check->Start();
    EXPECT_TRUE(UntilComplete(1));
    server.Mailbox = {Mail("subscribe", "c@d.test", "<1>")};
    check->Start();
    EXPECT_TRUE(UntilComplete(2));
    EXPECT_EQ(pending.Entries, Texts({"+a@b.test", "+c@d.test"}));
    EXPECT_EQ(Console().last(), u"POP3 check complete (+1)"_s);
    EXPECT_EQ(profile.Boxes.Texts(), QStringList());
}

TEST_F(Pop3CheckTest, UnrelatedMessageStaysAndTheCheckRestsUntilTheNextClick) {
    server.Mailbox = {Mail("subscribe", "a@b.test"), Mail("Hello", "c@d.test"),
                      Mail("subscribe", "e@f.test")};
    check->Start();
    EXPECT_TRUE(UntilSent("RETR 2"));
    test::Settle();
    EXPECT_EQ(server.Commands.last(), "RETR 2");
    EXPECT_EQ(server.Open(), 1);
    EXPECT_EQ(pending.Entries, QStringList());
    check->Start();
    EXPECT_TRUE(Until([&] { return server.Connections == 2 && server.Open() == 1; }));
}

TEST_F(Pop3CheckTest, UnrelatedMessagesAreDeletedWhenTheSettingIsOne) {
    Set("POPDeleteAll", u"1"_s);
    server.Mailbox = {Mail("Hello", "c@d.test"), Mail("subscribe", "e@f.test"), "no empty line\r\n"};
    check->Start();
    EXPECT_TRUE(UntilComplete());
    EXPECT_EQ(server.Mailbox, QByteArrayList());
    EXPECT_EQ(pending.Entries, Texts({"+e@f.test"}));
    EXPECT_EQ(profile.Boxes.Shown,
              (std::vector<ShownBox>{{kApplicationTitle, u"There was a problem with decoding the e-mail"_s,
                                      BoxButtons::Ok, BoxIcon::None}}));
}

TEST_F(Pop3CheckTest, RefusedPasswordIsShownAsItCameWithNothingLogged) {
    server.Script["PASS secret"] = {{"-ERR <b>bad</b> & worse\r\n"}};
    check->Start();
    EXPECT_TRUE(UntilBox());
    EXPECT_EQ(profile.Boxes.Shown, std::vector<ShownBox>{ReplyBox(u"-ERR <b>bad</b> & worse\r\n"_s)});
    EXPECT_EQ(Console().last(), u"PASS ********"_s);
    EXPECT_TRUE(Until([&] { return server.Open() == 0; }));
    server.Script.clear();
    check->Start();
    EXPECT_TRUE(UntilComplete());
}

TEST_F(Pop3CheckTest, ConnectionThatFailsIsShownThenLogged) {
    server.close();
    check->Start();
    EXPECT_EQ(Console(), Texts({"Connecting to POP3 server"}));
    EXPECT_TRUE(UntilBox());
    EXPECT_TRUE(Until([&] { return Console().size() == 2; }));
    const QString text = u"POP3 check failed (error 10061 - Connection refused)"_s;
    EXPECT_EQ(profile.Boxes.Shown,
              (std::vector<ShownBox>{{kApplicationTitle, text, BoxButtons::Ok, BoxIcon::None}}));
    EXPECT_EQ(Console().last(), text);
    EXPECT_EQ(profile.StatusTexts.last(), text);
}

TEST_F(Pop3CheckTest, SecondRequestWithTheSameMessageIdEndsTheEventInABox) {
    server.Mailbox = {Mail("subscribe", "a@b.test", "<1>"), Mail("subscribe", "c@d.test", "<1>")};
    check->Start();
    EXPECT_TRUE(UntilBox());
    ErrorBox(457);
    test::Settle();
    EXPECT_EQ(server.Commands.last(), "RETR 2");
    EXPECT_EQ(profile.Log(u"ErrorLog.txt"_s).size(), 1);
}

TEST_F(Pop3CheckTest, StatThatCannotBeReadEndsTheEventInABox) {
    const std::pair<const char *, int> replies[] = {
        {"+OK 12\r\n", 5}, {"+OK 99999 1\r\n", 6}, {"+OK x 1\r\n", 13}};
    for (const auto &[reply, number] : replies) {
        profile.Boxes.Shown.clear();
        server.Script["STAT"] = {{reply}};
        check->Start();
        EXPECT_TRUE(UntilBox());
        ErrorBox(number);
    }
    server.Script["STAT"] = {{"+OK -1 1\r\n"}};
    check->Start();
    EXPECT_TRUE(UntilComplete());
}

TEST_F(Pop3CheckTest, HeaderBlockThatIsTooLongEndsTheEventInABox) {
    server.Mailbox = {"X: " + QByteArray(40000, 'x') + "\r\n\r\nbody\r\n"};
    check->Start();
    EXPECT_TRUE(UntilBox());
    ErrorBox(6);
    test::Settle();
    EXPECT_EQ(server.Commands.last(), "RETR 1");
}

TEST_F(Pop3CheckTest, SenderThatCannotBeCutCostsTheOthersNothing) {
    server.Mailbox = {Mail("subscribe", "a@b.test"), Mail("subscribe", ">x<"),
                      Mail("unsubscribe", "c@d.test")};
    check->Start();
    EXPECT_TRUE(UntilBox());
    ErrorBox(5);
    EXPECT_EQ(pending.Entries, Texts({"+a@b.test", "-c@d.test"}));
    EXPECT_EQ(Console().last(), u"POP3 check complete (+1, -1)"_s);
    EXPECT_TRUE(Until([&] { return server.Open() == 0; }));
}

TEST_F(Pop3CheckTest, CheckAfterAnErrorStartsWithTheFirstMessage) {
    const QByteArray first = Mail("subscribe", "a@b.test", "<1>");
    const QByteArray tooLong = "X: " + QByteArray(40000, 'x') + "\r\n\r\nbody\r\n";
    for (const QByteArrayList &spoilt :
         {QByteArrayList{first, Mail("subscribe", "x@y.test", "<1>")}, QByteArrayList{first, tooLong}}) {
        pending.Entries.clear();
        profile.Boxes.Shown.clear();
        server.Mailbox = spoilt;
        const qsizetype done = Completed();
        check->Start();
        EXPECT_TRUE(UntilBox());
        EXPECT_TRUE(Until([&] { return server.Open() == 0; }));
        server.Commands.clear();
        server.Mailbox = {first, Mail("subscribe", "c@d.test"), Mail("subscribe", "e@f.test")};
        check->Start();
        EXPECT_TRUE(UntilComplete(static_cast<int>(done) + 1));
        EXPECT_EQ(server.Commands.mid(3),
                  (QByteArrayList{"RETR 1", "DELE 1", "RETR 2", "DELE 2", "RETR 3", "DELE 3", "QUIT"}));
        EXPECT_EQ(pending.Entries, Texts({"+a@b.test", "+c@d.test", "+e@f.test"}));
    }
}

TEST_F(Pop3CheckTest, CheckAfterAnErrorOfALogStartsWithTheFirstMessage) {
    server.Mailbox = {Mail("subscribe", "a@b.test"), Mail("subscribe", "c@d.test")};
    const auto loss = LoseLogsAt(u"Downloading message 2/2"_s);
    check->Start();
    EXPECT_TRUE(UntilBox());
    ErrorBox(76);
    QObject::disconnect(loss);
    EXPECT_EQ(server.Mailbox.size(), 2);
    EXPECT_TRUE(Until([&] { return server.Open() == 0; }));
    server.Commands.clear();
    check->Start();
    EXPECT_TRUE(UntilComplete());
    EXPECT_EQ(server.Commands.mid(3), (QByteArrayList{"RETR 1", "DELE 1", "RETR 2", "DELE 2", "QUIT"}));
    EXPECT_EQ(pending.Entries, Texts({"+a@b.test", "+c@d.test"}));
}

// From QUIT on the messages are gone from the server.
TEST_F(Pop3CheckTest, LogThatCannotBeWrittenFromQuitOnLosesNoRequest) {
    for (const char *line : {"POP: +OK deleted", "QUIT", "POP: +OK bye"}) {
        profile.Boxes.Shown.clear();
        profile.session.LogTrouble.clear();
        pending.Entries.clear();
        server.Mailbox = {Mail("subscribe", "a@b.test")};
        server.Script["DELE 1"] = {{"+OK deleted\r\n"}};
        ASSERT_TRUE(QDir().mkpath(profile.Path(u"logs"_s)));
        const auto loss = LoseLogsAt(QString::fromLatin1(line));
        const qsizetype done = Completed();
        check->Start();
        EXPECT_TRUE(UntilComplete(static_cast<int>(done) + 1)) << line;
        EXPECT_TRUE(UntilBox());
        ErrorBox(76);
        EXPECT_EQ(pending.Entries, Texts({"+a@b.test"})) << line;
        EXPECT_EQ(profile.Boxes.Shown.size(), 1U) << line;
        EXPECT_TRUE(Until([&] { return server.Open() == 0; })) << line;
        QObject::disconnect(loss);
    }
}

TEST_F(Pop3CheckTest, EndMarkSplitAtEveryPositionIsOneMessage) {
    const QByteArray reply = "+OK\r\n" + Mail("subscribe", "a@b.test") + ".\r\n";
    for (qsizetype at = reply.size() - 12; at < reply.size(); ++at) {
        pending.Entries.clear();
        server.Commands.clear();
        const qsizetype done = Completed();
        server.Mailbox = {Mail("subscribe", "a@b.test")};
        server.Script["RETR 1"] = {{reply.first(at), reply.sliced(at)}};
        check->Start();
        EXPECT_TRUE(UntilComplete(static_cast<int>(done) + 1));
        EXPECT_EQ(pending.Entries, Texts({"+a@b.test"})) << at;
        EXPECT_EQ(server.Commands.mid(3), (QByteArrayList{"RETR 1", "DELE 1", "QUIT"})) << at;
    }
}

TEST_F(Pop3CheckTest, ServerThatClosesAtAnyStepLeavesTheNextCheckWorking) {
    int complete = 0;
    for (const QByteArray command : {"", "USER joe", "PASS secret", "STAT", "RETR 1", "DELE 1", "QUIT"}) {
        server.Mailbox = {Mail("subscribe", "a@b.test")};
        server.Script = {{command, {{}, ServerReply::Then::Close}}};
        const int connections = server.Connections;
        check->Start();
        EXPECT_TRUE(Until([&] { return server.Connections > connections && server.Open() == 0; }))
            << command.constData();
        EXPECT_EQ(Completed(), complete) << command.constData();
        server.Script.clear();
        server.Mailbox.clear();
        check->Start();
        EXPECT_TRUE(UntilComplete(++complete)) << command.constData();
    }
    EXPECT_EQ(profile.Boxes.Texts(), QStringList());
}

TEST_F(Pop3CheckTest, ResetAtAnyStepIsOneErrorBox) {
    for (const QByteArray command : {"", "USER joe", "PASS secret", "STAT", "RETR 1"}) {
        profile.Boxes.Shown.clear();
        server.Mailbox = {Mail("subscribe", "a@b.test")};
        const QByteArrayList lastWords = command.isEmpty() ? QByteArrayList{"+OK\r\n"} : QByteArrayList();
        server.Script = {{command, {lastWords, ServerReply::Then::Reset}}};
        check->Start();
        EXPECT_TRUE(UntilBox()) << command.constData();
        test::Settle();
        EXPECT_EQ(profile.Boxes.Texts(),
                  Texts({"POP3 check failed (error 10054 - Connection reset by peer)"}))
            << command.constData();
    }
}

TEST_F(Pop3CheckTest, SilentServerIsReplacedByTheNextCheck) {
    for (const QByteArray command : {"", "USER joe", "STAT", "QUIT"}) {
        server.Script = {{command, {}}};
        const int connections = server.Connections;
        check->Start();
        EXPECT_TRUE(Until([&] { return server.Connections > connections; }));
        EXPECT_TRUE(command.isEmpty() || UntilSent(command.constData()));
        server.Commands.clear();
    }
    server.Script.clear();
    check->Start();
    EXPECT_TRUE(UntilComplete());
    EXPECT_TRUE(Until([&] { return server.Open() == 0; }));
}

TEST_F(Pop3CheckTest, MegabyteWithoutALineEndIsOneBoundedBox) {
    server.Script[""] = {{QByteArray(1024 * 1024, 'x')}};
    check->Start();
    EXPECT_TRUE(UntilBox());
    test::Settle();
    EXPECT_EQ(profile.Boxes.Shown, std::vector<ShownBox>{ReplyBox(QString(WinsockPOP::kLongestLine, u'x'))});
    EXPECT_TRUE(Until([&] { return server.Open() == 0; }));
}

TEST_F(Pop3CheckTest, BinaryZerosAreText) {
    server.Script[""] = {{QByteArray("+O\0K\r\n", 6)}};
    check->Start();
    EXPECT_TRUE(UntilComplete());
    EXPECT_EQ(Console().at(1), u"POP: +O"_s + QChar(0) + u'K');
}

TEST_F(Pop3CheckTest, SenderInUtf8KeepsItsLetters) {
    server.Mailbox = {Mail("subscribe", "j\xC3\xB6rg@x.test") + "\xFF\xFE\r\n"};
    check->Start();
    EXPECT_TRUE(UntilComplete());
    EXPECT_EQ(pending.Entries, Texts({"+jörg@x.test"}));
}

TEST_F(Pop3CheckTest, UserNameAndPasswordTravelInUtf8) {
    Set("POPUsername", u"j\u00F6rg"_s);
    check->Start();
    EXPECT_TRUE(UntilComplete());
    EXPECT_EQ(server.Commands.first(), "USER j\xC3\xB6rg");
}

TEST_F(Pop3CheckTest, MessageOfFiftyMegabytes) {
    server.Mailbox = {Mail("subscribe", "a@b.test")};
    for (int i = 0; i < 50; ++i)
        server.Mailbox[0] += QByteArray(1024 * 1024 - 2, 'x') + "\r\n";
    check->Start();
    EXPECT_TRUE(UntilComplete());
    EXPECT_EQ(pending.Entries, Texts({"+a@b.test"}));
}

TEST_F(Pop3CheckTest, ThousandMessagesInOneCheck) {
    for (int i = 0; i < 1000; ++i)
        server.Mailbox << Mail("subscribe", QByteArray("a" + QByteArray::number(i) + "@b.test").constData());
    check->Start();
    ASSERT_TRUE(UntilComplete());
    ASSERT_EQ(pending.Entries.size(), 1000);
    EXPECT_EQ(pending.Entries.last(), u"+a999@b.test"_s);
}

TEST_F(Pop3CheckTest, ReplyThatComesWhileABoxIsOpenIsHandledAfterIt) {
    Set("POPDeleteAll", u"1"_s);
    server.Mailbox = {"no empty line\r\n"};
    QStringList consoleInBox;
    profile.Boxes.OnBox = [&](const QString &) {
        server.Say("+OK too early\r\n");
        test::Settle();
        consoleInBox = Console();
    };
    check->Start();
    EXPECT_TRUE(UntilBox());
    EXPECT_TRUE(Until([&] { return Console().contains(u"POP: +OK too early"_s); }));
    EXPECT_EQ(consoleInBox.last().left(8),
              u"POP: +OK"_s); // the message itself was the last reply handled
    EXPECT_FALSE(consoleInBox.contains(u"POP: +OK too early"_s));
    const QStringList after = Console();
    EXPECT_LT(after.indexOf(u"DELE 1"_s), after.indexOf(u"POP: +OK too early"_s));
}

TEST_F(Pop3CheckTest, ClickWhileTheListIsProcessedStartsAnewAfterwards) {
    pending.BypassTicked = true;
    server.Mailbox = {Mail("subscribe", "a@b.test")};
    int processed = 0;
    pending.OnProcess = [&] {
        if (++processed > 1)
            return;
        check->Start();
        test::Settle();
        EXPECT_EQ(server.Connections, 2);
        EXPECT_EQ(Completed(), 1); // its greeting is here, and waits
    };
    check->Start();
    EXPECT_TRUE(UntilComplete(2));
    EXPECT_EQ(Console().last(), u"POP3 check complete (no activity)"_s);
}

TEST_F(Pop3CheckTest, ClickWhileABoxIsOpenDropsTheRestOfTheOldEvent) {
    server.Mailbox = {"no empty line\r\n"};
    Set("POPDeleteAll", u"1"_s);
    profile.Boxes.OnBox = [&](const QString &) {
        profile.Boxes.OnBox = nullptr;
        server.Mailbox.clear();
        check->Start();
    };
    check->Start();
    EXPECT_TRUE(UntilComplete());
    EXPECT_FALSE(server.Commands.contains("DELE 1"));
}

TEST_F(Pop3CheckTest, WindowMayCloseWhileTheListIsProcessed) {
    pending.BypassTicked = true;
    pending.OnProcess = [&] { check.reset(); };
    check->Start();
    EXPECT_TRUE(Until([&] { return check == nullptr; }));
    test::Settle();
    EXPECT_EQ(server.Open(), 0);
}

TEST_F(Pop3CheckTest, WindowMayCloseWhileABoxIsOpen) {
    server.Mailbox = {"no empty line\r\n"};
    profile.Boxes.OnBox = [&](const QString &) { check.reset(); };
    check->Start();
    EXPECT_TRUE(Until([&] { return check == nullptr; }));
    test::Settle();
    EXPECT_EQ(server.Open(), 0);
}

TEST_F(Pop3CheckTest, LogThatCannotBeWrittenEndsTheEventWithABox) {
    check->Start();
    EXPECT_TRUE(QDir(profile.session.ProfileFile(u"logs"_s)).removeRecursively());
    EXPECT_TRUE(UntilBox());
    ErrorBox(76);
    test::Settle();
    EXPECT_EQ(server.Commands, QByteArrayList());
}

} // namespace varlo

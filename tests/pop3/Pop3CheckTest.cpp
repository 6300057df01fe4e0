// Whole mailbox checks: preferences, server, boxes, logs and the Pending list.
#include "pop3/Pop3CheckFixture.h"

namespace varlo::test {

namespace {

const ShownBox kNotConfigured{kApplicationTitle,
                              u"You must configure your POP3 server, username and password from "
                              "preferences before you can use this feature."_s,
                              BoxButtons::Ok, BoxIcon::Exclamation};

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

TEST_F(Pop3CheckTest, PasswordThatTheKeyringHasNotGivenIsToldAndNothingIsAskedFor) {
    Set("POPPassword", QString());
    profile.session.PasswordTrouble = [] { return u"The keyring is locked."_s; };
    check->Start();
    EXPECT_EQ(profile.Boxes.Texts(), QStringList{u"The keyring is locked."_s});
    EXPECT_EQ(PreferencesOpened, 0);
    profile.session.PasswordTrouble = [] { return QString(); };
    check->Start();
    EXPECT_EQ(profile.Boxes.Shown.back(), kNotConfigured);
    EXPECT_EQ(PreferencesOpened, 1);
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
    // The message itself was the last reply handled.
    EXPECT_EQ(consoleInBox.last().left(8), u"POP: +OK"_s);
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

} // namespace varlo::test

// Whole mailbox checks that go wrong: servers that refuse, break off or never end, logs that cannot be written.
#include "pop3/Pop3CheckFixture.h"

namespace varlo::test {

TEST_F(Pop3CheckTest, DeleteSettingThatIsNoNumberEndsTheClick) {
    Set("POPDeleteAll", u"yes"_s);
    check->Start();
    ErrorBox(13);
    test::Settle();
    EXPECT_EQ(server.Connections, 0);
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

TEST_F(Pop3CheckTest, LogThatCannotBeWrittenEndsTheEventWithABox) {
    check->Start();
    EXPECT_TRUE(QDir(profile.session.ProfileFile(u"logs"_s)).removeRecursively());
    EXPECT_TRUE(UntilBox());
    ErrorBox(76);
    test::Settle();
    EXPECT_EQ(server.Commands, QByteArrayList());
}

TEST_F(Pop3CheckTest, AnswerThatNeverEndsEndsTheCheckAtEveryStep) {
    server.Mailbox = {Mail("subscribe", "a@b.test")};
    for (const QByteArray command : {"", "USER joe", "PASS secret", "STAT", "DELE 1"}) {
        profile.Boxes.Shown.clear();
        profile.ConsoleLines.clear();
        server.Script = {{command, {{QByteArray(8 * 1024 * 1024, '+')}}}};
        check->Start();
        EXPECT_TRUE(UntilBox()) << command.constData();
        EXPECT_EQ(profile.Boxes.Shown, std::vector<ShownBox>{ReplyBox(u"The reply is too long"_s)})
            << command.constData();
        EXPECT_TRUE(Until([&] { return server.Open() == 0; }));
        EXPECT_LT(Console().join(QString()).size(), 2 * WinsockPOP::kLongestLine) << command.constData();
    }
    server.Script.clear();
    check->Start();
    EXPECT_TRUE(UntilComplete());
    EXPECT_EQ(pending.Entries, Texts({"+a@b.test"}));
}

TEST_F(Pop3CheckTest, MessageThatNeverEndsEndsTheCheck) {
    server.Mailbox = {Mail("subscribe", "a@b.test")};
    server.Script["RETR 1"] = {{"+OK\r\n" + QByteArray(80 * 1024 * 1024, '+')}};
    check->Start();
    EXPECT_TRUE(UntilBox());
    EXPECT_EQ(profile.Boxes.Shown, std::vector<ShownBox>{ReplyBox(u"Message 1 is longer than 64 MB"_s)});
    EXPECT_TRUE(Until([&] { return server.Open() == 0; }));
    server.Script.clear();
    check->Start();
    EXPECT_TRUE(UntilComplete());
    EXPECT_EQ(pending.Entries, Texts({"+a@b.test"}));
}

} // namespace varlo::test

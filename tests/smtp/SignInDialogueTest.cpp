// Signing in, over a real line: every mechanism, every refusal, every order of STARTTLS and AUTH. Whatever the
// server does, it hears the secret only where it may.
#include "core/Literals.h"
#include "smtp/Sender.h"
#include "support/FakeCertificate.h"
#include "support/Printers.h"

#include <QCryptographicHash>
#include <QSslCertificate>
#include <gtest/gtest.h>

namespace varlo::test {

namespace {

const QString kAnn = u"ann@example.com"_s;
const QByteArray kSecrets[] = {"secret word", "token word"};

// A server that offers AUTH only on an encrypted line.
SmtpScript Submission(const QByteArray &mechanisms) {
    SmtpScript script;
    script.Encrypts = true;
    script.EncryptedExtensions = {"PIPELINING", "AUTH " + mechanisms};
    return script;
}

QByteArray Fingerprint(const char *certificate) {
    return QSslCertificate(QByteArray(certificate)).digest(QCryptographicHash::Sha256);
}

// The secret in every form in which it could leave.
QByteArrayList Forms() {
    QByteArrayList forms;
    for (const QByteArray &secret : kSecrets)
        forms << secret << secret.toBase64()
              << QByteArray('\0' + QByteArray("ed") + '\0' + secret).toBase64();
    return forms;
}

class SignInDialogueTest : public testing::Test {
protected:
    void Start(SmtpScript script) {
        server = std::make_unique<FakeSmtpServer>(std::move(script));
        sender = std::make_unique<Sender>(*server);
        sender->Account.Security = MailSecurity::StartTls;
        sender->Account.Trusted = Fingerprint(kFakeCertificate);
        sender->Account.Username = u"ed"_s;
        sender->Account.Secret = u"secret word"_s;
    }
    void UseToken() {
        sender->Account.Secret = u"token word"_s;
        sender->Account.SignIn = MailSignIn::Token;
    }
    bool Send() { return sender->SendTo(kAnn); }
    // What was said after EHLO, without the secrets.
    QByteArrayList Said() const { return ClientLines(*server); }

    qsizetype Said(const QByteArray &verb) const {
        const QByteArrayList lines = Said();
        return std::count_if(lines.begin(), lines.end(),
                             [&](const QByteArray &line) { return line.startsWith(verb); });
    }

    void ExpectAccountFault(int number, const QString &text) {
        EXPECT_FALSE(Send());
        EXPECT_EQ(sender->Last(), (Outcome{Outcome::Kind::NotTried, number, text, false, true}));
        EXPECT_EQ(sender->Errors, SmtpErrors()) << "no recipient is at fault";
        EXPECT_EQ(Said("MAIL"), 0);
    }
    void ExpectNoSecretInTheClear() {
        for (const QByteArray &form : Forms())
            EXPECT_FALSE(server->HeardInTheClear().contains(form)) << form.constData();
    }

    std::unique_ptr<FakeSmtpServer> server;
    std::unique_ptr<Sender> sender;
};

} // namespace

TEST_F(SignInDialogueTest, EveryMechanismForPasswords) {
    for (const QByteArray mechanism : {"PLAIN", "LOGIN", "CRAM-MD5", "SCRAM-SHA-256"}) {
        Start(Submission(mechanism));
        EXPECT_TRUE(Send()) << mechanism.constData();
        EXPECT_EQ(Said().value(0), "STARTTLS");
        EXPECT_TRUE(Said().value(1).startsWith("AUTH " + mechanism)) << Said().value(1).constData();
        EXPECT_EQ(Reached(*server), QByteArrayList{"ann@example.com"});
        ExpectNoSecretInTheClear();
    }
}

TEST_F(SignInDialogueTest, EveryMechanismForTokens) {
    for (const QByteArray mechanism : {"OAUTHBEARER", "XOAUTH2"}) {
        Start(Submission("PLAIN " + mechanism));
        UseToken();
        EXPECT_TRUE(Send()) << mechanism.constData();
        EXPECT_TRUE(Said().value(1).startsWith("AUTH " + mechanism)) << Said().value(1).constData();
        ExpectNoSecretInTheClear();
    }
}

TEST_F(SignInDialogueTest, SignInHappensOnceForAConnection) {
    Start(Submission("PLAIN"));
    EXPECT_TRUE(Send());
    EXPECT_TRUE(Send());
    EXPECT_EQ(server->Connections(), 1);
    EXPECT_EQ(Said("AUTH"), 1);
}

TEST_F(SignInDialogueTest, LineThatIsEncryptedFromTheFirstByteSignsInToo) {
    SmtpScript script = Submission("PLAIN");
    script.EncryptsAtOnce = true;
    Start(script);
    sender->Account.Security = MailSecurity::Tls;
    EXPECT_TRUE(Send());
    EXPECT_TRUE(Said().value(0).startsWith("AUTH PLAIN "));
    EXPECT_EQ(server->HeardInTheClear(), "");
}

TEST_F(SignInDialogueTest, RefusedPasswordIsAFaultOfTheAccount) {
    for (const QByteArray mechanism : {"PLAIN", "LOGIN", "CRAM-MD5", "SCRAM-SHA-256"}) {
        SmtpScript script = Submission(mechanism);
        script.Password = "another";
        Start(script);
        ExpectAccountFault(535, u"The mail server [127.0.0.1] refused the user name or the password: 535 "
                                "5.7.8 no such user, or not with that password"_s);
    }
}

TEST_F(SignInDialogueTest, RefusedTokenIsAFaultOfTheAccount) {
    for (const QByteArray mechanism : {"OAUTHBEARER", "XOAUTH2"}) {
        SmtpScript script = Submission(mechanism);
        script.Token = "another";
        Start(script);
        UseToken();
        ExpectAccountFault(535, u"The mail server [127.0.0.1] refused the user name or the token: 535 "
                                "5.7.8 no such user, or not with that password"_s);
    }
}

TEST_F(SignInDialogueTest, EveryRefusalOfASignInIsAFaultOfTheAccount) {
    for (const int code : {432, 454, 500, 501, 503, 530, 534, 535, 538, 550}) {
        SmtpScript script = Submission("PLAIN");
        script.Faults = {{SmtpStep::Auth, SmtpFault::Reply, QByteArray::number(code) + " no\r\n"}};
        Start(script);
        ExpectAccountFault(
            code, u"The mail server [127.0.0.1] refused the user name or the password: %1 no"_s.arg(code));
    }
}

TEST_F(SignInDialogueTest, MechanismThatTheServerDoesNotKnowAfterAllGivesWayToTheNext) {
    SmtpScript script = Submission("CRAM-MD5 PLAIN");
    script.Faults = {{SmtpStep::Auth, SmtpFault::Reply, "504 not that\r\n", "CRAM"}};
    Start(script);
    EXPECT_TRUE(Send());
    EXPECT_EQ(Said().value(1), "AUTH CRAM-MD5");
    EXPECT_TRUE(Said().value(2).startsWith("AUTH PLAIN "));
}

TEST_F(SignInDialogueTest, ServerThatKnowsNoneOfThemIsAFaultOfTheAccount) {
    for (const QByteArray mechanisms : {"GSSAPI", "XOAUTH2", ""}) {
        Start(Submission(mechanisms));
        ExpectAccountFault(OSSMTP::CannotConnect, u"The mail server [127.0.0.1] offers no way of signing in "
                                                  "for which the password can be used."_s);
    }
}

TEST_F(SignInDialogueTest, ServerThatOnlyKnowsHeloIsAFaultOfTheAccount) {
    SmtpScript script = Submission("PLAIN");
    script.EncryptsAtOnce = true;
    script.Faults = {{SmtpStep::Ehlo, SmtpFault::Reply, "500 what\r\n", "EHLO"}};
    Start(script);
    sender->Account.Security = MailSecurity::Tls;
    ExpectAccountFault(OSSMTP::CannotConnect, u"The mail server [127.0.0.1] offers no way of signing in "
                                              "for which the password can be used."_s);
}

TEST_F(SignInDialogueTest, ServerThatWelcomesWithoutProofIsAnImpostor) {
    SmtpScript script = Submission("SCRAM-SHA-256");
    script.Faults = {{SmtpStep::Auth, SmtpFault::Reply, "235 come in\r\n"}};
    Start(script);
    ExpectAccountFault(OSSMTP::CannotConnect,
                       u"The mail server [127.0.0.1] did not prove that it knows the password."_s);
}

TEST_F(SignInDialogueTest, ChallengesThatMakeNoSenseEndIt) {
    for (const QByteArray challenge : {"334 ???\r\n", "334 cj14LHM9eCxpPTE=\r\n", "334\r\n"}) {
        SmtpScript script = Submission("SCRAM-SHA-256");
        script.Faults = {{SmtpStep::Auth, SmtpFault::Reply, challenge}};
        Start(script);
        ExpectAccountFault(OSSMTP::CannotConnect,
                           u"The mail server [127.0.0.1] did not prove that it knows the password."_s);
    }
}

TEST_F(SignInDialogueTest, ServerThatClosesWithinTheSignInIsTriedOnceMore) {
    SmtpScript script = Submission("LOGIN");
    script.Faults = {{SmtpStep::Auth, SmtpFault::Close, "", "", 1, 1}};
    Start(script);
    EXPECT_TRUE(Send());
    EXPECT_EQ(server->Connections(), 2);
}

TEST_F(SignInDialogueTest, MailThatNeedsAnotherSignInIsAFaultOfTheAccount) {
    SmtpScript script = Submission("PLAIN");
    script.Faults = {{SmtpStep::Mail, SmtpFault::Reply, "530 5.7.0 sign in first\r\n"}};
    Start(script);
    EXPECT_FALSE(Send());
    EXPECT_EQ(
        sender->Last(),
        (Outcome{Outcome::Kind::NotTried, 530,
                 u"The mail server [127.0.0.1] takes no mail from this account: 530 5.7.0 sign in first"_s,
                 false, true}));
    EXPECT_EQ(sender->Errors, SmtpErrors());
}

TEST_F(SignInDialogueTest, WithoutAUserNameARefusalIsTheRecipients) {
    SmtpScript script;
    script.Faults = {{SmtpStep::Mail, SmtpFault::Reply, "530 5.7.0 sign in first\r\n"}};
    Start(script);
    sender->Account = Sender(*server).Account;
    EXPECT_FALSE(Send());
    EXPECT_EQ(sender->Last(), (Outcome{Outcome::Kind::Refused, 530, u"5.7.0 sign in first"_s}));
    EXPECT_EQ(sender->Errors.size(), 1U);
}

TEST_F(SignInDialogueTest, SecretThatTheServerRepeatsIsMasked) {
    SmtpScript script = Submission("PLAIN");
    script.Faults = {{SmtpStep::Auth, SmtpFault::Reply,
                      "535 wrong: secret word, that is " + QByteArray("secret word").toBase64() + "\r\n"}};
    Start(script);
    ExpectAccountFault(535, u"The mail server [127.0.0.1] refused the user name or the password: 535 "
                            "wrong: ***, that is ***"_s);
    script.Faults = {{SmtpStep::Rcpt, SmtpFault::Reply, "550 you and your secret word\r\n"}};
    Start(script);
    EXPECT_FALSE(Send());
    EXPECT_EQ(sender->Last().Description, u"you and your ***"_s);
}

// ---- The line in the clear

TEST_F(SignInDialogueTest, NoSecretCrossesALineInTheClear) {
    for (const MailSecurity security : {MailSecurity::Automatic, MailSecurity::StartTls}) {
        SmtpScript stripped; // somebody in the middle has taken STARTTLS away
        stripped.Extensions = {"PIPELINING", "AUTH PLAIN LOGIN CRAM-MD5"};
        Start(stripped);
        sender->Account.Security = security;
        ExpectAccountFault(OSSMTP::CannotConnect,
                           security == MailSecurity::StartTls
                               ? u"The server does not encrypt"_s
                               : u"The line to the mail server [127.0.0.1] is not encrypted, so the password "
                                 "was not sent over it."_s);
        EXPECT_EQ(Said(), QByteArrayList());
        ExpectNoSecretInTheClear();
    }
}

TEST_F(SignInDialogueTest, EncryptionThatIsRefusedOrBrokenGetsNoSecretEither) {
    for (const QByteArray reply : {"454 not now\r\n", "220 go\r\nnonsense that is no handshake\r\n"}) {
        SmtpScript script = Submission("PLAIN");
        script.Extensions << "STARTTLS"
                          << "AUTH PLAIN";
        script.Faults = {{SmtpStep::StartTls, SmtpFault::ReplyThenClose, reply}};
        Start(script);
        sender->Account.Security = MailSecurity::Automatic;
        EXPECT_FALSE(Send());
        EXPECT_EQ(Said("AUTH"), 0);
        ExpectNoSecretInTheClear();
    }
}

TEST_F(SignInDialogueTest, LineInTheClearIsUsedOnceTheOperatorHasSaidSo) {
    SmtpScript script;
    script.Extensions = {"PIPELINING", "AUTH PLAIN"};
    Start(script);
    sender->Account.Security = MailSecurity::Automatic;
    sender->Account.ClearTextAllowed = true;
    EXPECT_TRUE(Send());
    EXPECT_TRUE(Said().value(0).startsWith("AUTH PLAIN "));
}

TEST_F(SignInDialogueTest, PermissionForTheClearDoesNotMakeEncryptionOptional) {
    SmtpScript script;
    script.Extensions = {"PIPELINING", "AUTH PLAIN"};
    Start(script);
    sender->Account.ClearTextAllowed = true;
    ExpectAccountFault(OSSMTP::CannotConnect, u"The server does not encrypt"_s);
    ExpectNoSecretInTheClear();
}

TEST_F(SignInDialogueTest, WhatWasOfferedInTheClearIsForgotten) {
    SmtpScript script = Submission("PLAIN");
    script.Extensions = {"AUTH SCRAM-SHA-256"}; // by somebody in the middle, perhaps
    Start(script);
    EXPECT_TRUE(Send());
    EXPECT_TRUE(Said().value(1).startsWith("AUTH PLAIN ")) << Said().value(1).constData();
}

TEST_F(SignInDialogueTest, WordsInjectedBeforeTheHandshakeDoNotSignAnybodyIn) {
    SmtpScript script = Submission("PLAIN");
    script.StartTlsReply = "220 go ahead\r\n250-evil.example\r\n250 AUTH LOGIN\r\n235 welcome\r\n250 ok\r\n";
    Start(script);
    EXPECT_TRUE(Send());
    EXPECT_TRUE(Said().value(1).startsWith("AUTH PLAIN ")) << Said().value(1).constData();
    EXPECT_EQ(server->Connections(), 1);
    ExpectNoSecretInTheClear();
}

} // namespace varlo::test

// Server says / client must answer, for every mechanism. The values of SCRAM are those of the library's server
// side, which the test runs; the others are the examples of their standards.
#include "net/SignIn.h"

#include "core/Literals.h"
#include "support/Printers.h"

#include <gtest/gtest.h>

#include <gsasl.h>

namespace varlo::net {

namespace {

const Credentials kTim{u"tim"_s, u"tanstaaftanstaaf"_s};
const Credentials kToken{u"some,one=1@example.com"_s, u"ya29.vF9dft4qmTc2Nvb3RlckBhdH"_s, true,
                         u"server.example.com"_s, 587};
const QByteArrayList kAll{"LOGIN", "XOAUTH2", "PLAIN", "CRAM-MD5", "OAUTHBEARER", "SCRAM-SHA-256", "GSSAPI"};

std::string Refusal(std::optional<QByteArray> response) {
    return response ? "answered" : "refused";
}

// The server of a mechanism, by the same library.
class ServerSide {
public:
    ServerSide(const char *mechanism, const char *password) {
        EXPECT_EQ(gsasl_init(&library_), GSASL_OK);
        EXPECT_EQ(gsasl_server_start(library_, mechanism, &session_), GSASL_OK);
        gsasl_property_set(session_, GSASL_PASSWORD, password);
    }
    ~ServerSide() {
        gsasl_finish(session_);
        gsasl_done(library_);
    }
    // What the server says, and whether it is content.
    std::pair<QByteArray, int> Step(const QByteArray &response) {
        char *bytes = nullptr;
        std::size_t size = 0;
        const int result = gsasl_step(session_, response.constData(),
                                      static_cast<std::size_t>(response.size()), &bytes, &size);
        QByteArray said(bytes, static_cast<qsizetype>(size));
        gsasl_free(bytes);
        return {said, result};
    }

private:
    Gsasl *library_ = nullptr;
    Gsasl_session *session_ = nullptr;
};

} // namespace

TEST(SignInTest, StrongestMechanismThatBothKnowIsChosen) {
    QByteArrayList offered = kAll;
    for (const QByteArray expected : {"SCRAM-SHA-256", "CRAM-MD5", "PLAIN", "LOGIN", ""}) {
        EXPECT_EQ(StrongestMechanism(offered, kTim), expected);
        offered.removeAll(expected);
    }
    offered = kAll;
    for (const QByteArray expected : {"OAUTHBEARER", "XOAUTH2", ""}) {
        EXPECT_EQ(StrongestMechanism(offered, kToken), expected);
        offered.removeAll(expected);
    }
}

TEST(SignInTest, PlainSaysAllAtOnce) {
    SignIn signIn("PLAIN", kTim);
    EXPECT_EQ(signIn.InitialResponse(), QByteArray("\0tim\0tanstaaftanstaaf", 21));
    EXPECT_TRUE(signIn.IsComplete());
    EXPECT_EQ(Refusal(signIn.Respond("and now?")), "refused");
}

TEST(SignInTest, PlainTakesWhatIsNotAscii) {
    SignIn signIn("PLAIN", {u"jürgen"_s, u"пароль"_s});
    EXPECT_EQ(signIn.InitialResponse(),
              QByteArray(1, '\0') + "j\xC3\xBCrgen" + QByteArray(1, '\0') + u"пароль"_s.toUtf8());
}

TEST(SignInTest, LoginAnswersTheNameThenThePassword) {
    SignIn signIn("LOGIN", kTim);
    EXPECT_EQ(signIn.InitialResponse(), std::nullopt);
    EXPECT_FALSE(signIn.HasFailed());
    EXPECT_EQ(signIn.Respond("Username:"), "tim");
    EXPECT_FALSE(signIn.IsComplete());
    EXPECT_EQ(signIn.Respond("Password:"), "tanstaaftanstaaf");
    EXPECT_TRUE(signIn.IsComplete());
}

// The example of RFC 2195.
TEST(SignInTest, CramAnswersWithADigest) {
    SignIn signIn("CRAM-MD5", kTim);
    EXPECT_EQ(signIn.InitialResponse(), std::nullopt);
    EXPECT_EQ(signIn.Respond("<1896.697170952@postoffice.reston.mci.net>"),
              "tim b913a602c7eda7a495b4e6e7334d3890");
    EXPECT_TRUE(signIn.IsComplete());
}

TEST(SignInTest, ScramProvesThePasswordBothWays) {
    SignIn client("SCRAM-SHA-256", kTim);
    ServerSide server("SCRAM-SHA-256", "tanstaaftanstaaf");
    const auto opening = client.InitialResponse();
    ASSERT_TRUE(opening);
    EXPECT_TRUE(opening->startsWith("n,,n=tim,r=")) << opening->constData();
    const auto proof = client.Respond(server.Step(*opening).first);
    ASSERT_TRUE(proof);
    EXPECT_FALSE(proof->contains("tanstaaf"));
    EXPECT_FALSE(client.IsComplete()) << "the server has proven nothing yet";
    const auto [answer, result] = server.Step(*proof);
    EXPECT_EQ(result, GSASL_OK);
    EXPECT_EQ(client.Respond(answer), "");
    EXPECT_TRUE(client.IsComplete());
}

TEST(SignInTest, ScramWithAnotherPasswordIsRefusedByTheServer) {
    SignIn client("SCRAM-SHA-256", kTim);
    ServerSide server("SCRAM-SHA-256", "another");
    const auto proof = client.Respond(server.Step(*client.InitialResponse()).first);
    ASSERT_TRUE(proof);
    EXPECT_NE(server.Step(*proof).second, GSASL_OK);
}

TEST(SignInTest, ScramServerThatDoesNotKnowThePasswordIsAnImpostor) {
    for (const QByteArray lie : {"v=AAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAA=", "e=other-error", ""}) {
        SignIn client("SCRAM-SHA-256", kTim);
        ServerSide server("SCRAM-SHA-256", "tanstaaftanstaaf");
        ASSERT_TRUE(client.Respond(server.Step(*client.InitialResponse()).first));
        EXPECT_EQ(Refusal(client.Respond(lie)), "refused") << lie.constData();
        EXPECT_FALSE(client.IsComplete());
        EXPECT_TRUE(client.HasFailed());
    }
}

TEST(SignInTest, ScramChallengesThatMakeNoSenseAreRefused) {
    for (const QByteArray &challenge :
         {QByteArray(), QByteArray("nonsense"), QByteArray("r=notmine,s=QSXCR+Q6sek8bf92,i=4096"),
          QByteArray("\0\0\0", 3), QByteArray(100'000, 'x')}) {
        SignIn client("SCRAM-SHA-256", kTim);
        ASSERT_TRUE(client.InitialResponse());
        EXPECT_EQ(Refusal(client.Respond(challenge)), "refused");
    }
}

// The form of RFC 7628, 4.1; the name is escaped.
TEST(SignInTest, TokenGoesAlongAsBearer) {
    SignIn signIn("OAUTHBEARER", kToken);
    EXPECT_EQ(signIn.InitialResponse(),
              "n,a=some=2Cone=3D1@example.com,\1host=server.example.com\1port=587\1auth=Bearer "
              "ya29.vF9dft4qmTc2Nvb3RlckBhdH\1\1");
    EXPECT_TRUE(signIn.IsComplete());
}

TEST(SignInTest, TokenGoesAlongInTheOlderForm) {
    SignIn signIn("XOAUTH2", {u"someuser@example.com"_s, u"ya29"_s, true});
    EXPECT_EQ(signIn.InitialResponse(), "user=someuser@example.com\1auth=Bearer ya29\1\1");
    EXPECT_TRUE(signIn.IsComplete());
}

TEST(SignInTest, RefusedTokenIsAcknowledgedOnce) {
    for (const auto &[mechanism, answer] : {std::pair(QByteArray("OAUTHBEARER"), QByteArray("\1")),
                                            std::pair(QByteArray("XOAUTH2"), QByteArray(""))}) {
        SignIn signIn(mechanism, kToken);
        signIn.InitialResponse();
        EXPECT_EQ(signIn.Respond(R"({"status":"401"})"), answer);
        EXPECT_FALSE(signIn.IsComplete());
        EXPECT_EQ(Refusal(signIn.Respond("again")), "refused");
    }
}

TEST(SignInTest, MechanismThatNobodyKnowsHasFailed) {
    SignIn signIn("NONESUCH", kTim);
    EXPECT_TRUE(signIn.HasFailed());
    EXPECT_EQ(signIn.InitialResponse(), std::nullopt);
}

TEST(SignInTest, SecretIsShownInNoForm) {
    EXPECT_EQ(WithoutSecret("no tanstaaftanstaaf and no dGFuc3RhYWZ0YW5zdGFhZg== here", kTim),
              "no *** and no *** here");
    EXPECT_EQ(WithoutSecret("no secret", {u"tim"_s, {}}), "no secret");
}

} // namespace varlo::net

#include "net/frmServerTest.h"

#include "net/FakeServerTest.h"
#include "support/Printers.h"

#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <gtest/gtest.h>

namespace varlo {

using test::FakeServerTest;

namespace {

class frmServerTestTest : public testing::Test {
protected:
    std::unique_ptr<net::ServerTest> Make() {
        auto made = std::make_unique<FakeServerTest>();
        Last = made.get();
        ++Made;
        return made;
    }
    QStringList Steps() const {
        QStringList steps;
        const auto *list = window->findChild<QListWidget *>(u"lstSteps"_s);
        for (int row = 0; row < list->count(); ++row)
            steps << list->item(row)->text();
        return steps;
    }
    QString Dialogue() const { return window->findChild<QPlainTextEdit *>(u"txtDialogue"_s)->toPlainText(); }
    QPushButton *Button(const char *name) const {
        return window->findChild<QPushButton *>(QString::fromLatin1(name));
    }

    FakeServerTest *Last = nullptr;
    int Made = 0;
    bool Trusts = true;
    int Trusted = 0;
    int Allowed = 0;
    std::unique_ptr<frmServerTest> window = std::make_unique<frmServerTest>(
        u"Test of [mail.test]"_s, ServerTestDoor{.Make = [this] { return Make(); },
                                                 .TrustIt =
                                                     [this](const net::TestResult &) {
                                                         ++Trusted;
                                                         return Trusts;
                                                     },
                                                 .AllowIt = [this] { ++Allowed; }});
};

} // namespace

TEST_F(frmServerTestTest, BeginsAtOnceAndShowsStepsAndDialogue) {
    EXPECT_TRUE(Last->Started);
    EXPECT_EQ(Steps(), QStringList());
    Last->Connect();
    Last->End({});
    EXPECT_EQ(Steps(), (QStringList{u"Connected to [mail.test], port 25."_s, u"Everything worked."_s}));
    EXPECT_EQ(Dialogue(), u"< 220 hi\n> EHLO [127.0.0.1]"_s);
    EXPECT_TRUE(Button("cmdTrust")->isHidden());
    EXPECT_TRUE(Button("cmdAllow")->isHidden());
}

TEST_F(frmServerTestTest, TellsWhatDidNotWork) {
    Last->End({u"The server refused: no."_s});
    EXPECT_EQ(Steps().last(), u"It did not work. The server refused: no."_s);
    EXPECT_TRUE(Button("cmdTrust")->isHidden());
}

TEST_F(frmServerTestTest, CertificateThatIsTrustedBeginsTheTestAnew) {
    Last->Connect();
    Last->End({u"Not trusted."_s, test::SomeCertificate()});
    EXPECT_FALSE(Button("cmdTrust")->isHidden());
    Trusts = false;
    Button("cmdTrust")->click();
    EXPECT_EQ(Made, 1);
    Trusts = true;
    Button("cmdTrust")->click();
    EXPECT_EQ(Trusted, 2);
    EXPECT_EQ(Made, 2);
    EXPECT_EQ(FakeServerTest::Alive, 1);
    EXPECT_EQ(Steps(), QStringList());
    EXPECT_EQ(Dialogue(), QString());
    EXPECT_TRUE(Button("cmdTrust")->isHidden());
}

TEST_F(frmServerTestTest, LineWithoutEncryptionIsAllowedByAButtonOfItsOwn) {
    Last->End({u"The server does not encrypt."_s, std::nullopt, true});
    EXPECT_TRUE(Button("cmdTrust")->isHidden());
    Button("cmdAllow")->click();
    EXPECT_EQ(Allowed, 1);
    EXPECT_EQ(Made, 2);
}

TEST_F(frmServerTestTest, ClosingEndsTheTest) {
    Last->Connect();
    window.reset();
    EXPECT_EQ(FakeServerTest::Alive, 0);
}

TEST_F(frmServerTestTest, ServerThatTalksForEverDoesNotFillTheMemory) {
    for (int i = 0; i < 1000; ++i)
        Last->Connect();
    EXPECT_EQ(window->findChild<QPlainTextEdit *>(u"txtDialogue"_s)->blockCount(), 1000);
}

} // namespace varlo

#include "net/frmTrust.h"

#include "net/FakeServerTest.h"
#include "support/Printers.h"

#include <QPlainTextEdit>
#include <QPushButton>
#include <QtTest>
#include <gtest/gtest.h>

namespace varlo {

namespace {

net::DistrustedServer Server(bool isOther = false) {
    return {u"mail.test"_s, test::SomeCertificate(), u"It is self-signed."_s, isOther};
}

QString Sentence(const frmTrust &window) {
    return window.findChild<QPlainTextEdit *>(u"txtCertificate"_s)->toPlainText();
}

} // namespace

TEST(frmTrustTest, ShowsNameIssuerDatesAndFingerprint) {
    const frmTrust window(Server());
    const auto day = [](int year) {
        return QLocale::system().toString(QDate(year, 1, 2), QLocale::LongFormat);
    };
    EXPECT_TRUE(Sentence(window).endsWith(u"\n\nName: mail.test\nIssued by: Nobody\nValid from: "_s +
                                          day(2026) + u"\nValid until: "_s + day(2036) + u"\nSHA-256: "_s +
                                          u"0A:"_s.repeated(31) + u"0A"_s));
    EXPECT_TRUE(Sentence(window).startsWith(
        u"The certificate of the server [mail.test] cannot be verified. It is self-signed. Nothing was sent."_s));
}

TEST(frmTrustTest, SaysWhenTheCertificateHasChanged) {
    EXPECT_TRUE(
        Sentence(frmTrust(Server(true)))
            .startsWith(u"The server [mail.test] shows another certificate than the one that you trust."_s));
}

TEST(frmTrustTest, OnlyTheButtonTrustsNotEnter) {
    frmTrust window(Server());
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    QTest::keyClick(window.focusWidget(), Qt::Key_Return);
    EXPECT_FALSE(window.isVisible());
    EXPECT_EQ(window.result(), QDialog::Rejected);
    window.show();
    window.findChild<QPushButton *>(u"cmdTrust"_s)->click();
    EXPECT_EQ(window.result(), QDialog::Accepted);
}

TEST(frmTrustTest, NamesOfTheCertificateAreNoMarkup) {
    net::DistrustedServer server = Server();
    server.Name = u"<b>mail</b>"_s;
    const frmTrust window(server);
    EXPECT_TRUE(Sentence(window).contains(u"[<b>mail</b>]"_s));
}

} // namespace varlo

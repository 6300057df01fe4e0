#include "smtp/ServerUrl.h"

#include "support/Printers.h"

#include <gtest/gtest.h>

namespace OSSMTP {

namespace {

QByteArray UrlText(const QString &host, int port = 25) {
    const Url url = ServerUrl(host, port);
    char *text = nullptr;
    if (!url || Curl().url_get(url.get(), CURLUPART_URL, &text, 0) != CURLUE_OK)
        return "none";
    const QByteArray copy(text);
    Curl().free(text);
    return copy;
}

} // namespace

TEST(ServerUrlTest, NamesAndAddressesAreServers) {
    EXPECT_EQ(UrlText(QStringLiteral("mail.example.org")), "smtp://mail.example.org:25/");
    EXPECT_EQ(UrlText(QStringLiteral(" 192.0.2.1 "), 2525), "smtp://192.0.2.1:2525/");
    EXPECT_EQ(UrlText(QStringLiteral("::1")), "smtp://[::1]:25/");
    EXPECT_EQ(UrlText(QStringLiteral("[::1]")), "smtp://[::1]:25/");
    EXPECT_EQ(UrlText(QStringLiteral("b\u00fccher.example")), "smtp://xn--bcher-kva.example:25/");
}

TEST(ServerUrlTest, NothingElseIsSmuggledIn) {
    for (const QString &host : {QString(), QStringLiteral(" "), QStringLiteral("a@b"), QStringLiteral("a/b"),
                                QStringLiteral("a:26"), QStringLiteral("a?b"), QStringLiteral("a#b"),
                                QStringLiteral("a b"), QStringLiteral("a\r\nb"), QStringLiteral("http://a"),
                                QStringLiteral("a") + QChar(0) + QStringLiteral("b"), QStringLiteral("[::1"),
                                QStringLiteral("a\u00fc/b"), QStringLiteral("a\u00fc@b")})
        EXPECT_EQ(UrlText(host), "none") << host.toStdString();
}

TEST(ServerUrlTest, PortsAreInRange) {
    EXPECT_EQ(UrlText(QStringLiteral("a"), 65535), "smtp://a:65535/");
    EXPECT_EQ(UrlText(QStringLiteral("a"), 65536), "none");
    EXPECT_EQ(UrlText(QStringLiteral("a"), -1), "none");
}

} // namespace OSSMTP

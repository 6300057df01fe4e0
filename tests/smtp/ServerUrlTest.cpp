#include "smtp/ServerUrl.h"

#include "core/Literals.h"
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
    EXPECT_EQ(UrlText(u"mail.example.org"_s), "smtp://mail.example.org:25/");
    EXPECT_EQ(UrlText(u" 192.0.2.1 "_s, 2525), "smtp://192.0.2.1:2525/");
    EXPECT_EQ(UrlText(u"::1"_s), "smtp://[::1]:25/");
    EXPECT_EQ(UrlText(u"[::1]"_s), "smtp://[::1]:25/");
    EXPECT_EQ(UrlText(u"b\u00fccher.example"_s), "smtp://xn--bcher-kva.example:25/");
}

TEST(ServerUrlTest, NothingElseIsSmuggledIn) {
    for (const QString &host :
         {QString(), u" "_s, u"a@b"_s, u"a/b"_s, u"a:26"_s, u"a?b"_s, u"a#b"_s, u"a b"_s, u"a\r\nb"_s,
          u"http://a"_s, u"a"_s + QChar(0) + u"b"_s, u"[::1"_s, u"a\u00fc/b"_s, u"a\u00fc@b"_s})
        EXPECT_EQ(UrlText(host), "none") << host.toStdString();
}

TEST(ServerUrlTest, PortsAreInRange) {
    EXPECT_EQ(UrlText(u"a"_s, 65535), "smtp://a:65535/");
    EXPECT_EQ(UrlText(u"a"_s, 65536), "none");
    EXPECT_EQ(UrlText(u"a"_s, -1), "none");
}

} // namespace OSSMTP

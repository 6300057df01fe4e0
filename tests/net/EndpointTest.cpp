#include "net/Endpoint.h"

#include "core/Literals.h"
#include "support/Printers.h"

#include <gtest/gtest.h>

namespace varlo::net {

TEST(EndpointTest, NamesAndAddressesAreHosts) {
    EXPECT_EQ(HostName(u"mail.example.org"_s), u"mail.example.org"_s);
    EXPECT_EQ(HostName(u" 192.0.2.1 "_s), u"192.0.2.1"_s);
    EXPECT_EQ(HostName(u"::1"_s), u"::1"_s);
    EXPECT_EQ(HostName(u"[::1]"_s), u"::1"_s);
    EXPECT_EQ(HostName(u"b\u00fccher.example"_s), u"xn--bcher-kva.example"_s);
}

TEST(EndpointTest, NothingElseIsSmuggledIn) {
    for (const QString &host :
         {QString(), u" "_s, u"a@b"_s, u"a/b"_s, u"a:26"_s, u"a?b"_s, u"a#b"_s, u"a b"_s, u"a\r\nb"_s,
          u"http://a"_s, u"a"_s + QChar(0) + u"b"_s, u"[::1"_s, u"a\u00fc/b"_s, u"a\u00fc@b"_s})
        EXPECT_EQ(HostName(host), QString()) << host.toStdString();
}

} // namespace varlo::net

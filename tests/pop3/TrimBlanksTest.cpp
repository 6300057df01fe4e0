// Blanks go, everything else stays.
#include "pop3/TrimBlanks.h"

#include "support/Printers.h"

#include <gtest/gtest.h>

namespace varlo {

TEST(TrimBlanksTest, BlanksAtBothEndsGo) {
    EXPECT_EQ(TrimBlanks(u"  a b  "), QStringLiteral("a b"));
    EXPECT_EQ(TrimBlanks(u"   "), QString());
    EXPECT_EQ(TrimBlanks(u""), QString());
}

TEST(TrimBlanksTest, OtherWhiteSpaceStays) {
    for (const QString &text :
         {QStringLiteral("\ta\t"), QStringLiteral("\na\r"), QStringLiteral("\u00A0a\u00A0")})
        EXPECT_EQ(TrimBlanks(u' ' + text + u' '), text);
}

} // namespace varlo

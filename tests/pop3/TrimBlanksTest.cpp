// Blanks go, everything else stays.
#include "pop3/TrimBlanks.h"

#include "core/Literals.h"
#include "support/Printers.h"

#include <gtest/gtest.h>

namespace varlo {

TEST(TrimBlanksTest, BlanksAtBothEndsGo) {
    EXPECT_EQ(TrimBlanks(u"  a b  "), u"a b"_s);
    EXPECT_EQ(TrimBlanks(u"   "), QString());
    EXPECT_EQ(TrimBlanks(u""), QString());
}

TEST(TrimBlanksTest, OtherWhiteSpaceStays) {
    for (const QString &text : {u"\ta\t"_s, u"\na\r"_s, u"\u00A0a\u00A0"_s})
        EXPECT_EQ(TrimBlanks(u' ' + text + u' '), text);
}

} // namespace varlo

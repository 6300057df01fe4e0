#include "compose/LineEnds.h"

#include "core/Literals.h"

#include <gtest/gtest.h>

namespace varlo {
namespace {

TEST(LineEnds, ParagraphsOfADocumentEndWithCrLf) {
    EXPECT_EQ(WithCrLf(u"a\u2029\u2029b\u2028c"_s), "a\r\n\r\nb\r\nc");
}

TEST(LineEnds, NoBreakSpacesStay) {
    EXPECT_EQ(WithCrLf(u"a\u00A0b"_s), u"a\u00A0b"_s);
}

TEST(LineEnds, TheClipboardGetsLineFeeds) {
    EXPECT_EQ(WithLineFeeds(u"a\u2029b\u2028c"_s), "a\nb\nc");
}

TEST(LineEnds, EveryBreakOpensOneParagraph) {
    EXPECT_EQ(WithParagraphs("a\r\nb\nc\rd\r\r\n\n"), u"a\u2029b\u2029c\u2029d\u2029\u2029\u2029"_s);
    EXPECT_EQ(WithParagraphs("\r"), u"\u2029"_s);
}

TEST(LineEnds, ABreakCountsOnceInADocument) {
    EXPECT_EQ(DocumentPosition("a\r\nb\r\nc", 0), 0);
    EXPECT_EQ(DocumentPosition("a\r\nb\r\nc", 3), 2);
    EXPECT_EQ(DocumentPosition("a\r\nb\r\nc", 7), 5);
}

TEST(LineEnds, APositionInsideABreakIsTheOneBeforeIt) {
    EXPECT_EQ(DocumentPosition("a\r\nb", 2), 1);
}

TEST(LineEnds, EveryKindOfBreakBecomesOneBlank) {
    EXPECT_EQ(OnOneLine(u"a\r\nb\nc\rd\u2028e\u2029f"_s), "a b c d e f");
}

} // namespace
} // namespace varlo

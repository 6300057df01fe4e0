#include "compose/LineEnds.h"

#include <gtest/gtest.h>

namespace varlo {
namespace {

TEST(LineEnds, ParagraphsOfADocumentEndWithCrLf) {
    EXPECT_EQ(WithCrLf(QStringLiteral("a\u2029\u2029b\u2028c")), "a\r\n\r\nb\r\nc");
}

TEST(LineEnds, NoBreakSpacesStay) {
    EXPECT_EQ(WithCrLf(QStringLiteral("a\u00A0b")), QStringLiteral("a\u00A0b"));
}

TEST(LineEnds, TheClipboardGetsLineFeeds) {
    EXPECT_EQ(WithLineFeeds(QStringLiteral("a\u2029b\u2028c")), "a\nb\nc");
}

TEST(LineEnds, EveryBreakOpensOneParagraph) {
    EXPECT_EQ(WithParagraphs("a\r\nb\nc\rd\r\r\n\n"),
              QStringLiteral("a\u2029b\u2029c\u2029d\u2029\u2029\u2029"));
    EXPECT_EQ(WithParagraphs("\r"), QStringLiteral("\u2029"));
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
    EXPECT_EQ(OnOneLine(QStringLiteral("a\r\nb\nc\rd\u2028e\u2029f")), "a b c d e f");
}

} // namespace
} // namespace varlo

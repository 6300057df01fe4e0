#include "compose/WordBoundary.h"

#include "core/Literals.h"

#include <gtest/gtest.h>

namespace varlo {
namespace {

// What Ctrl+Backspace leaves of the text before the caret.
QString Left(const QString &text) {
    return text.first(WordStartBefore(text, text.size()));
}

TEST(WordBoundary, NothingGoesAtTheStartOfTheText) {
    EXPECT_EQ(WordStartBefore("word", 0), 0);
    EXPECT_EQ(WordStartBefore("", 0), 0);
}

TEST(WordBoundary, AWordGoesAndTheBlankBeforeItStays) {
    EXPECT_EQ(Left("one two"), "one ");
}

TEST(WordBoundary, BlanksBehindAWordGoWithIt) {
    EXPECT_EQ(Left("one two  \t"), "one ");
}

TEST(WordBoundary, OnlyTheStartOfAWordGoesWhenTheCaretIsInsideIt) {
    EXPECT_EQ(WordStartBefore("one twofold", 7), 4);
}

TEST(WordBoundary, BehindALineBreakOnlyTheLineBreakGoes) {
    EXPECT_EQ(Left("one\r\n"), "one");
    EXPECT_EQ(Left("one\n"), "one");
    EXPECT_EQ(Left("one\r\n\r\n"), "one\r\n");
    EXPECT_EQ(Left("\n"), "");
}

TEST(WordBoundary, BlanksThatBeginALineGoAlone) {
    EXPECT_EQ(Left("one\r\n   "), "one\r\n");
}

TEST(WordBoundary, AWordDoesNotReachOverTheLineBreak) {
    EXPECT_EQ(Left("one\r\ntwo "), "one\r\n");
}

TEST(WordBoundary, ARunOfPunctuationIsAWordOfItsOwn) {
    EXPECT_EQ(Left("wait..."), "wait");
    EXPECT_EQ(Left("a --- "), "a ");
}

TEST(WordBoundary, AnApostropheBelongsToItsWord) {
    EXPECT_EQ(Left("I don't"), "I ");
}

TEST(WordBoundary, AccentsAndCharactersOfTwoUnitsStayWhole) {
    EXPECT_EQ(Left(u"a cafe\u0301"_s), "a ");
    EXPECT_EQ(Left(QString::fromUtf8("a \xF0\x9F\x98\x80")), "a ");
}

} // namespace
} // namespace varlo

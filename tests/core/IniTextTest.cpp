#include "core/IniText.h"

#include "core/Literals.h"

#include <gtest/gtest.h>

namespace varlo::test {
namespace {

QString Text(const char *text) {
    return QString::fromUtf8(text);
}

// The value as the operator's program reads it; "(none)" when there is no such key.
QString Found(const QString &text, const char *section, const char *key) {
    return IniText::Find(text, Text(section), Text(key)).value_or(u"(none)"_s);
}

QString With(const char *text, const char *section, const char *key, const char *value) {
    return IniText::WithValue(Text(text), Text(section), Text(key), Text(value));
}

const QString kNone = u"(none)"_s;

TEST(IniTextFind, FindsAKeyInItsSection) {
    const QString text = Text("[A]\r\nx=1\r\n[B]\r\nx=2\r\ny=3\r\n");
    EXPECT_EQ(Found(text, "A", "x"), Text("1"));
    EXPECT_EQ(Found(text, "B", "x"), Text("2"));
    EXPECT_EQ(Found(text, "A", "y"), kNone);
    EXPECT_EQ(Found(text, "C", "x"), kNone);
}

TEST(IniTextFind, EmptyTextHasNoKeys) {
    EXPECT_EQ(Found(QString(), "A", "x"), kNone);
}

TEST(IniTextFind, LinesBeforeTheFirstSectionBelongToNone) {
    const QString text = Text("x=0\r\n[A]\r\nx=1\r\n");
    EXPECT_EQ(Found(text, "A", "x"), Text("1"));
    EXPECT_EQ(Found(text, "", "x"), kNone);
}

TEST(IniTextFind, NamesIgnoreLetterCase) {
    EXPECT_EQ(Found(Text("[GENERAL]\r\nnotify=1\r\n"), "General", "Notify"), Text("1"));
    EXPECT_EQ(Found(Text("[Über]\r\nÄ=1\r\n"), "ÜBER", "ä"), Text("1"));
}

TEST(IniTextFind, FirstOfTwoKeysWins) {
    EXPECT_EQ(Found(Text("[A]\r\nx=1\r\nX=2\r\n"), "A", "x"), Text("1"));
}

TEST(IniTextFind, FirstOfTwoSectionsWins) {
    const QString text = Text("[A]\r\nx=1\r\n[B]\r\n[a]\r\nx=2\r\ny=3\r\n");
    EXPECT_EQ(Found(text, "A", "x"), Text("1"));
    EXPECT_EQ(Found(text, "A", "y"), kNone);
}

TEST(IniTextKept, AValueIsPutInMarksOnlyWhereItWouldLoseSomething) {
    for (const char *plain : {"", "a", "a b", "it's", "\"", "'a\"", "\"a", "; no comment", "[a]=b"})
        EXPECT_EQ(IniText::Kept(Text(plain)), Text(plain));
    for (const char *odd : {" ", " a", "a ", "\ta", "\"a\"", "'a'", "\"\"", " 'a' ", "\"\"\""}) {
        EXPECT_EQ(IniText::Kept(Text(odd)), Text("\"") + Text(odd) + Text("\""));
        EXPECT_EQ(Found(With("", "A", "x", qUtf8Printable(IniText::Kept(Text(odd)))), "A", "x"), Text(odd));
    }
}

TEST(IniTextFind, BlanksAroundNamesAndValuesAreDropped) {
    EXPECT_EQ(Found(Text(" [ A ] \r\n \tx\t = \t1 2 \t\r\n"), "A", "x"), Text("1 2"));
}

TEST(IniTextFind, OnePairOfQuotationMarksIsDropped) {
    const QString text =
        Text("[A]\r\na=\" 1 \"\r\nb='2'\r\nc=\"\"3\"\"\r\nd=\"4'\r\ne=\"\r\nf=\"\"\r\ng=5\"6\r\n");
    EXPECT_EQ(Found(text, "A", "a"), Text(" 1 "));
    EXPECT_EQ(Found(text, "A", "b"), Text("2"));
    EXPECT_EQ(Found(text, "A", "c"), Text("\"3\""));
    EXPECT_EQ(Found(text, "A", "d"), Text("\"4'"));
    EXPECT_EQ(Found(text, "A", "e"), Text("\""));
    EXPECT_EQ(Found(text, "A", "f"), QString());
    EXPECT_EQ(Found(text, "A", "g"), Text("5\"6"));
}

TEST(IniTextFind, ValueKeepsEqualsSignsAndSemicolons) {
    EXPECT_EQ(Found(Text("[A]\r\nx=a=b;c\r\n"), "A", "x"), Text("a=b;c"));
}

TEST(IniTextFind, CommentsAndOtherLinesAreNoKeys) {
    const QString text = Text("[A]\r\n;x=1\r\n  ; x=2\r\nx\r\n\r\n=4\r\nx=5\r\n");
    EXPECT_EQ(Found(text, "A", "x"), Text("5"));
}

TEST(IniTextFind, EveryKindOfLineEndEndsALine) {
    const QString text = Text("[A]\nx=1\r\ny=2\nz=3");
    EXPECT_EQ(Found(text, "A", "x"), Text("1"));
    EXPECT_EQ(Found(text, "A", "y"), Text("2"));
    EXPECT_EQ(Found(text, "A", "z"), Text("3"));
}

TEST(IniTextFind, HeaderWithoutItsBracketIsNoHeader) {
    EXPECT_EQ(Found(Text("[A]\r\n[B\r\nx=1\r\n"), "A", "x"), Text("1"));
}

TEST(IniTextWithValue, EmptyTextGetsSectionAndKey) {
    EXPECT_EQ(With("", "A", "x", "1"), Text("[A]\r\nx=1\r\n"));
}

TEST(IniTextWithValue, ReplacesTheLineInItsPlace) {
    EXPECT_EQ(With("; head\r\n[A]\r\nw=0\r\n x = 1 \r\ny=2\r\n[B]\r\nx=3\r\n", "A", "x", "9"),
              Text("; head\r\n[A]\r\nw=0\r\nx=9\r\ny=2\r\n[B]\r\nx=3\r\n"));
}

TEST(IniTextWithValue, ReplacesTheFirstOfTwoKeys) {
    EXPECT_EQ(With("[A]\r\nx=1\r\nx=2\r\n", "A", "X", "9"), Text("[A]\r\nX=9\r\nx=2\r\n"));
}

TEST(IniTextWithValue, NewKeyGoesToTheEndOfItsSection) {
    EXPECT_EQ(With("[A]\r\nx=1\r\n[B]\r\ny=2\r\n", "A", "z", "9"),
              Text("[A]\r\nx=1\r\nz=9\r\n[B]\r\ny=2\r\n"));
}

TEST(IniTextWithValue, NewKeyGoesBeforeTheEmptyLinesBetweenSections) {
    EXPECT_EQ(With("[A]\r\nx=1\r\n\r\n \r\n[B]\r\ny=2\r\n", "A", "z", "9"),
              Text("[A]\r\nx=1\r\nz=9\r\n\r\n \r\n[B]\r\ny=2\r\n"));
}

TEST(IniTextWithValue, NewKeyOfAnEmptySectionFollowsItsHeader) {
    EXPECT_EQ(With("[A]\r\n\r\n[B]\r\n", "A", "z", "9"), Text("[A]\r\nz=9\r\n\r\n[B]\r\n"));
}

TEST(IniTextWithValue, NewSectionGoesToTheEnd) {
    EXPECT_EQ(With("[A]\r\nx=1\r\n", "B", "y", "2"), Text("[A]\r\nx=1\r\n[B]\r\ny=2\r\n"));
}

TEST(IniTextWithValue, LastLineWithoutAnEndGetsOneBeforeANewLine) {
    EXPECT_EQ(With("[A]\r\nx=1", "A", "y", "2"), Text("[A]\r\nx=1\r\ny=2\r\n"));
    EXPECT_EQ(With("[A]\r\nx=1", "B", "y", "2"), Text("[A]\r\nx=1\r\n[B]\r\ny=2\r\n"));
    EXPECT_EQ(With("[A]", "A", "y", "2"), Text("[A]\r\ny=2\r\n"));
}

TEST(IniTextWithValue, ReplacedLineKeepsItsOwnLineEnd) {
    EXPECT_EQ(With("[A]\nx=1\ny=2\r\nz=3", "A", "x", "9"), Text("[A]\nx=9\ny=2\r\nz=3"));
    EXPECT_EQ(With("[A]\nx=1\ny=2\r\nz=3", "A", "z", "9"), Text("[A]\nx=1\ny=2\r\nz=9"));
}

TEST(IniTextWithValue, EmptyValueKeepsTheKey) {
    EXPECT_EQ(With("[A]\r\nx=1\r\n", "A", "x", ""), Text("[A]\r\nx=\r\n"));
}

TEST(IniTextWithValue, CommentThatLooksLikeTheKeyIsKept) {
    EXPECT_EQ(With("[A]\r\n;x=1\r\n", "A", "x", "2"), Text("[A]\r\n;x=1\r\nx=2\r\n"));
}

TEST(IniTextWithoutKey, RemovesTheFirstOne) {
    EXPECT_EQ(IniText::WithoutKey(Text("[A]\r\nw=0\r\nx=1\r\nx=2\r\n"), Text("a"), Text("X")),
              Text("[A]\r\nw=0\r\nx=2\r\n"));
}

TEST(IniTextWithoutKey, MissingKeyChangesNothing) {
    const QString text = Text("; c\n[A]\r\nx=1\r\n\r\n[B]\ny=2");
    EXPECT_EQ(IniText::WithoutKey(text, Text("A"), Text("y")), text);
    EXPECT_EQ(IniText::WithoutKey(text, Text("C"), Text("x")), text);
}

TEST(IniTextWithoutSection, RemovesTheSectionWithAllItsLines) {
    EXPECT_EQ(IniText::WithoutSection(Text("; c\r\n[A]\r\nx=1\r\n; of a\r\n\r\n[B]\r\ny=2\r\n"), Text("a")),
              Text("; c\r\n[B]\r\ny=2\r\n"));
}

TEST(IniTextWithoutSection, RemovesTheLastSection) {
    EXPECT_EQ(IniText::WithoutSection(Text("[A]\r\nx=1\r\n[B]\r\ny=2"), Text("B")), Text("[A]\r\nx=1\r\n"));
}

TEST(IniTextWithoutSection, RemovesTheFirstOfTwo) {
    EXPECT_EQ(IniText::WithoutSection(Text("[A]\r\nx=1\r\n[B]\r\n[A]\r\nx=2\r\n"), Text("A")),
              Text("[B]\r\n[A]\r\nx=2\r\n"));
}

TEST(IniTextWithoutSection, MissingSectionChangesNothing) {
    const QString text = Text("; c\n[A]\r\nx=1");
    EXPECT_EQ(IniText::WithoutSection(text, Text("B")), text);
}

} // namespace
} // namespace varlo::test

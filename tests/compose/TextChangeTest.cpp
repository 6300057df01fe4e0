#include "compose/TextChange.h"

#include <gtest/gtest.h>

namespace varlo {
namespace {

TEST(TextChange, LeavesOutWhatBothBeginAndEndWith) {
    EXPECT_EQ(ChangeBetween("one two three", "one 2 three"), (TextChange{4, 3, "2"}));
}

TEST(TextChange, EqualTextsDifferInNothing) {
    EXPECT_EQ(ChangeBetween("same", "same"), (TextChange{4, 0, ""}));
    EXPECT_EQ(ChangeBetween("", ""), TextChange());
}

TEST(TextChange, AnInsertionAmongEqualCharactersIsCountedOnce) {
    EXPECT_EQ(ChangeBetween("aaa", "aaaaa"), (TextChange{3, 0, "aa"}));
    EXPECT_EQ(ChangeBetween("aaaaa", "aaa"), (TextChange{3, 2, ""}));
}

TEST(TextChange, FromAndToAnEmptyTextIsEverything) {
    EXPECT_EQ(ChangeBetween("", "all"), (TextChange{0, 0, "all"}));
    EXPECT_EQ(ChangeBetween("all", ""), (TextChange{0, 3, ""}));
}

TEST(TextChange, ACharacterOfTwoUnitsIsNeverSplit) {
    const QString smile = QString::fromUtf8("\xF0\x9F\x98\x80");
    const QString grin = QString::fromUtf8("\xF0\x9F\x98\x81"); // the same first unit
    EXPECT_EQ(ChangeBetween("a" + smile + "b", "a" + grin + "b"), (TextChange{1, 2, grin}));
    const QString car = QString::fromUtf8("\xF0\x9F\x9A\x80");
    const QString other = QString(QChar(car[0].unicode() + 1)) + car[1]; // the same second unit
    EXPECT_EQ(ChangeBetween("a" + car + "b", "a" + other + "b"), (TextChange{1, 2, other}));
}

TEST(TextChange, AppliedItGivesTheWayBack) {
    QString text = "one two three";
    const TextChange back = Apply({4, 3, "2"}, text);
    EXPECT_EQ(text, "one 2 three");
    EXPECT_EQ(back, (TextChange{4, 1, "two"}));
    Apply(back, text);
    EXPECT_EQ(text, "one two three");
}

} // namespace
} // namespace varlo

#include "history/Differences.h"

#include "core/Literals.h"

#include <gtest/gtest.h>

namespace varlo::History {
namespace {

QStringList Words(const char *text) {
    return QString::fromUtf8(text).split(u' ', Qt::SkipEmptyParts);
}

TEST(DifferencesTest, WhatCameAndWhatWentInTheirOrder) {
    const Differences differences = Between(Words("d a b c"), Words("z c b y"));
    EXPECT_EQ(differences.Added, Words("z y"));
    EXPECT_EQ(differences.Removed, Words("d a"));
}

TEST(DifferencesTest, OrderAloneIsNoDifference) {
    const Differences differences = Between(Words("a b c"), Words("c a b"));
    EXPECT_EQ(differences.Added + differences.Removed, QStringList());
}

TEST(DifferencesTest, RepeatedEntriesCountAsOftenAsTheyStandThere) {
    EXPECT_EQ(Between(Words("a"), Words("a a a")).Added, Words("a a"));
    EXPECT_EQ(Between(Words("a a"), Words("a")).Removed, Words("a"));
}

TEST(DifferencesTest, LetterCaseIsADifference) {
    EXPECT_EQ(Between(Words("a"), Words("A")).Added, Words("A"));
}

} // namespace
} // namespace varlo::History

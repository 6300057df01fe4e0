#include "core/AnsiText.h"

#include "core/Literals.h"

#include <gtest/gtest.h>

namespace varlo {
namespace {

TEST(AnsiText, WesternEuropeanTextKeepsEveryByte) {
    EXPECT_EQ(FromWindows1252("caf\xE9 \x80\x93\x81"), u"caf\u00E9 \u20AC\u201C\u0081"_s);
    EXPECT_EQ(FromWindows1252(QByteArray()), QString());
}

#ifdef Q_OS_WIN

TEST(AnsiText, AnOlderProgramsTextIsReadInTheCodePageOfItsSystem) {
    EXPECT_EQ(FromCodePage("\xCF\xF0\xE8\xE2\xE5\xF2", 1251), u"\u041F\u0440\u0438\u0432\u0435\u0442"_s);
    EXPECT_EQ(FromCodePage("\xB5lad", 1250), u"\u00B5lad"_s);
    EXPECT_EQ(FromCodePage("\x93\xFA\x96\x7B", 932), u"\u65E5\u672C"_s);
}

TEST(AnsiText, WhatDoesNotFitTheCodePageIsNotGuessed) {
    EXPECT_TRUE(FromCodePage("\x93", 932).isNull()); // the first half of a pair
}

#else

TEST(AnsiText, ASystemWithoutCodePagesReadsWesternEuropean) {
    EXPECT_EQ(FromAnsi("\x80"), u"\u20AC"_s);
    EXPECT_TRUE(FromCodePage("x", 1251).isNull());
}

#endif

} // namespace
} // namespace varlo

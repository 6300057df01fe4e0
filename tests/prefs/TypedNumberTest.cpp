#include "prefs/TypedNumber.h"

#include "core/RuntimeError.h"

#include <gtest/gtest.h>

namespace varlo::test {
namespace {

TEST(TypedNumberTest, IsAWholeNumberOf16Bits) {
    const auto outcome = [](const char *typed) {
        try {
            return static_cast<int>(TypedNumber(QString::fromUtf8(typed)));
        } catch (const RuntimeError &error) {
            return 100000 + error.Number();
        }
    };
    EXPECT_EQ(outcome("25"), 25);
    EXPECT_EQ(outcome(" 0072 "), 72);
    EXPECT_EQ(outcome("0"), 0);
    EXPECT_EQ(outcome("-32768"), -32768);
    EXPECT_EQ(outcome("+32767"), 32767);
    EXPECT_EQ(outcome("32768"), 100000 + Overflow);
    EXPECT_EQ(outcome("-32769"), 100000 + Overflow);
    EXPECT_EQ(outcome("99999999999999999999999999"), 100000 + Overflow);
    for (const char *text :
         {"", " ", "abc", "2.5", "1e3", "1,000", "0x19", "25 26", "--5", "٢٥", "nan", "inf"})
        EXPECT_EQ(outcome(text), 100000 + TypeMismatch) << text;
}

} // namespace
} // namespace varlo::test

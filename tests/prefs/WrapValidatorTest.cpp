#include "prefs/WrapValidator.h"

#include "core/Literals.h"
#include "support/Printers.h"

namespace varlo::test {
namespace {

QValidator::State StateOf(const char *typed) {
    QString text = QString::fromUtf8(typed);
    int position = 0;
    return WrapValidator().validate(text, position);
}

TEST(WrapValidatorTest, OnlyNumbersBelowOneAreToBeMended) {
    for (const char *typed : {"1", "72", "32767", "99999", "", "abc", "2.5", " 7 ", "-"})
        EXPECT_EQ(StateOf(typed), QValidator::Acceptable) << typed;
    for (const char *typed : {"0", "-1", " 0 ", "-32769", "000"})
        EXPECT_EQ(StateOf(typed), QValidator::Intermediate) << typed;
}

TEST(WrapValidatorTest, MendingGivesTheSmallestColumn) {
    QString text = u"-40"_s;
    WrapValidator().fixup(text);
    EXPECT_EQ(text, u"1"_s);
}

} // namespace
} // namespace varlo::test

#include "core/GlobalKeys.h"

#include "core/Literals.h"
#include "core/RuntimeError.h"
#include "core/TextFile.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace varlo::test {
namespace {

class GlobalKeysTest : public testing::Test {
protected:
    GlobalKeysTest() { ini_.SetFile(path_); }

    QTemporaryDir folder_;
    QString path_ = folder_.filePath(u"global.ini"_s);
    clsINIFile ini_;
};

TEST_F(GlobalKeysTest, MissingKeysReadAsNought) {
    EXPECT_EQ(ReadNumber(ini_, GlobalKeys::AutoStart), 0);
    EXPECT_EQ(ReadNumber(ini_, GlobalKeys::ProfileCurrent), 0);
    EXPECT_FALSE(QFile::exists(path_)) << "reading writes nothing";
}

TEST_F(GlobalKeysTest, ValuesReadBackAsWritten) {
    for (const int number : {std::numeric_limits<int>::min(), 0, 1, std::numeric_limits<int>::max()}) {
        WriteValue(ini_, GlobalKeys::ProfileCurrent, number);
        EXPECT_EQ(ReadNumber(ini_, GlobalKeys::ProfileCurrent), number);
    }
    WriteValue(ini_, GlobalKeys::AutoStart, 1);
    EXPECT_EQ(ReadFile(path_), QByteArray("[Profiles]\r\nProfileCurrent=2147483647\r\nAutoStart=1\r\n"));
}

TEST_F(GlobalKeysTest, ReadingAndWritingLeavesTheKeysSection) {
    ini_.SetSection(u"elsewhere"_s);
    (void)ReadNumber(ini_, GlobalKeys::AutoStart); // the section it leaves is looked at
    EXPECT_EQ(ini_.Section(), u"Profiles"_s);
}

TEST_F(GlobalKeysTest, DamagedNumbersAreReported) {
    WriteFile(path_, "[Profiles]\r\nAutoStart=yes\r\n");
    try {
        ReadNumber(ini_, GlobalKeys::AutoStart);
        ADD_FAILURE() << "no error";
    } catch (const RuntimeError &error) {
        EXPECT_EQ(error.Number(), TypeMismatch);
    }
}

} // namespace
} // namespace varlo::test

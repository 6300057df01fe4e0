#include "compose/Signature.h"

#include "core/RuntimeError.h"
#include "support/Printers.h"
#include "support/TestProfile.h"

#include <gtest/gtest.h>

namespace varlo {
namespace {

TEST(SignatureTest, EveryStoredLineBreakBecomesOne) {
    test::TestProfile profile;
    profile.Write(QStringLiteral("prefs.ini"), "[Signature]\r\nText=--\\nAnn\\n\\nTel. 1\r\n");
    EXPECT_EQ(LoadSignature(profile.session), QStringLiteral("--\r\nAnn\r\n\r\nTel. 1"));
}

TEST(SignatureTest, AProfileWithoutOneHasAnEmptySignature) {
    test::TestProfile profile;
    EXPECT_EQ(LoadSignature(profile.session), QString());
}

TEST(SignatureTest, KeepsLettersOutsideAscii) {
    test::TestProfile profile;
    profile.Write(QStringLiteral("prefs.ini"), "[Signature]\r\nText=Gr\xC3\xBC\xC3\x9F"
                                               "e\\n\xE6\x97\xA5\r\n");
    EXPECT_EQ(LoadSignature(profile.session), QStringLiteral("Grüße\r\n日"));
}

TEST(SignatureTest, ABackslashBeforeAnotherLetterStays) {
    test::TestProfile profile;
    profile.Write(QStringLiteral("prefs.ini"), "[Signature]\r\nText=C:\\temp\\N\r\n");
    EXPECT_EQ(LoadSignature(profile.session), QStringLiteral("C:\\temp\\N"));
}

TEST(SignatureTest, IsAddedUnlessTheSettingSaysOtherwise) {
    test::TestProfile profile;
    EXPECT_TRUE(AutoAddSignature(profile.session));
    profile.Write(QStringLiteral("prefs.ini"), "[Signature]\r\nAutoAdd=0\r\n");
    EXPECT_FALSE(AutoAddSignature(profile.session));
    profile.Write(QStringLiteral("prefs.ini"), "[Signature]\r\nAutoAdd=1\r\n");
    EXPECT_TRUE(AutoAddSignature(profile.session));
}

TEST(SignatureTest, ASettingThatIsNoNumberIsATypeMismatch) {
    test::TestProfile profile;
    profile.Write(QStringLiteral("prefs.ini"), "[Signature]\r\nAutoAdd=yes\r\n");
    try {
        AutoAddSignature(profile.session);
        FAIL() << "nothing thrown";
    } catch (const RuntimeError &error) {
        EXPECT_EQ(error.Number(), 13);
    }
}

TEST(SignatureTest, ANewMessageBeginsWithAnEmptyLineAboveTheSignature) {
    EXPECT_EQ(InitialBody(QStringLiteral("Ann"), true), QStringLiteral("\r\nAnn"));
    EXPECT_EQ(InitialBody(QStringLiteral("Ann"), false), QString());
    EXPECT_EQ(InitialBody(QString(), true), QString());
}

TEST(SignatureTest, TheSignedBodyHasItsBreakEvenWithoutASignature) {
    EXPECT_EQ(SignedBody(QStringLiteral("Ann")), QStringLiteral("\r\nAnn"));
    EXPECT_EQ(SignedBody(QString()), QStringLiteral("\r\n"));
}

} // namespace
} // namespace varlo

#include "compose/Signature.h"

#include "core/Literals.h"
#include "core/RuntimeError.h"
#include "support/Printers.h"
#include "support/TestProfile.h"

#include <gtest/gtest.h>

namespace varlo {
namespace {

TEST(SignatureTest, EveryStoredLineBreakBecomesOne) {
    test::TestProfile profile;
    profile.Write(u"prefs.ini"_s, "[Signature]\r\nText=--\\nAnn\\n\\nTel. 1\r\n");
    EXPECT_EQ(LoadSignature(profile.session), u"--\r\nAnn\r\n\r\nTel. 1"_s);
}

TEST(SignatureTest, AProfileWithoutOneHasAnEmptySignature) {
    test::TestProfile profile;
    EXPECT_EQ(LoadSignature(profile.session), QString());
}

TEST(SignatureTest, KeepsLettersOutsideAscii) {
    test::TestProfile profile;
    profile.Write(u"prefs.ini"_s, "[Signature]\r\nText=Gr\xC3\xBC\xC3\x9F"
                                  "e\\n\xE6\x97\xA5\r\n");
    EXPECT_EQ(LoadSignature(profile.session), u"Grüße\r\n日"_s);
}

TEST(SignatureTest, ABackslashBeforeAnotherLetterStays) {
    test::TestProfile profile;
    profile.Write(u"prefs.ini"_s, "[Signature]\r\nText=C:\\temp\\N\r\n");
    EXPECT_EQ(LoadSignature(profile.session), u"C:\\temp\\N"_s);
}

TEST(SignatureTest, IsAddedUnlessTheSettingSaysOtherwise) {
    test::TestProfile profile;
    EXPECT_TRUE(AutoAddSignature(profile.session));
    profile.Write(u"prefs.ini"_s, "[Signature]\r\nAutoAdd=0\r\n");
    EXPECT_FALSE(AutoAddSignature(profile.session));
    profile.Write(u"prefs.ini"_s, "[Signature]\r\nAutoAdd=1\r\n");
    EXPECT_TRUE(AutoAddSignature(profile.session));
}

TEST(SignatureTest, ASettingThatIsNoNumberIsATypeMismatch) {
    test::TestProfile profile;
    profile.Write(u"prefs.ini"_s, "[Signature]\r\nAutoAdd=yes\r\n");
    try {
        AutoAddSignature(profile.session);
        FAIL() << "nothing thrown";
    } catch (const RuntimeError &error) {
        EXPECT_EQ(error.Number(), 13);
    }
}

TEST(SignatureTest, ANewMessageBeginsWithAnEmptyLineAboveTheSignature) {
    EXPECT_EQ(InitialBody(u"Ann"_s, true), u"\r\nAnn"_s);
    EXPECT_EQ(InitialBody(u"Ann"_s, false), QString());
    EXPECT_EQ(InitialBody(QString(), true), QString());
}

TEST(SignatureTest, TheSignedBodyHasItsBreakEvenWithoutASignature) {
    EXPECT_EQ(SignedBody(u"Ann"_s), u"\r\nAnn"_s);
    EXPECT_EQ(SignedBody(QString()), u"\r\n"_s);
}

} // namespace
} // namespace varlo

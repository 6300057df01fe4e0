#include "core/PreferenceKeys.h"

#include "core/Literals.h"
#include "core/RuntimeError.h"
#include "core/TextFile.h"
#include "support/ErrorOf.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace varlo::test {
namespace {

QString Row(const PreferenceKey &key) {
    const char *types[] = {"text", "16-bit", "32-bit", "truth"};
    return u"%1/%2 %3 [%4]"_s.arg(QString::fromLatin1(key.Section), QString::fromLatin1(key.Key),
                                  QString::fromLatin1(types[static_cast<int>(key.Type)]),
                                  QString::fromLatin1(key.Default));
}

class PreferenceKeysTest : public testing::Test {
protected:
    PreferenceKeysTest() { ini_.SetFile(path_); }
    void Put(const QByteArray &bytes) { WriteFile(path_, bytes); }

    QTemporaryDir folder_;
    QString path_ = folder_.filePath(u"prefs.ini"_s);
    clsINIFile ini_;
};

TEST_F(PreferenceKeysTest, TableIsWhole) {
    QStringList rows;
    for (const PreferenceKey &key : AllPreferenceKeys())
        rows << Row(key);
    const QStringList expected{
        u"General/Notify 32-bit [0]"_s,
        u"General/LogStatus 32-bit [1]"_s,
        u"Main/LogStatus 32-bit [1]"_s,
        u"General/LogEmails 32-bit [1]"_s,
        u"SMTP/SMTPServer text []"_s,
        u"SMTP/SMTPPort 16-bit [25]"_s,
        u"SMTP/SMTPFrom text []"_s,
        u"SMTP/SMTPEmail text []"_s,
        u"SMTP/SMTPWrap 16-bit [72]"_s,
        u"POP3/POPServer text []"_s,
        u"POP3/POPPort text [110]"_s,
        u"POP3/POPUsername text []"_s,
        u"POP3/POPPassword text []"_s,
        u"POP3/POPDeleteAll 32-bit [0]"_s,
        u"Notify/SubSubject text [Mailing list subscription notification]"_s,
        u"Notify/SubBody text [Your e-mail address has been subscribed to our mailing list.]"_s,
        u"Notify/UnsubSubject text [Mailing list unsubscription notification]"_s,
        u"Notify/UnsubBody text [Your e-mail address has been unsubscribed from our mailing list.]"_s,
        u"Signature/Text text []"_s,
        u"Signature/AutoAdd 32-bit [1]"_s,
        u"Signature/AutoAdd 32-bit [0]"_s,
        u"Main/AlwaysOnTop truth [False]"_s,
        u"Main/BypassPending 32-bit [0]"_s,
        u"Main/ListCurrent 16-bit [0]"_s,
        u"Main/ListSortBy 32-bit [1]"_s,
    };
    EXPECT_EQ(rows, expected);
    EXPECT_EQ(Row(GlobalKeys::AutoStart), u"Profiles/AutoStart 32-bit [0]"_s);
    EXPECT_EQ(Row(GlobalKeys::ProfileCurrent), u"Profiles/ProfileCurrent 32-bit [0]"_s);
}

TEST_F(PreferenceKeysTest, MissingKeysReadAsTheirDefaults) {
    for (const PreferenceKey &key : AllPreferenceKeys()) {
        const QString defaultText = QString::fromLatin1(key.Default);
        EXPECT_EQ(ReadText(ini_, key), defaultText) << key.Key;
        if (key.Type == ValueType::Whole16 || key.Type == ValueType::Whole32) {
            EXPECT_EQ(ReadNumber(ini_, key), defaultText.toInt()) << key.Key;
        }
        if (key.Type == ValueType::Truth) {
            EXPECT_FALSE(ReadTruth(ini_, key)) << key.Key;
        }
    }
    EXPECT_FALSE(QFile::exists(path_)) << "reading writes nothing";
}

TEST_F(PreferenceKeysTest, EveryKeyReadsBackAsWritten) {
    for (const PreferenceKey &key : AllPreferenceKeys()) {
        switch (key.Type) {
        case ValueType::Text:
            WriteValue(ini_, key, u"caf\u00E9 = [x]; %1"_s.arg(QString::fromLatin1(key.Key)));
            EXPECT_EQ(ReadText(ini_, key), u"caf\u00E9 = [x]; %1"_s.arg(QString::fromLatin1(key.Key)));
            break;
        case ValueType::Whole16:
            for (const int number : {-32768, 0, 1, 32767}) {
                WriteValue(ini_, key, number);
                EXPECT_EQ(ReadNumber(ini_, key), number) << key.Key;
            }
            break;
        case ValueType::Whole32:
            for (const int number :
                 {std::numeric_limits<int>::min(), 0, 1, std::numeric_limits<int>::max()}) {
                WriteValue(ini_, key, number);
                EXPECT_EQ(ReadNumber(ini_, key), number) << key.Key;
            }
            break;
        case ValueType::Truth:
            for (const bool truth : {true, false}) {
                WriteValue(ini_, key, truth);
                EXPECT_EQ(ReadTruth(ini_, key), truth) << key.Key;
            }
            break;
        }
    }
}

TEST_F(PreferenceKeysTest, ReadingAndWritingLeavesTheKeysSection) {
    ini_.SetSection(u"elsewhere"_s);
    (void)ReadText(ini_, Keys::SMTPServer); // the section it leaves is looked at
    EXPECT_EQ(ini_.Section(), u"SMTP"_s);
    WriteValue(ini_, Keys::AlwaysOnTop, true);
    EXPECT_EQ(ini_.Section(), u"Main"_s);
}

TEST_F(PreferenceKeysTest, LogStatusOfTheStartIsAnotherKeyThanThatOfThePreferences) {
    WriteValue(ini_, Keys::LogStatus, 0);
    EXPECT_EQ(ReadNumber(ini_, Keys::LogStatus), 0);
    EXPECT_EQ(ReadNumber(ini_, Keys::LogStatusAtStart), 1);
    Put("[Main]\r\nLogStatus=0\r\n");
    EXPECT_EQ(ReadNumber(ini_, Keys::LogStatus), 1);
    EXPECT_EQ(ReadNumber(ini_, Keys::LogStatusAtStart), 0);
}

TEST_F(PreferenceKeysTest, UnsavedAutoAddIsOnWhenComposingAndUntickedInThePreferences) {
    EXPECT_EQ(ReadNumber(ini_, Keys::SignatureAutoAdd), 1);
    EXPECT_EQ(ReadNumber(ini_, Keys::SignatureAutoAddInPreferences), 0);
    WriteValue(ini_, Keys::SignatureAutoAddInPreferences, 1);
    EXPECT_EQ(ReadNumber(ini_, Keys::SignatureAutoAdd), 1);
    EXPECT_EQ(ReadNumber(ini_, Keys::SignatureAutoAddInPreferences), 1);
    WriteValue(ini_, Keys::SignatureAutoAddInPreferences, 0);
    EXPECT_EQ(ReadNumber(ini_, Keys::SignatureAutoAdd), 0);
    EXPECT_EQ(ReadNumber(ini_, Keys::SignatureAutoAddInPreferences), 0);
}

TEST_F(PreferenceKeysTest, DamagedNumbersAreReported) {
    Put("[SMTP]\r\nSMTPPort=many\r\nSMTPWrap=32768\r\n[General]\r\nNotify=2147483648\r\n");
    EXPECT_EQ(ErrorOf([&] { ReadNumber(ini_, Keys::SMTPPort); }), TypeMismatch);
    EXPECT_EQ(ErrorOf([&] { ReadNumber(ini_, Keys::SMTPWrap); }), Overflow);
    EXPECT_EQ(ErrorOf([&] { ReadNumber(ini_, Keys::Notify); }), Overflow);
}

TEST_F(PreferenceKeysTest, EmptyNumberReadsAsItsDefault) {
    Put("[SMTP]\r\nSMTPPort=\r\n");
    EXPECT_EQ(ReadNumber(ini_, Keys::SMTPPort), 25);
}

TEST_F(PreferenceKeysTest, TruthIsReadInAnyLetterCaseOrAsANumber) {
    const std::pair<const char *, bool> cases[] = {{"True", true}, {"FALSE", false}, {"true", true},
                                                   {"0", false},   {"1", true},      {"-1", true}};
    for (const auto &[text, truth] : cases) {
        Put(QByteArray("[Main]\r\nAlwaysOnTop=") + text);
        EXPECT_EQ(ReadTruth(ini_, Keys::AlwaysOnTop), truth) << text;
    }
    Put("[Main]\r\nAlwaysOnTop=perhaps\r\n");
    EXPECT_EQ(ErrorOf([&] { ReadTruth(ini_, Keys::AlwaysOnTop); }), TypeMismatch);
}

TEST(ToNumber, ReadsDecimalText) {
    EXPECT_EQ(ToNumber(u" 25 "_s, ValueType::Whole16), 25);
    EXPECT_EQ(ToNumber(u"-32768"_s, ValueType::Whole16), -32768);
    EXPECT_EQ(ToNumber(u"+7"_s, ValueType::Whole32), 7);
    EXPECT_EQ(ToNumber(u"1e3"_s, ValueType::Whole32), 1000);
}

TEST(ToNumber, RoundsHalvesToTheEvenNeighbour) {
    EXPECT_EQ(ToNumber(u"0.5"_s, ValueType::Whole16), 0);
    EXPECT_EQ(ToNumber(u"1.5"_s, ValueType::Whole16), 2);
    EXPECT_EQ(ToNumber(u"2.5"_s, ValueType::Whole16), 2);
    EXPECT_EQ(ToNumber(u"32767.4"_s, ValueType::Whole16), 32767);
}

TEST(ToNumber, RefusesWhatIsNoNumber) {
    for (const char *text : {"", " ", "x", "12abc", "0x10", "nan", "1 2", "--1"})
        EXPECT_EQ(ErrorOf([&] { ToNumber(QString::fromLatin1(text), ValueType::Whole32); }), TypeMismatch)
            << text;
}

TEST(ToNumber, RefusesWhatDoesNotFit) {
    for (const char *text : {"32768", "-32769", "32767.5", "1e300", "inf"})
        EXPECT_EQ(ErrorOf([&] { ToNumber(QString::fromLatin1(text), ValueType::Whole16); }), Overflow)
            << text;
    for (const char *text : {"2147483648", "-2147483649", "1e300"})
        EXPECT_EQ(ErrorOf([&] { ToNumber(QString::fromLatin1(text), ValueType::Whole32); }), Overflow)
            << text;
    EXPECT_EQ(ToNumber(u"32768"_s, ValueType::Whole32), 32768);
}

TEST(OneLine, MultiLineTextsStandOnOneLine) {
    EXPECT_EQ(ToOneLine(u"a\r\n\r\nb"_s), u"a\\n\\nb"_s);
    EXPECT_EQ(FromOneLine(u"a\\n\\nb"_s), u"a\r\n\r\nb"_s);
    EXPECT_EQ(ToOneLine(QString()), QString());
    EXPECT_EQ(FromOneLine(u"plain"_s), u"plain"_s);
}

TEST_F(PreferenceKeysTest, SignatureOfSeveralLinesSurvivesTheFile) {
    const QString signature = u"-- \r\nVarlo\r\n  tel. 123"_s;
    WriteValue(ini_, Keys::SignatureText, ToOneLine(signature));
    EXPECT_EQ(ReadFile(path_), QByteArray("[Signature]\r\nText=-- \\nVarlo\\n  tel. 123\r\n"));
    EXPECT_EQ(FromOneLine(ReadText(ini_, Keys::SignatureText)), signature);
}

} // namespace
} // namespace varlo::test

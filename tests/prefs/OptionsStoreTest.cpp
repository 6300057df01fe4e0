#include "prefs/OptionsStore.h"

#include "core/Literals.h"
#include "core/PreferenceKeys.h"
#include "core/RuntimeError.h"
#include "support/TestProfile.h"

namespace varlo::test {
namespace {

struct OptionsStoreTest : testing::Test {
    TestProfile Profile;
    Session &session = Profile.session;

    // The number of the error that saving ends with, 0 for none.
    int SaveError(const Options &options) {
        try {
            SaveOptions(session, options);
        } catch (const RuntimeError &error) {
            return error.Number();
        }
        return 0;
    }
};

Options Sample() {
    Options options;
    options.Notify = true;
    options.LogStatus = false;
    options.LogEmails = false;
    options.SMTPServer = u"smtp.example.org"_s;
    options.SMTPPort = u"587"_s;
    options.SMTPFrom = u"Jörg Ñandú 漢"_s;
    options.SMTPEmail = u"joerg@example.org"_s;
    options.SMTPWrap = u"64"_s;
    options.POPServer = u"pop.example.org"_s;
    options.POPPort = u"no number at all"_s;
    options.POPUsername = u"lists"_s;
    options.POPPassword = u"pä$$=;[word]"_s;
    options.POPDeleteAll = true;
    options.SubSubject = u"Welcome <b>you</b>"_s;
    options.SubBody = u"First\r\nsecond\r\n"_s;
    options.UnsubSubject = u"Good bye"_s;
    options.UnsubBody = u"Häufig\r\n\r\nゑ"_s;
    options.SignatureOn = true;
    options.Signature = u"--\r\nJörg"_s;
    return options;
}

const char kSampleFile[] = "[General]\r\nLogStatus=0\r\nLogEmails=0\r\nNotify=1\r\n"
                           "[SMTP]\r\nSMTPServer=smtp.example.org\r\nSMTPPort=587\r\n"
                           "SMTPFrom=Jörg Ñandú 漢\r\nSMTPEmail=joerg@example.org\r\nSMTPWrap=64\r\n"
                           "[POP3]\r\nPOPServer=pop.example.org\r\nPOPPort=no number at all\r\n"
                           "POPUsername=lists\r\nPOPPassword=pä$$=;[word]\r\nPOPDeleteAll=1\r\n"
                           "[Notify]\r\nSubSubject=Welcome <b>you</b>\r\nSubBody=First\\nsecond\\n\r\n"
                           "UnsubSubject=Good bye\r\nUnsubBody=Häufig\\n\\nゑ\r\n"
                           "[Signature]\r\nAutoAdd=1\r\nText=--\\nJörg\r\n";

const char kGeneralOnly[] = "[General]\r\nLogStatus=0\r\nLogEmails=0\r\nNotify=1\r\n";

TEST_F(OptionsStoreTest, SaveWritesEveryKeyInItsOrder) {
    SaveOptions(session, Sample());
    EXPECT_EQ(Profile.Read(u"prefs.ini"_s), QByteArray(kSampleFile));
}

TEST_F(OptionsStoreTest, SaveSetsTheCopiesInMemory) {
    SaveOptions(session, Sample());
    const Preferences &prefs = session.Prefs;
    EXPECT_EQ(prefs.Notify, 1);
    EXPECT_EQ(prefs.LogStatus, 0);
    EXPECT_EQ(prefs.SMTPServer, u"smtp.example.org"_s);
    EXPECT_EQ(prefs.SMTPPort, 587);
    EXPECT_EQ(prefs.SMTPFrom, u"Jörg Ñandú 漢"_s);
    EXPECT_EQ(prefs.SMTPEmail, u"joerg@example.org"_s);
    EXPECT_EQ(prefs.SMTPWrap, 64);
    EXPECT_EQ(prefs.SubSubject, u"Welcome <b>you</b>"_s);
    EXPECT_EQ(prefs.SubBody, u"First\\nsecond\\n"_s);
    EXPECT_EQ(prefs.UnsubSubject, u"Good bye"_s);
    EXPECT_EQ(prefs.UnsubBody, u"Häufig\\n\\nゑ"_s);
}

TEST_F(OptionsStoreTest, WhatWasSavedIsLoadedAgain) {
    SaveOptions(session, Sample());
    EXPECT_TRUE(LoadOptions(session) == Sample());
    EXPECT_TRUE(Profile.Boxes.Shown.empty());
}

TEST_F(OptionsStoreTest, NewProfileLoadsTheDefaults) {
    Options expected;
    expected.SMTPPort = u"25"_s;
    expected.SMTPWrap = u"72"_s;
    expected.POPPort = u"110"_s;
    EXPECT_TRUE(LoadOptions(session) == expected);
    EXPECT_FALSE(QFile::exists(Profile.Path(u"prefs.ini"_s))) << "loading stored something";
}

TEST_F(OptionsStoreTest, StatusLoggingIsReadFromTheGeneralSectionNotFromMain) {
    Profile.Write(u"prefs.ini"_s, "[Main]\r\nLogStatus=1\r\n[General]\r\nLogStatus=0\r\n");
    session.Prefs.LogStatus = 1;
    EXPECT_FALSE(LoadOptions(session).LogStatus);
}

TEST_F(OptionsStoreTest, SettingsWithACopyInMemoryComeFromThere) {
    Profile.Write(u"prefs.ini"_s,
                  "[General]\r\nNotify=0\r\n[SMTP]\r\nSMTPServer=old.example.org\r\nSMTPPort=1\r\n");
    session.Prefs.Notify = 1;
    session.Prefs.SMTPServer = u"new.example.org"_s;
    session.Prefs.SMTPPort = 2525;
    const Options options = LoadOptions(session);
    EXPECT_TRUE(options.Notify);
    EXPECT_EQ(options.SMTPServer, u"new.example.org"_s);
    EXPECT_EQ(options.SMTPPort, u"2525"_s);
}

TEST_F(OptionsStoreTest, SwitchThatIsNoNumberIsReportedAndTheRestIsLoaded) {
    Profile.Write(
        u"prefs.ini"_s,
        "[General]\r\nLogStatus=maybe\r\nLogEmails=0\r\n[POP3]\r\nPOPServer=pop\r\nPOPDeleteAll=x\r\n"
        "[Signature]\r\nText=a\\nb\r\n");
    const Options options = LoadOptions(session);
    EXPECT_TRUE(options.LogStatus);
    EXPECT_FALSE(options.LogEmails);
    EXPECT_EQ(options.POPServer, u"pop"_s);
    EXPECT_FALSE(options.POPDeleteAll);
    EXPECT_EQ(options.Signature, u"a\r\nb"_s);
    ASSERT_EQ(Profile.Boxes.Shown.size(), 2U);
    EXPECT_EQ(Profile.Boxes.Shown[0].Title, u"varlo-pro Error 13 in Prefs.Load"_s);
    EXPECT_EQ(Profile.Boxes.Shown[1].Title, u"varlo-pro Error 13 in Prefs.Load"_s);
    EXPECT_EQ(Profile.Log(u"ErrorLog.txt"_s).size(), 2);
}

TEST_F(OptionsStoreTest, SwitchesOtherThanOneAreOffAsEverywhereInTheProgram) {
    Profile.Write(u"prefs.ini"_s, "[General]\r\nLogStatus=2\r\nLogEmails=-1\r\n");
    session.Prefs.Notify = 7;
    const Options options = LoadOptions(session);
    EXPECT_FALSE(options.LogStatus);
    EXPECT_FALSE(options.LogEmails);
    EXPECT_FALSE(options.Notify);
}

TEST_F(OptionsStoreTest, SmtpPortThatIsNoNumberLeavesTheGeneralSectionStored) {
    session.Prefs.SMTPPort = 25;
    Options options = Sample();
    options.SMTPPort = u"smtp"_s;
    EXPECT_EQ(SaveError(options), TypeMismatch);
    EXPECT_EQ(Profile.Read(u"prefs.ini"_s), QByteArray(kGeneralOnly));
    EXPECT_EQ(session.Prefs.Notify, 1);
    EXPECT_EQ(session.Prefs.LogStatus, 0);
    EXPECT_EQ(session.Prefs.SMTPServer, u"smtp.example.org"_s) << "set before the port";
    EXPECT_EQ(session.Prefs.SMTPPort, 25);
    EXPECT_EQ(session.Prefs.SMTPFrom, QString()) << "comes after the port";
}

TEST_F(OptionsStoreTest, WrapColumnPast16BitsLeavesTheGeneralSectionStored) {
    Options options = Sample();
    options.SMTPWrap = u"32768"_s;
    EXPECT_EQ(SaveError(options), Overflow);
    EXPECT_EQ(Profile.Read(u"prefs.ini"_s), QByteArray(kGeneralOnly));
    EXPECT_EQ(session.Prefs.SMTPEmail, u"joerg@example.org"_s) << "set before the column";
    EXPECT_EQ(session.Prefs.SMTPWrap, 72);
    EXPECT_EQ(session.Prefs.SubSubject, QString()) << "comes after the column";
}

TEST_F(OptionsStoreTest, TypedNumbersAreWholeNumbersOf16Bits) {
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

TEST_F(OptionsStoreTest, EmptyFieldsAreStoredAsEmptyWithoutAQuestion) {
    Options options;
    options.SMTPPort = u"25"_s;
    options.SMTPWrap = u"72"_s;
    SaveOptions(session, options);
    const QByteArray file = Profile.Read(u"prefs.ini"_s);
    EXPECT_TRUE(file.contains("SMTPServer=\r\n"));
    EXPECT_TRUE(file.contains("POPPort=\r\n"));
    EXPECT_TRUE(file.contains("SubBody=\r\n"));
    EXPECT_TRUE(Profile.Boxes.Shown.empty());
    EXPECT_EQ(LoadOptions(session).POPPort, u"110"_s) << "an empty value reads as the default";
}

TEST_F(OptionsStoreTest, RangesAreNotChecked) {
    Options options = Sample();
    options.SMTPPort = u"-1"_s;
    options.SMTPWrap = u"0"_s;
    EXPECT_EQ(SaveError(options), 0);
    EXPECT_EQ(session.Prefs.SMTPPort, -1);
    EXPECT_EQ(session.Prefs.SMTPWrap, 0);
}

TEST_F(OptionsStoreTest, OtherKeysAndCommentsOfTheFileStay) {
    Profile.Write(u"prefs.ini"_s,
                  "; mine\r\n[Main]\r\nListCurrent=3\r\n[General]\r\nColour=red\r\nNotify=0\r\n");
    SaveOptions(session, Sample());
    EXPECT_TRUE(Profile.Read(u"prefs.ini"_s)
                    .startsWith("; mine\r\n[Main]\r\nListCurrent=3\r\n[General]\r\nColour=red\r\nNotify=1\r\n"
                                "LogStatus=0\r\nLogEmails=0\r\n[SMTP]\r\n"));
}

TEST_F(OptionsStoreTest, FileThatCannotBeWrittenGoesUnnoticedAndTheMemoryCounts) {
    session.INI.SetFile(Profile.Path(u"no such folder/prefs.ini"_s));
    EXPECT_EQ(SaveError(Sample()), 0);
    EXPECT_EQ(session.Prefs.SMTPPort, 587);
    EXPECT_TRUE(Profile.Boxes.Shown.empty());
}

TEST_F(OptionsStoreTest, LineBreaksCannotAddAKey) {
    Options options = Sample();
    options.SMTPFrom = u"Eve\r\nPOPPassword=stolen\n[Main]"_s;
    SaveOptions(session, options);
    EXPECT_TRUE(Profile.Read(u"prefs.ini"_s).contains("SMTPFrom=Eve POPPassword=stolen [Main]\r\n"));
}

TEST_F(OptionsStoreTest, PasswordFileIsReadableByItsOwnerOnly) {
    SaveOptions(session, Sample());
    const auto others =
        QFileDevice::ReadGroup | QFileDevice::ReadOther | QFileDevice::WriteGroup | QFileDevice::WriteOther;
    EXPECT_EQ(QFile::permissions(Profile.Path(u"prefs.ini"_s)) & others, QFileDevice::Permissions());
}

} // namespace
} // namespace varlo::test

#include "prefs/OptionsStore.h"

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
    options.SMTPServer = QStringLiteral("smtp.example.org");
    options.SMTPPort = QStringLiteral("587");
    options.SMTPFrom = QStringLiteral("Jörg Ñandú 漢");
    options.SMTPEmail = QStringLiteral("joerg@example.org");
    options.SMTPWrap = QStringLiteral("64");
    options.POPServer = QStringLiteral("pop.example.org");
    options.POPPort = QStringLiteral("no number at all");
    options.POPUsername = QStringLiteral("lists");
    options.POPPassword = QStringLiteral("pä$$=;[word]");
    options.POPDeleteAll = true;
    options.SubSubject = QStringLiteral("Welcome <b>you</b>");
    options.SubBody = QStringLiteral("First\r\nsecond\r\n");
    options.UnsubSubject = QStringLiteral("Good bye");
    options.UnsubBody = QStringLiteral("Häufig\r\n\r\nゑ");
    options.SignatureOn = true;
    options.Signature = QStringLiteral("--\r\nJörg");
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
    EXPECT_EQ(Profile.Read(QStringLiteral("prefs.ini")), QByteArray(kSampleFile));
}

TEST_F(OptionsStoreTest, SaveSetsTheCopiesInMemory) {
    SaveOptions(session, Sample());
    const Preferences &prefs = session.Prefs;
    EXPECT_EQ(prefs.Notify, 1);
    EXPECT_EQ(prefs.LogStatus, 0);
    EXPECT_EQ(prefs.SMTPServer, QStringLiteral("smtp.example.org"));
    EXPECT_EQ(prefs.SMTPPort, 587);
    EXPECT_EQ(prefs.SMTPFrom, QStringLiteral("Jörg Ñandú 漢"));
    EXPECT_EQ(prefs.SMTPEmail, QStringLiteral("joerg@example.org"));
    EXPECT_EQ(prefs.SMTPWrap, 64);
    EXPECT_EQ(prefs.SubSubject, QStringLiteral("Welcome <b>you</b>"));
    EXPECT_EQ(prefs.SubBody, QStringLiteral("First\\nsecond\\n"));
    EXPECT_EQ(prefs.UnsubSubject, QStringLiteral("Good bye"));
    EXPECT_EQ(prefs.UnsubBody, QStringLiteral("Häufig\\n\\nゑ"));
}

TEST_F(OptionsStoreTest, WhatWasSavedIsLoadedAgain) {
    SaveOptions(session, Sample());
    EXPECT_TRUE(LoadOptions(session) == Sample());
    EXPECT_TRUE(Profile.Boxes.Shown.empty());
}

TEST_F(OptionsStoreTest, NewProfileLoadsTheDefaults) {
    Options expected;
    expected.SMTPPort = QStringLiteral("25");
    expected.SMTPWrap = QStringLiteral("72");
    expected.POPPort = QStringLiteral("110");
    EXPECT_TRUE(LoadOptions(session) == expected);
    EXPECT_FALSE(QFile::exists(Profile.Path(QStringLiteral("prefs.ini")))) << "loading stored something";
}

TEST_F(OptionsStoreTest, StatusLoggingIsReadFromTheGeneralSectionNotFromMain) {
    Profile.Write(QStringLiteral("prefs.ini"), "[Main]\r\nLogStatus=1\r\n[General]\r\nLogStatus=0\r\n");
    session.Prefs.LogStatus = 1;
    EXPECT_FALSE(LoadOptions(session).LogStatus);
}

TEST_F(OptionsStoreTest, SettingsWithACopyInMemoryComeFromThere) {
    Profile.Write(QStringLiteral("prefs.ini"),
                  "[General]\r\nNotify=0\r\n[SMTP]\r\nSMTPServer=old.example.org\r\nSMTPPort=1\r\n");
    session.Prefs.Notify = 1;
    session.Prefs.SMTPServer = QStringLiteral("new.example.org");
    session.Prefs.SMTPPort = 2525;
    const Options options = LoadOptions(session);
    EXPECT_TRUE(options.Notify);
    EXPECT_EQ(options.SMTPServer, QStringLiteral("new.example.org"));
    EXPECT_EQ(options.SMTPPort, QStringLiteral("2525"));
}

TEST_F(OptionsStoreTest, SwitchThatIsNoNumberIsReportedAndTheRestIsLoaded) {
    Profile.Write(
        QStringLiteral("prefs.ini"),
        "[General]\r\nLogStatus=maybe\r\nLogEmails=0\r\n[POP3]\r\nPOPServer=pop\r\nPOPDeleteAll=x\r\n"
        "[Signature]\r\nText=a\\nb\r\n");
    const Options options = LoadOptions(session);
    EXPECT_TRUE(options.LogStatus);
    EXPECT_FALSE(options.LogEmails);
    EXPECT_EQ(options.POPServer, QStringLiteral("pop"));
    EXPECT_FALSE(options.POPDeleteAll);
    EXPECT_EQ(options.Signature, QStringLiteral("a\r\nb"));
    ASSERT_EQ(Profile.Boxes.Shown.size(), 2U);
    EXPECT_EQ(Profile.Boxes.Shown[0].Title, QStringLiteral("varlo-pro Error 13 in Prefs.Load"));
    EXPECT_EQ(Profile.Boxes.Shown[1].Title, QStringLiteral("varlo-pro Error 13 in Prefs.Load"));
    EXPECT_EQ(Profile.Log(QStringLiteral("ErrorLog.txt")).size(), 2);
}

TEST_F(OptionsStoreTest, SwitchesOtherThanOneAreOffAsEverywhereInTheProgram) {
    Profile.Write(QStringLiteral("prefs.ini"), "[General]\r\nLogStatus=2\r\nLogEmails=-1\r\n");
    session.Prefs.Notify = 7;
    const Options options = LoadOptions(session);
    EXPECT_FALSE(options.LogStatus);
    EXPECT_FALSE(options.LogEmails);
    EXPECT_FALSE(options.Notify);
}

TEST_F(OptionsStoreTest, SmtpPortThatIsNoNumberLeavesTheGeneralSectionStored) {
    session.Prefs.SMTPPort = 25;
    Options options = Sample();
    options.SMTPPort = QStringLiteral("smtp");
    EXPECT_EQ(SaveError(options), TypeMismatch);
    EXPECT_EQ(Profile.Read(QStringLiteral("prefs.ini")), QByteArray(kGeneralOnly));
    EXPECT_EQ(session.Prefs.Notify, 1);
    EXPECT_EQ(session.Prefs.LogStatus, 0);
    EXPECT_EQ(session.Prefs.SMTPServer, QStringLiteral("smtp.example.org")) << "set before the port";
    EXPECT_EQ(session.Prefs.SMTPPort, 25);
    EXPECT_EQ(session.Prefs.SMTPFrom, QString()) << "comes after the port";
}

TEST_F(OptionsStoreTest, WrapColumnPast16BitsLeavesTheGeneralSectionStored) {
    Options options = Sample();
    options.SMTPWrap = QStringLiteral("32768");
    EXPECT_EQ(SaveError(options), Overflow);
    EXPECT_EQ(Profile.Read(QStringLiteral("prefs.ini")), QByteArray(kGeneralOnly));
    EXPECT_EQ(session.Prefs.SMTPEmail, QStringLiteral("joerg@example.org")) << "set before the column";
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
    options.SMTPPort = QStringLiteral("25");
    options.SMTPWrap = QStringLiteral("72");
    SaveOptions(session, options);
    const QByteArray file = Profile.Read(QStringLiteral("prefs.ini"));
    EXPECT_TRUE(file.contains("SMTPServer=\r\n"));
    EXPECT_TRUE(file.contains("POPPort=\r\n"));
    EXPECT_TRUE(file.contains("SubBody=\r\n"));
    EXPECT_TRUE(Profile.Boxes.Shown.empty());
    EXPECT_EQ(LoadOptions(session).POPPort, QStringLiteral("110")) << "an empty value reads as the default";
}

TEST_F(OptionsStoreTest, RangesAreNotChecked) {
    Options options = Sample();
    options.SMTPPort = QStringLiteral("-1");
    options.SMTPWrap = QStringLiteral("0");
    EXPECT_EQ(SaveError(options), 0);
    EXPECT_EQ(session.Prefs.SMTPPort, -1);
    EXPECT_EQ(session.Prefs.SMTPWrap, 0);
}

TEST_F(OptionsStoreTest, OtherKeysAndCommentsOfTheFileStay) {
    Profile.Write(QStringLiteral("prefs.ini"),
                  "; mine\r\n[Main]\r\nListCurrent=3\r\n[General]\r\nColour=red\r\nNotify=0\r\n");
    SaveOptions(session, Sample());
    EXPECT_TRUE(Profile.Read(QStringLiteral("prefs.ini"))
                    .startsWith("; mine\r\n[Main]\r\nListCurrent=3\r\n[General]\r\nColour=red\r\nNotify=1\r\n"
                                "LogStatus=0\r\nLogEmails=0\r\n[SMTP]\r\n"));
}

TEST_F(OptionsStoreTest, FileThatCannotBeWrittenGoesUnnoticedAndTheMemoryCounts) {
    session.INI.SetFile(Profile.Path(QStringLiteral("no such folder/prefs.ini")));
    EXPECT_EQ(SaveError(Sample()), 0);
    EXPECT_EQ(session.Prefs.SMTPPort, 587);
    EXPECT_TRUE(Profile.Boxes.Shown.empty());
}

TEST_F(OptionsStoreTest, LineBreaksCannotAddAKey) {
    Options options = Sample();
    options.SMTPFrom = QStringLiteral("Eve\r\nPOPPassword=stolen\n[Main]");
    SaveOptions(session, options);
    EXPECT_TRUE(
        Profile.Read(QStringLiteral("prefs.ini")).contains("SMTPFrom=Eve POPPassword=stolen [Main]\r\n"));
}

TEST_F(OptionsStoreTest, PasswordFileIsReadableByItsOwnerOnly) {
    SaveOptions(session, Sample());
    const auto others =
        QFileDevice::ReadGroup | QFileDevice::ReadOther | QFileDevice::WriteGroup | QFileDevice::WriteOther;
    EXPECT_EQ(QFile::permissions(Profile.Path(QStringLiteral("prefs.ini"))) & others,
              QFileDevice::Permissions());
}

} // namespace
} // namespace varlo::test

#include "core/Settings.h"

#include "core/Literals.h"
#include "core/Reporting.h"
#include "core/ValueText.h"
#include "support/KnownSettings.h"
#include "support/TestProfile.h"

#include <QSignalSpy>
#include <gtest/gtest.h>

namespace varlo::test {
namespace {

QString Row(const char *section, const char *key, const char *kind, const char *defaultText,
            const char *how) {
    return u"%1/%2 %3 [%4] %5"_s.arg(QString::fromUtf8(section), QString::fromUtf8(key),
                                     QString::fromUtf8(kind), QString::fromUtf8(defaultText),
                                     QString::fromUtf8(how));
}

QString Row(const KnownSetting &known) {
    return Row(known.Section, known.Key, known.Kind, known.Default, known.How);
}

QString Row(const Setting &setting) {
    const char *kinds[] = {"32-bit", "16-bit", "truth", "text"};
    const char *hows[] = {"held", "fresh", "in window", "outside"};
    return Row(setting.Section, setting.Key, kinds[setting.Member.index()], setting.Default,
               hows[static_cast<int>(setting.How)]);
}

std::vector<KnownSetting> Known() {
    std::vector<KnownSetting> known;
    for (const KnownSetting &row : KnownSettings())
        if (*row.Section)
            known.push_back(row);
    return known;
}

class SettingsTest : public testing::Test {
protected:
    template<typename Statement> int ErrorOf(Statement statement) {
        try {
            statement();
            return 0;
        } catch (const RuntimeError &error) {
            description = error.Description();
            return error.Number();
        }
    }
    void Put(const QByteArray &bytes) { profile.Write(u"prefs.ini"_s, bytes); }
    void PutSample(const KnownSetting &known) {
        Put(QByteArray("[") + known.Section + "]\r\n" + known.Key + "=" + known.Sample + "\r\n");
    }
    QByteArray File() const { return profile.Read(u"prefs.ini"_s); }
    // The settings that the preferences window stores, with other values than the defaults.
    static Preferences Samples() {
        Preferences samples = Settings::Defaults();
        const auto known = Known();
        for (size_t row = 0; row < known.size(); ++row)
            if (known[row].Page >= 0)
                SetText(samples, Settings::Table()[row], QString::fromUtf8(known[row].Sample));
        return samples;
    }

    TestProfile profile;
    Settings &settings = profile.session.AllSettings;
    ErrorTrap trap{profile.session, u"Main.Load"_s};
    QString description;
};

TEST_F(SettingsTest, TableIsWhole) {
    QStringList rows;
    for (const Setting &setting : Settings::Table())
        rows << Row(setting);
    QStringList known;
    for (const KnownSetting &row : Known())
        known << Row(row);
    EXPECT_EQ(rows, known);
}

TEST_F(SettingsTest, ANewSessionHoldsTheDefaults) {
    for (const Setting &setting : Settings::Table()) {
        if (setting.How != Use::InWindow) {
            EXPECT_EQ(TextOf(profile.session.Prefs, setting), QString::fromLatin1(setting.Default))
                << setting.Key;
        }
    }
}

TEST_F(SettingsTest, MissingKeysReadAsTheirDefaults) {
    settings.Load(trap);
    EXPECT_EQ(settings.Held, Settings::Defaults());
    EXPECT_EQ(settings.Read(&Preferences::POPPort), u"110"_s);
    EXPECT_EQ(settings.Read(&Preferences::LogEmails), 1);
    EXPECT_FALSE(QFile::exists(profile.Path(u"prefs.ini"_s))) << "reading writes nothing";
}

// What the start loads, what is read at its use, and what the preferences window alone reads.
TEST_F(SettingsTest, EachKeyOfTheFileReachesItsMemberWhereTheTableSaysSo) {
    const auto known = Known();
    ASSERT_EQ(known.size(), Settings::Table().size());
    for (size_t row = 0; row < known.size(); ++row) {
        const Setting &setting = Settings::Table()[row];
        const QString sample = QString::fromUtf8(known[row].Sample);
        PutSample(known[row]);
        settings.Held = Settings::Defaults();
        settings.Load(trap);
        EXPECT_EQ(settings.Held != Settings::Defaults(), setting.How == Use::Held) << known[row].Key;
        if (known[row].Page >= 0) {
            EXPECT_EQ(TextOf(settings.ForWindow(trap), setting), sample) << known[row].Key;
        }
        if (setting.How != Use::InWindow) {
            std::visit([&](auto member) { (void)settings.Read(member); }, setting.Member); // held then, too
            EXPECT_EQ(TextOf(settings.Held, setting), sample) << known[row].Key;
        }
    }
    EXPECT_TRUE(profile.Boxes.Shown.empty());
}

TEST_F(SettingsTest, WhatIsStoredIsHeldAndReadAgain) {
    settings.Store(Samples());
    EXPECT_EQ(settings.Held, Samples());
    settings.Held = Settings::Defaults();
    settings.Load(trap);
    EXPECT_EQ(settings.ForWindow(trap), Samples());
}

TEST_F(SettingsTest, StoreWritesEveryKeyInItsOrder) {
    settings.Store(Samples());
    EXPECT_EQ(File(), SampleFile());
    EXPECT_TRUE(File().startsWith("[General]\r\nLogStatus=0\r\nLogEmails=0\r\nNotify=1\r\n"));
}

// A file of somebody who never set them stays as it was.
TEST_F(SettingsTest, WhatIsStoredOnlyWhenItIsSetLeavesNoKeyAtItsDefault) {
    settings.Store(Settings::Defaults());
    for (const Setting &setting : Settings::Table())
        if (setting.Stored == Kept::WhenSet) {
            EXPECT_FALSE(File().contains(QByteArray(setting.Key) + '=')) << setting.Key;
        }
    EXPECT_TRUE(File().contains("SMTPWrap=72\r\n[POP3]\r\n"));
}

TEST_F(SettingsTest, WhatWasSetAndIsNoLongerIsWrittenOver) {
    Preferences wanted = Samples();
    wanted.SMTPSecurity = 1;
    wanted.SMTPUsername = wanted.SMTPPassword = u"ann"_s;
    settings.Store(wanted);
    settings.Store(Settings::Defaults());
    EXPECT_TRUE(File().contains("SMTPSecurity=0\r\nSMTPUsername=\r\nSMTPPassword=\r\n"));
    EXPECT_TRUE(File().contains("POPSecurity=0\r\n"));
}

TEST_F(SettingsTest, WhileTheKeyringKeepsThePasswordsTheFileHasNone) {
    Preferences wanted = Samples();
    wanted.SMTPPassword = u"geheim"_s;
    settings.Store(wanted);
    wanted.Keyring = 1;
    settings.Store(wanted);
    EXPECT_FALSE(File().contains(wanted.SMTPPassword.toUtf8()));
    EXPECT_FALSE(File().contains(wanted.POPPassword.toUtf8()));
    EXPECT_TRUE(File().contains("Keyring=1\r\n"));
    EXPECT_EQ(settings.Read(&Preferences::POPPassword), wanted.POPPassword) << "held all the same";
    EXPECT_EQ(settings.Read(&Preferences::SMTPPassword), wanted.SMTPPassword);
    EXPECT_EQ(settings.ForWindow(trap), wanted);
    wanted.Keyring = 0;
    settings.Store(wanted);
    EXPECT_TRUE(File().contains("POPPassword=" + wanted.POPPassword.toUtf8() + "\r\n"));
}

TEST_F(SettingsTest, StoreOfOneSectionLeavesTheOthers) {
    settings.Store(Samples(), "General");
    EXPECT_EQ(File(), SampleFile("General"));
    EXPECT_EQ(settings.Held.Notify, 1);
    EXPECT_EQ(settings.Held.SMTPServer, QString());
}

TEST_F(SettingsTest, OtherKeysAndCommentsOfTheFileStay) {
    Put("; mine\r\n[Main]\r\nListCurrent=3\r\n[General]\r\nColour=red\r\nNotify=0\r\n");
    settings.Store(Samples());
    const QByteArray start = "; mine\r\n[Main]\r\nListCurrent=3\r\n[General]\r\nColour=red\r\nNotify=1\r\n"
                             "LogStatus=0\r\nLogEmails=0\r\n";
    EXPECT_EQ(File().left(start.size()), start);
}

TEST_F(SettingsTest, ChangedIsSentWhenTheValuesAreHeld) {
    QSignalSpy changed(&settings, &Settings::Changed);
    QString server;
    QObject::connect(&settings, &Settings::Changed, &settings, [&] { server = settings.Held.SMTPServer; });
    settings.Store(Samples());
    EXPECT_EQ(changed.size(), 1);
    EXPECT_EQ(server, u"smtp.example.org"_s);
    settings.Load(trap);
    settings.Write({&Preferences::ListSortBy});
    EXPECT_EQ(changed.size(), 1) << "nothing that the preferences window stores";
}

TEST_F(SettingsTest, WhatThePreferencesDoNotEditStaysAsItIs) {
    Preferences wanted = Samples();
    wanted.ListSortBy = 0;
    wanted.WindowGeometry = u"elsewhere"_s;
    settings.Store(wanted);
    EXPECT_EQ(settings.Held.ListSortBy, 1);
    EXPECT_EQ(settings.Held.WindowGeometry, QString());
}

TEST_F(SettingsTest, TextsThatTheFileWouldStripComeBackAsTheyAre) {
    for (const char *text : {" a ", "\"a\"", "'a'", "\"", "\"\"", " \"a\" ", "\ta", "a b", "'a\""}) {
        Preferences wanted = Samples();
        wanted.POPPassword = QString::fromLatin1(text);
        settings.Store(wanted);
        EXPECT_EQ(settings.Held.POPPassword, QString::fromLatin1(text));
        EXPECT_EQ(settings.Read(&Preferences::POPPassword), QString::fromLatin1(text));
    }
}

TEST_F(SettingsTest, LineBreaksCannotAddAKey) {
    Preferences wanted = Samples();
    wanted.SMTPFrom = u"Eve\r\nPOPPassword=stolen\n[Main]"_s;
    settings.Store(wanted);
    EXPECT_TRUE(File().contains("SMTPFrom=Eve POPPassword=stolen [Main]\r\n"));
    EXPECT_EQ(settings.Held.SMTPFrom, u"Eve POPPassword=stolen [Main]"_s) << "held as it is stored";
}

TEST_F(SettingsTest, AFileThatCannotBeWrittenIsReportedAndNothingIsHeld) {
    QSignalSpy changed(&settings, &Settings::Changed);
    profile.session.INI.SetFile(profile.Path(u"no such folder/prefs.ini"_s));
    EXPECT_EQ(ErrorOf([&] { settings.Store(Samples()); }), PathNotFound);
    EXPECT_TRUE(description.contains(u"no such folder"_s)) << description.toStdString();
    EXPECT_EQ(settings.Held, Settings::Defaults());
    EXPECT_EQ(changed.size(), 0);
}

TEST_F(SettingsTest, AFileThatCannotBeReadIsNotReplaced) {
    ASSERT_TRUE(QDir().mkpath(profile.Path(u"prefs.ini/kept"_s)));
    EXPECT_NE(ErrorOf([&] { settings.Store(Samples()); }), 0);
    EXPECT_TRUE(QDir(profile.Path(u"prefs.ini/kept"_s)).exists());
    EXPECT_EQ(settings.Held, Settings::Defaults());
}

TEST_F(SettingsTest, PasswordFileIsReadableByItsOwnerOnly) {
    settings.Store(Samples());
    const auto others =
        QFileDevice::ReadGroup | QFileDevice::ReadOther | QFileDevice::WriteGroup | QFileDevice::WriteOther;
    EXPECT_EQ(QFile::permissions(profile.Path(u"prefs.ini"_s)) & others, QFileDevice::Permissions());
}

TEST_F(SettingsTest, SettingsOfTheMainWindowAreWrittenTogether) {
    Put("[Main]\r\nListCurrent=3\r\n; mine\r\n");
    settings.Held.ListCurrent = -1;
    settings.Held.AlwaysOnTop = true;
    settings.Write({&Preferences::ListCurrent, &Preferences::WindowSplitter, &Preferences::AlwaysOnTop});
    EXPECT_EQ(
        File(),
        QByteArray("[Main]\r\nListCurrent=-1\r\n; mine\r\nAlwaysOnTop=True\r\n[Window]\r\nSplitter=\r\n"));
}

TEST_F(SettingsTest, WritingThatFailsGoesUnnoticed) {
    profile.session.INI.SetFile(profile.Path(u"no such folder/prefs.ini"_s));
    settings.Write({&Preferences::AlwaysOnTop});
    EXPECT_TRUE(profile.Boxes.Shown.empty());
}

TEST_F(SettingsTest, ReadingAndWritingLeavesTheKeysSection) {
    (void)settings.Read(&Preferences::POPServer); // the section it leaves is looked at
    EXPECT_EQ(profile.session.INI.Section(), u"POP3"_s);
    settings.Write({&Preferences::AlwaysOnTop});
    EXPECT_EQ(profile.session.INI.Section(), u"Main"_s);
}

TEST_F(SettingsTest, LogStatusOfTheStartIsAnotherKeyThanThatOfThePreferences) {
    Put("[General]\r\nLogStatus=0\r\n");
    EXPECT_EQ(settings.Read(&Preferences::LogStatus), 1);
    EXPECT_EQ(settings.ForWindow(trap).LogStatus, 0);
    Put("[Main]\r\nLogStatus=0\r\n");
    EXPECT_EQ(settings.Read(&Preferences::LogStatus), 0);
    EXPECT_EQ(settings.ForWindow(trap).LogStatus, 1);
}

TEST_F(SettingsTest, UnsavedAutoAddIsOnWhenComposingAndUntickedInThePreferences) {
    EXPECT_EQ(settings.Read(&Preferences::SignatureAutoAdd), 1);
    EXPECT_EQ(settings.ForWindow(trap).SignatureAutoAdd, 0);
    for (const int stored : {1, 0}) {
        Preferences wanted = Samples();
        wanted.SignatureAutoAdd = stored;
        settings.Store(wanted);
        EXPECT_EQ(settings.Read(&Preferences::SignatureAutoAdd), stored);
        EXPECT_EQ(settings.ForWindow(trap).SignatureAutoAdd, stored);
    }
}

TEST_F(SettingsTest, DamagedNumbersAreReportedAndTheRestIsLoaded) {
    Put("[SMTP]\r\nSMTPServer=mail.test\r\nSMTPPort=many\r\nSMTPFrom=Ann\r\nSMTPWrap=32768\r\n"
        "[General]\r\nNotify=2147483648\r\n");
    settings.Load(trap);
    QStringList titles;
    for (const ShownBox &box : profile.Boxes.Shown)
        titles << box.Title.section(u' ', 1);
    EXPECT_EQ(titles, (QStringList{u"Error 6 in Main.Load"_s, u"Error 13 in Main.Load"_s,
                                   u"Error 6 in Main.Load"_s}));
    EXPECT_EQ(settings.Held.SMTPServer, u"mail.test"_s);
    EXPECT_EQ(settings.Held.SMTPPort, 25);
    EXPECT_EQ(settings.Held.SMTPFrom, u"Ann"_s);
    EXPECT_EQ(settings.Held.SMTPWrap, 72);
    EXPECT_EQ(settings.Held.Notify, 0);
}

TEST_F(SettingsTest, AValueThatCannotBeReadLeavesWhatIsHeld) {
    Put("[POP3]\r\nPOPDeleteAll=yes\r\n[Main]\r\nAlwaysOnTop=perhaps\r\n");
    settings.Held.POPDeleteAll = 1;
    EXPECT_EQ(ErrorOf([&] { (void)settings.Read(&Preferences::POPDeleteAll); }), TypeMismatch);
    EXPECT_EQ(ErrorOf([&] { (void)settings.Read(&Preferences::AlwaysOnTop); }), TypeMismatch);
    EXPECT_EQ(settings.Held.POPDeleteAll, 1);
}

TEST_F(SettingsTest, EmptyNumberReadsAsItsDefault) {
    Put("[SMTP]\r\nSMTPPort=\r\n");
    settings.Load(trap);
    EXPECT_EQ(settings.Held.SMTPPort, 25);
}

TEST_F(SettingsTest, NumbersOfEverySizeSurviveTheFile) {
    for (const auto number : {std::numeric_limits<qint16>::min(), std::numeric_limits<qint16>::max()}) {
        Preferences wanted = Samples();
        wanted.SMTPPort = number;
        settings.Store(wanted);
        settings.Load(trap);
        EXPECT_EQ(settings.Held.SMTPPort, number);
    }
}

} // namespace
} // namespace varlo::test

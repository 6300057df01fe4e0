#include "app/HelpTargets.h"

#include "core/Literals.h"
#include "support/TestProfile.h"

namespace varlo::test {
namespace {

constexpr ProductVersion kVersion{2, 1, 7};

// A desktop that opens nothing but the listed endings.
class PickyDesktop : public ScriptedDialogs {
public:
    bool OpenUrl(const QUrl &url) override {
        ScriptedDialogs::OpenUrl(url);
        return !Ending.isEmpty() && url.path().endsWith(Ending);
    }
    QString Ending;
};

struct HelpTargetsTest : testing::Test {
    TestProfile Profile;
    PickyDesktop Desktop;
    Session session{Profile.Folder.path(), Desktop};

    HelpTargetsTest() { session.ProfilePath = Profile.session.ProfilePath; }

    QUrl Beside(const char *file) const {
        return QUrl::fromLocalFile(QDir(Profile.Folder.path()).filePath(QString::fromLatin1(file)));
    }
    QUrl Make(const char *file) const {
        const QString path = Beside(file).toLocalFile();
        EXPECT_TRUE(QDir().mkpath(QFileInfo(path).path()));
        QFile made(path);
        EXPECT_TRUE(made.open(QIODevice::WriteOnly));
        return Beside(file);
    }
};

TEST_F(HelpTargetsTest, VersionTextsNameTheBuild) {
    EXPECT_EQ(ShortText(kVersion), u"2.1"_s);
    EXPECT_EQ(LongText(kVersion), u"2.1 (Build 7)"_s);
    EXPECT_EQ(LongText({}),
              u"%1.%2 (Build %3)"_s.arg(Product::kMajor).arg(Product::kMinor).arg(Product::kRevision));
}

TEST_F(HelpTargetsTest, UpdateCheckAsksForVersion21) {
    EXPECT_EQ(HelpTargets::UpdateCheck(kVersion).toEncoded(),
              Product::kVersionCheck.toLatin1() + "/vercheck.php?app=Varlo&ver=2.1");
}

TEST_F(HelpTargetsTest, SupportMailKeepsItsEscapes) {
    EXPECT_EQ(HelpTargets::SupportMail(kVersion).toEncoded(),
              "mailto:" + Product::kSupportAddress.toLatin1() + "?subject=Varlo%20Pro%20v2.1%20(Build%207)");
}

TEST_F(HelpTargetsTest, PagesOfTheMakerLieBelowHisSite) {
    EXPECT_EQ(HelpTargets::Website().toString(), Product::kWebsite);
    EXPECT_EQ(HelpTargets::Forums().toString(), Product::kWebsite + u"/forums"_s);
}

TEST_F(HelpTargetsTest, ReadMeLiesBesideTheProgram) {
    EXPECT_EQ(HelpTargets::ReadMe(session), Beside("Read Me.html"));
}

TEST_F(HelpTargetsTest, DocumentsOfAnInstalledCopyLieInItsDocumentFolders) {
    const QUrl readMe = Make("shared/Read Me.html");
    const QUrl pages = Make("shared/help/index.html");
    const QUrl compiled = Make("shared/Varlo Pro.chm");
    session.DocumentFolders = QStringList{Beside("nowhere").toLocalFile(), Beside("shared").toLocalFile()};
    EXPECT_EQ(HelpTargets::ReadMe(session), readMe);
    EXPECT_EQ(HelpTargets::Contents(session, true), (QList<QUrl>{compiled, pages}));
}

TEST_F(HelpTargetsTest, DocumentsInTheProgramFolderComeBeforeThoseOfTheInstallation) {
    Make("shared/Read Me.html");
    session.DocumentFolders = QStringList{Beside("shared").toLocalFile()};
    EXPECT_EQ(HelpTargets::ReadMe(session), Make("Read Me.html"));
}

TEST_F(HelpTargetsTest, ADocumentThatIsNowhereIsMissedInTheProgramFolder) {
    session.DocumentFolders = QStringList{Beside("shared").toLocalFile()};
    EXPECT_EQ(HelpTargets::ReadMe(session), Beside("Read Me.html"));
}

TEST_F(HelpTargetsTest, CompiledHelpComesFirstWhereSomethingOpensIt) {
    const QUrl compiled = Make("Varlo Pro.chm");
    EXPECT_EQ(HelpTargets::Contents(session, true), QList<QUrl>{compiled}) << "no pages to fall back on";
    EXPECT_EQ(HelpTargets::Contents(session, false), QList<QUrl>{compiled}) << "the only hope";
    const QUrl pages = Make("help/index.html");
    EXPECT_EQ(HelpTargets::Contents(session, true), (QList<QUrl>{compiled, pages}));
    EXPECT_EQ(HelpTargets::Contents(session, false), QList<QUrl>{pages});
}

TEST_F(HelpTargetsTest, MissingCompiledHelpGivesWayToThePages) {
    const QUrl pages = Make("help/index.html");
    EXPECT_EQ(HelpTargets::Contents(session, true), QList<QUrl>{pages});
}

TEST_F(HelpTargetsTest, OpeningTheHelpEndsAtThePagesThatOpen) {
    Make("Varlo Pro.chm");
    const QUrl pages = Make("help/index.html");
    Desktop.Ending = u".html"_s;
    OpenHelp(session);
    EXPECT_EQ(Desktop.Opened.back(), pages);
    EXPECT_TRUE(Desktop.Shown.empty());
}

TEST_F(HelpTargetsTest, NoHelpAtAllIsReportedHereAndNotByTheDesktopToo) {
    Desktop.Ending = u".chm"_s;
    OpenHelp(session);
    EXPECT_TRUE(Desktop.Opened.empty());
    ASSERT_EQ(Desktop.Shown.size(), 1U);
    EXPECT_EQ(Desktop.Shown[0].Title, u"varlo-pro Error 53 in Main.mnuHelpContents"_s);
}

TEST_F(HelpTargetsTest, MissingReadMeIsReportedOnce) {
    OpenTarget(session, HelpTargets::ReadMe(session), u"Main.mnuHelpReadMe"_s);
    EXPECT_TRUE(Desktop.Opened.empty()) << "the desktop would say it a second time";
    ASSERT_EQ(Desktop.Shown.size(), 1U);
    EXPECT_EQ(Desktop.Shown[0].Title, u"varlo-pro Error 53 in Main.mnuHelpReadMe"_s);
    EXPECT_EQ(Profile.Log(u"ErrorLog.txt"_s).size(), 1);
}

TEST_F(HelpTargetsTest, AddressThatNothingOpensIsNamed) {
    OpenTarget(session, HelpTargets::Website(), u"Main.mnuHelpWebsite"_s);
    ASSERT_EQ(Desktop.Shown.size(), 1U);
    EXPECT_EQ(Desktop.Shown[0].Title, u"varlo-pro Error 5 in Main.mnuHelpWebsite"_s);
    EXPECT_TRUE(Desktop.Shown[0].Text.contains(Product::kWebsite));
}

TEST_F(HelpTargetsTest, TargetThatOpensSaysNothing) {
    Desktop.Ending = u"Me.html"_s;
    const QUrl readMe = Make("Read Me.html");
    OpenTarget(session, readMe, u"Main.mnuHelpReadMe"_s);
    EXPECT_EQ(Desktop.Opened, std::vector<QUrl>{readMe});
    EXPECT_TRUE(Desktop.Shown.empty());
}

TEST_F(HelpTargetsTest, ViewerIsFoundInTheRegistriesOfTheDesktop) {
    const auto found = [&](const char *registry, const QByteArray &text) {
        QTemporaryDir folder;
        QFile file(folder.filePath(QString::fromLatin1(registry)));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
        file.close();
        return HasChmViewer({u"/nowhere"_s, folder.path()});
    };
    EXPECT_TRUE(found("mimeinfo.cache", "[MIME Cache]\napplication/vnd.ms-htmlhelp=viewer.desktop;\n"));
    EXPECT_TRUE(found("mimeapps.list", "[Default Applications]\r\napplication/x-chm=viewer.desktop\r\n"));
    EXPECT_FALSE(found("mimeinfo.cache", "[MIME Cache]\napplication/vnd.ms-htmlhelp=\n"));
    EXPECT_FALSE(found("mimeinfo.cache", "text/html=browser.desktop;\n"));
    EXPECT_FALSE(found("other.list", "application/x-chm=viewer.desktop\n"));
    EXPECT_FALSE(HasChmViewer(QStringList()));
}

} // namespace
} // namespace varlo::test

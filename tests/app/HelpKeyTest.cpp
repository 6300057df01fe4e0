#include "app/HelpKey.h"

#include "app/HelpTargets.h"
#include "core/Literals.h"
#include "support/TestProfile.h"

#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QLineEdit>
#include <QtTest>
#include <gtest/gtest.h>

namespace varlo::test {
namespace {

class HelpKeyTest : public testing::Test {
protected:
    HelpKeyTest() {
        qApp->installEventFilter(&key_);
        MakePage("index.html");
    }
    QUrl MakePage(const char *name) const {
        const QDir folder(profile_.Folder.path());
        EXPECT_TRUE(folder.mkpath(u"help"_s));
        const QString path = folder.filePath(u"help/"_s + QString::fromLatin1(name));
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        return QUrl::fromLocalFile(path);
    }

    TestProfile profile_;
    HelpKey key_{profile_.session};
    QWidget window_;
    QLineEdit *text_ = new QLineEdit(&window_);
};

TEST_F(HelpKeyTest, OpensThePageOfTheWindowThatItIsPressedIn) {
    window_.setObjectName(u"frmCompose"_s);
    const QUrl page = MakePage("compose.html");
    window_.show();
    QTest::keyClick(text_, Qt::Key_F1);
    EXPECT_EQ(profile_.Boxes.Opened, std::vector<QUrl>{page});
    QTest::keyClick(text_, Qt::Key_F1, Qt::ShiftModifier);
    QTest::keyClick(text_, Qt::Key_F2);
    EXPECT_EQ(profile_.Boxes.Opened.size(), 1U) << "no other key does";
}

TEST_F(HelpKeyTest, ABoxBelongsToTheWindowThatRaisedIt) {
    window_.setObjectName(u"frmProfile"_s);
    const QUrl page = MakePage("profile.html");
    window_.show();
    QDialog box(&window_);
    box.show();
    QTest::keyClick(&box, Qt::Key_F1);
    EXPECT_EQ(profile_.Boxes.Opened, std::vector<QUrl>{page});
}

TEST_F(HelpKeyTest, WithoutAPageTheHelpOpensAtItsBeginning) {
    window_.setObjectName(u"frmCompose"_s); // whose page is missing
    window_.show();
    QTest::keyClick(text_, Qt::Key_F1);
    ASSERT_EQ(profile_.Boxes.Opened.size(), 1U);
    EXPECT_EQ(profile_.Boxes.Opened[0].fileName(), u"index.html"_s);
}

TEST_F(HelpKeyTest, EveryWindowHasAPageThatIsWritten) {
    const QDir pages(QStringLiteral(VARLO_SOURCE_FOLDER "/docs/help"));
    for (const char *window :
         {"frmMain", "frmProfile", "frmOptions", "frmConsole", "frmCompose", "frmCompRecip", "frmAttach",
          "frmAbout", "frmImport", "frmExport", "frmCompare"}) {
        const QString page = HelpTargets::Page(QString::fromLatin1(window));
        EXPECT_FALSE(page.isEmpty()) << window;
        EXPECT_TRUE(pages.exists(page)) << window;
    }
    EXPECT_EQ(HelpTargets::Page(u"other"_s), QString());
}

} // namespace
} // namespace varlo::test

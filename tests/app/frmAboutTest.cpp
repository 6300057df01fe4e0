#include "app/frmAbout.h"

#include "core/HyperlinkLabel.h"
#include "core/Literals.h"
#include "support/TestProfile.h"

namespace varlo::test {
namespace {

struct frmAboutTest : testing::Test {
    TestProfile Profile;
    QPalette Before = QApplication::palette();
    ~frmAboutTest() override { QApplication::setPalette(Before); }

    static QString Text(const frmAbout &window, const char *name) {
        const auto *label = window.findChild<QLabel *>(QString::fromLatin1(name));
        return label ? label->text() : u"no such label"_s;
    }
};

TEST_F(frmAboutTest, Version21Revision7IsShown) {
    const frmAbout window(Profile.session, nullptr, ProductVersion{2, 1, 7});
    EXPECT_EQ(Text(window, "lblVersion"), u"Version 2.1 (Build 7)"_s);
}

TEST_F(frmAboutTest, CaptionsNameTheProduct) {
    const frmAbout window(Profile.session);
    EXPECT_EQ(window.objectName(), u"frmAbout"_s);
    EXPECT_EQ(window.windowTitle(), u"About Varlo Pro"_s);
    EXPECT_EQ(Text(window, "lblProduct"), u"Varlo Pro"_s);
    EXPECT_EQ(Text(window, "lblLabel_0"), u"Email:"_s);
    EXPECT_EQ(Text(window, "lblLabel_1"), u"Website:"_s);
    EXPECT_EQ(Text(window, "lblHyperlink_0"), Product::kSupportAddress);
    EXPECT_EQ(Text(window, "lblHyperlink_1"), Product::kWebsite);
    EXPECT_FALSE(window.findChild<QLabel *>(u"Picture1"_s)->pixmap().isNull());
}

TEST_F(frmAboutTest, LinksOpenAMailThenTheSite) {
    frmAbout window(Profile.session, nullptr, ProductVersion{2, 1, 7});
    window.show();
    for (const char *name : {"lblHyperlink_0", "lblHyperlink_1"})
        QTest::mouseClick(window.findChild<HyperlinkLabel *>(QString::fromLatin1(name)), Qt::LeftButton);
    EXPECT_EQ(Profile.Boxes.Opened,
              (std::vector<QUrl>{HelpTargets::SupportMail(ProductVersion{2, 1, 7}), HelpTargets::Website()}));
}

TEST_F(frmAboutTest, OkAndEscapeClose) {
    for (const int key : {Qt::Key_Return, Qt::Key_Escape}) {
        frmAbout window(Profile.session);
        window.show();
        window.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
        QTest::keyClick(window.focusWidget(), static_cast<Qt::Key>(key));
        EXPECT_FALSE(window.isVisible());
    }
}

TEST_F(frmAboutTest, FitsASmallScreenInBothThemes) {
    for (const bool dark : {false, true}) {
        QApplication::setPalette(dark ? QPalette(QColor(0x35, 0x35, 0x38), QColor(0x2b, 0x2b, 0x2e))
                                      : Before);
        frmAbout window(Profile.session);
        window.show();
        const QPixmap picture = window.grab();
        EXPECT_LE(window.width(), 600);
        EXPECT_LE(window.height(), 300);
        const QString folder = qEnvironmentVariable("VARLO_PICTURES");
        if (!folder.isEmpty()) {
            EXPECT_TRUE(picture.save(QDir(folder).filePath(dark ? u"about-dark.png"_s : u"about.png"_s)));
        }
    }
}

} // namespace
} // namespace varlo::test

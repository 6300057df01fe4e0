// The controls of the compose window: texts, menus, order of the focus, names for screen readers.

#include "compose/ComposeFixture.h"
#include "core/Literals.h"
#include "core/NameChooser.h"

#include <QMenu>
#include <QMenuBar>
#include <QScopeGuard>

namespace varlo {
namespace {

class frmComposeControlsTest : public test::ComposeFixture {
protected:
    // The entries of a menu, one text each; separators as "-".
    QStringList Entries(const char *menu) const {
        QStringList entries;
        for (const QAction *entry : Find<QMenu>(menu)->actions())
            entries << (entry->isSeparator() ? u"-"_s : entry->text());
        return entries;
    }
};

TEST_F(frmComposeControlsTest, EveryControlHasItsText) {
    Open();
    EXPECT_EQ(window->objectName(), "frmCompose");
    EXPECT_EQ(window->windowTitle(), "Compose");
    EXPECT_EQ(Label("lblCaption"), "Status:");
    EXPECT_EQ(Label("lblStatus"), "Idle");
    EXPECT_EQ(Find<QLineEdit>("txtTo")->text(), "Mailing List");
    EXPECT_EQ(Find<QLineEdit>("txtTo")->toolTip(), "\"To:\" name as it will appear to recipients");
}

TEST_F(frmComposeControlsTest, TheFieldsBeginInOneColumn) {
    Open();
    QCoreApplication::processEvents();
    const int left = Find<QLineEdit>("txtTo")->x();
    EXPECT_EQ(Find<QComboBox>("cmbTo")->x(), left);
    EXPECT_EQ(Find<QLineEdit>("txtSubject")->x(), left);
    EXPECT_GT(Find<QToolButton>("picAttachments")->x(), Find<QComboBox>("cmbTo")->geometry().right());
}

TEST_F(frmComposeControlsTest, TheMenusHoldTheirEntriesAndLines) {
    Open();
    QStringList menus;
    for (const QAction *menu : window->menuBar()->actions())
        menus << menu->text();
    EXPECT_EQ(menus, QStringList({"M&essage", "&Edit", "&Insert"}));
    EXPECT_EQ(Entries("mnuMessage"), QStringList({"&Send Message", "-", "&Open Draft", "Sa&ve Draft", "-",
                                                  "&Attachments...", "-", "&Clear All"}));
    EXPECT_EQ(Entries("mnuEdit"),
              QStringList({"&Undo", "&Redo", "-", "Cu&t", "&Copy", "&Paste", "-", "Select &All"}));
    EXPECT_EQ(Entries("mnuInsert"), QStringList("&Signature"));
}

TEST_F(frmComposeControlsTest, TheFocusBeginsAtTheSubjectAndGoesDownwards) {
    host.Attachments = QStringList{profile.Path("draft.txt")};
    profile.Write("draft.txt", "");
    Open();
    EXPECT_EQ(window->focusWidget(), Subject());
    To()->setFocus();
    QStringList order;
    for (int i = 0; i < 5; ++i) {
        order << window->focusWidget()->objectName();
        QTest::keyClick(window->focusWidget(), Qt::Key_Tab);
    }
    EXPECT_EQ(order, QStringList({"cmbTo", "txtTo", "txtSubject", "txtMessage", "picAttachments"}));
}

TEST_F(frmComposeControlsTest, EveryInputHasANameForScreenReaders) {
    Open();
    QStringList buddies;
    for (const QLabel *label : window->findChildren<QLabel *>())
        if (label->buddy())
            buddies << label->buddy()->objectName();
    EXPECT_EQ(buddies, QStringList({"cmbTo", "txtTo", "txtSubject"}));
    EXPECT_EQ(Body()->accessibleName(), "Message");
    EXPECT_EQ(Indicator()->accessibleName(), "Attachments");
}

TEST_F(frmComposeControlsTest, FitsASmallScreenAndKeepsItsShape) {
    List(QString(200, u'n'), "");
    Open();
    const QSize least = window->minimumSizeHint();
    EXPECT_LE(least.width(), 800);
    EXPECT_LE(least.height(), 600);
    Find<StatusLabel>("lblStatus")->setText(QString(1000, u'w'));
    Indicator()->show();
    QCoreApplication::processEvents();
    EXPECT_EQ(window->minimumSizeHint(), least);
}

// How much the picture of a widget, once painted, differs from its background: 0 to 255.
int Contrast(QWidget *widget) {
    const QImage picture = widget->grab().toImage();
    const int background = qGray(picture.pixel(0, 0));
    int most = 0;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            most = qMax(most, qAbs(qGray(picture.pixel(x, y)) - background));
    return most;
}

TEST_F(frmComposeControlsTest, TheIndicatorIsSeenOnLightWindowsAndOnDarkOnes) {
    const QPalette before = QApplication::palette();
    const auto restore = qScopeGuard([&] { QApplication::setPalette(before); });
    Open();
    Indicator()->show();
    for (const QPalette &colours : {QPalette(QColor(240, 240, 240)), QPalette(QColor(50, 50, 50))}) {
        QApplication::setPalette(colours);
        QCoreApplication::processEvents();
        EXPECT_GT(Contrast(Indicator()), 100) << colours.color(QPalette::Window).name().toStdString();
    }
}

TEST_F(frmComposeControlsTest, MenuEntriesHaveTheirIcons) {
    Open();
    for (const char *name :
         {"mnuMessageSend", "mnuMessageOpen", "mnuMessageSave", "mnuMessageAttach", "mnuInsSignature"})
        EXPECT_FALSE(Find<QAction>(name)->icon().isNull()) << name;
}

TEST_F(frmComposeControlsTest, ALongNameOfAListEndsInDotsAndIsToldWhole) {
    const QString name(200, u'n');
    List(name, "");
    host.Current = name;
    Open();
    const auto *chooser = Find<NameChooser>("cmbTo");
    EXPECT_TRUE(chooser->ShownText().endsWith(QChar(0x2026)));
    EXPECT_EQ(chooser->toolTip(), name);
    window->resize(window->width() + 40, window->height());
    QCoreApplication::processEvents();
    EXPECT_EQ(chooser->toolTip(), name);
    EXPECT_EQ(chooser->itemData(0, Qt::ToolTipRole), name);
    EXPECT_EQ(chooser->itemData(1, Qt::ToolTipRole), QVariant());
}

TEST_F(frmComposeControlsTest, TheMenuKeyOpensTheEditMenuInTheMessage) {
    Open();
    QTest::keyClick(Body(), Qt::Key_F10, Qt::ShiftModifier);
    auto *menu = Find<QMenu>("mnuEdit");
    EXPECT_TRUE(menu->isVisible());
    menu->hide();
}

TEST_F(frmComposeControlsTest, MarkupInTheStatusIsShownAsItStands) {
    Open();
    EXPECT_EQ(Find<QLabel>("lblStatus")->textFormat(), Qt::PlainText);
}

} // namespace
} // namespace varlo

#include "core/Buttons.h"

#include "support/Printers.h"

#include <QDialog>
#include <QPushButton>
#include <QTest>
#include <gtest/gtest.h>

namespace varlo {

TEST(ButtonsTest, ButtonHasWhatIsGiven) {
    QWidget window;
    const QPushButton *button =
        NewButton(&window, "cmdSave", QStringLiteral("&Save"), QStringLiteral("Save it"), u"save");
    EXPECT_EQ(button->parent(), &window);
    EXPECT_EQ(button->objectName(), QStringLiteral("cmdSave"));
    EXPECT_EQ(button->text(), QStringLiteral("&Save"));
    EXPECT_EQ(button->toolTip(), QStringLiteral("Save it"));
    EXPECT_FALSE(button->icon().isNull());
}

TEST(ButtonsTest, EnterBelongsToTheDefaultButtonWhereverTheFocusIs) {
    QDialog window;
    QPushButton *focused = NewButton(&window, "cmdOther", QStringLiteral("Other"));
    QPushButton *ok = NewButton(&window, "cmdOK", QStringLiteral("OK"));
    ok->setDefault(true);
    QString clicked;
    for (QPushButton *button : {focused, ok})
        QObject::connect(button, &QPushButton::clicked, &window,
                         [&, button] { clicked = button->objectName(); });
    window.show();
    focused->setFocus();
    QTest::keyClick(focused, Qt::Key_Return);
    EXPECT_EQ(clicked, QStringLiteral("cmdOK"));
    EXPECT_TRUE(focused->icon().isNull());
}

} // namespace varlo

#include "core/Buttons.h"

#include "core/Literals.h"
#include "support/Printers.h"

#include <QDialog>
#include <QPushButton>
#include <QTest>
#include <gtest/gtest.h>

namespace varlo {

TEST(ButtonsTest, ButtonHasWhatIsGiven) {
    QWidget window;
    const QPushButton *button = NewButton(&window, "cmdSave", u"&Save"_s, u"Save it"_s, u"save");
    EXPECT_EQ(button->parent(), &window);
    EXPECT_EQ(button->objectName(), u"cmdSave"_s);
    EXPECT_EQ(button->text(), u"&Save"_s);
    EXPECT_EQ(button->toolTip(), u"Save it"_s);
    EXPECT_FALSE(button->icon().isNull());
}

TEST(ButtonsTest, EnterBelongsToTheDefaultButtonWhereverTheFocusIs) {
    QDialog window;
    QPushButton *focused = NewButton(&window, "cmdOther", u"Other"_s);
    QPushButton *ok = NewButton(&window, "cmdOK", u"OK"_s);
    ok->setDefault(true);
    QString clicked;
    for (QPushButton *button : {focused, ok})
        QObject::connect(button, &QPushButton::clicked, &window,
                         [&, button] { clicked = button->objectName(); });
    window.show();
    focused->setFocus();
    QTest::keyClick(focused, Qt::Key_Return);
    EXPECT_EQ(clicked, u"cmdOK"_s);
    EXPECT_TRUE(focused->icon().isNull());
}

} // namespace varlo

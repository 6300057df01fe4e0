#include "core/Buttons.h"

#include "core/Literals.h"
#include "support/Printers.h"

#include <QDialog>
#include <QLineEdit>
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

// Two buttons and a box to type in; "cmdOK" is the default.
struct ButtonsDialog {
    ButtonsDialog() {
        ok->setDefault(true);
        for (QPushButton *button : {other, ok})
            QObject::connect(button, &QPushButton::clicked, &window,
                             [this, button] { clicked << button->objectName(); });
        window.show();
    }
    QStringList Press(QWidget *focus, Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        clicked.clear();
        focus->setFocus();
        QTest::keyClick(focus, key, modifiers);
        return clicked;
    }
    QDialog window;
    QLineEdit *text = new QLineEdit(&window);
    QPushButton *other = NewButton(&window, "cmdOther", u"Other"_s);
    QPushButton *ok = NewButton(&window, "cmdOK", u"OK"_s);
    QStringList clicked;
};

TEST(ButtonsTest, EnterPressesTheButtonThatHasTheFocus) {
    ButtonsDialog dialog;
    EXPECT_EQ(dialog.Press(dialog.other, Qt::Key_Return), QStringList(u"cmdOther"_s));
    EXPECT_EQ(dialog.Press(dialog.other, Qt::Key_Enter, Qt::KeypadModifier), QStringList(u"cmdOther"_s));
    EXPECT_EQ(dialog.Press(dialog.ok, Qt::Key_Return), QStringList(u"cmdOK"_s));
    EXPECT_TRUE(dialog.other->icon().isNull());
}

TEST(ButtonsTest, EnterElsewhereBelongsToTheDefaultButton) {
    ButtonsDialog dialog;
    EXPECT_EQ(dialog.Press(dialog.text, Qt::Key_Return), QStringList(u"cmdOK"_s));
    EXPECT_EQ(dialog.Press(dialog.other, Qt::Key_Return, Qt::ControlModifier), QStringList());
}

} // namespace varlo

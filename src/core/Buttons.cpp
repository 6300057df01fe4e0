#include "core/Buttons.h"

#include "core/Icons.h"

#include <QKeyEvent>
#include <QPushButton>

namespace varlo {

namespace {

// Enter presses the button that has the focus, in a main window too; a button that is not "auto default" would
// leave the key to the default button of its dialog.
class Button : public QPushButton {
public:
    using QPushButton::QPushButton;

protected:
    void keyPressEvent(QKeyEvent *event) override {
        const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
        if (isEnter && event->modifiers() == (event->modifiers() & Qt::KeypadModifier) &&
            !event->isAutoRepeat())
            click();
        else
            QPushButton::keyPressEvent(event);
    }
};

} // namespace

QPushButton *NewButton(QWidget *parent, const char *name, const QString &caption, const QString &toolTip,
                       QStringView icon) {
    auto *button = new Button(caption, parent);
    button->setObjectName(QString::fromLatin1(name));
    button->setToolTip(toolTip);
    if (!icon.isEmpty())
        button->setIcon(Icon(icon));
    button->setAutoDefault(false);
    return button;
}

} // namespace varlo

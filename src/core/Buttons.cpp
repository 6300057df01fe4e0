#include "core/Buttons.h"

#include "core/Icons.h"

#include <QPushButton>

namespace varlo {

QPushButton *NewButton(QWidget *parent, const char *name, const QString &caption, const QString &toolTip,
                       QStringView icon) {
    auto *button = new QPushButton(caption, parent);
    button->setObjectName(QString::fromLatin1(name));
    button->setToolTip(toolTip);
    if (!icon.isEmpty())
        button->setIcon(Icon(icon));
    button->setAutoDefault(false);
    return button;
}

} // namespace varlo

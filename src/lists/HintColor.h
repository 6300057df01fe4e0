// The colour of a text that stands where nothing has been entered yet.
#pragma once

#include <QPalette>

namespace varlo {

// The colour of texts, paler: readable on the light and the dark background of a field, disabled or not.
inline QColor HintColor(const QPalette &palette) {
    QColor color = palette.color(QPalette::Active, QPalette::Text);
    color.setAlpha(170);
    return color;
}

} // namespace varlo

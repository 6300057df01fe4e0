// A drawing in any ink from the same drawing in two.
#pragma once

#include <QColor>
#include <QImage>

namespace varlo {

// The picture that `black` and `white`, one drawing in black and in white ink, would be in `ink`. Exact: how much of
// the ink shows at a pixel is what the two differ by. A null picture when they are not of one size.
QImage Inked(const QImage &black, const QImage &white, const QColor &ink);

} // namespace varlo

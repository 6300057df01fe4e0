// The drawings of the icons, from their files to pixels. One source for each kind of file that a build holds.
#pragma once

#include <QColor>
#include <QImage>
#include <QString>

namespace varlo {

// True when there is a drawing `name` ("add").
bool HasDrawing(const QString &name);

// The drawing within `size` pixels, its shape kept, with `ink` where it is drawn with ink. A null picture when there
// is no such drawing.
QImage DrawIcon(const QString &name, const QSize &size, const QColor &ink);

} // namespace varlo

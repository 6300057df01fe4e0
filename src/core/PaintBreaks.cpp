#include "core/PaintBreaks.h"

#include <QCoreApplication>

namespace varlo {

namespace {

constexpr int kInterval = 100; // ms

} // namespace

void LetWindowsPaint() {
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents | QEventLoop::ExcludeSocketNotifiers);
}

void PaintBreaks::Take() {
    if (!sinceLast_.hasExpired(kInterval))
        return;
    LetWindowsPaint();
    sinceLast_.start();
}

} // namespace varlo

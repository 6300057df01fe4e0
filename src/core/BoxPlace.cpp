#include "core/BoxPlace.h"

#include <QApplication>
#include <QDialog>
#include <QMainWindow>

#include <algorithm>

namespace varlo {

namespace {

bool IsSeen(const QWidget *window) {
    const bool isWindow = window->windowType() == Qt::Window || window->windowType() == Qt::Dialog;
    return isWindow && window->isVisible() && !window->isMinimized();
}

bool IsOnTop(const QWidget *window) {
    return window->windowFlags() & Qt::WindowStaysOnTopHint;
}

int Rank(const QWidget *window) {
    return (IsOnTop(window) ? 2 : 0) + (qobject_cast<const QMainWindow *>(window) ? 1 : 0);
}

} // namespace

QWidget *BoxParent() {
    for (QWidget *window : {QApplication::activeModalWidget(), QApplication::activeWindow()})
        if (window && IsSeen(window))
            return window;
    QWidgetList windows = QApplication::topLevelWidgets();
    windows.removeIf([](const QWidget *window) { return !IsSeen(window); });
    const auto best = std::max_element(windows.begin(), windows.end(),
                                       [](QWidget *a, QWidget *b) { return Rank(a) < Rank(b); });
    return best == windows.end() ? nullptr : *best;
}

void KeepAbove(QDialog &box) {
    const QWidgetList windows = QApplication::topLevelWidgets();
    const bool mustRise = std::any_of(windows.begin(), windows.end(), [](const QWidget *window) {
        return IsSeen(window) && IsOnTop(window);
    });
    if (mustRise)
        box.setWindowFlag(Qt::WindowStaysOnTopHint);
}

} // namespace varlo

// What the tests of the compose windows share: finding controls, answering modal dialogs, dropping files.
#pragma once

#include <QApplication>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QElapsedTimer>
#include <QMimeData>
#include <QTimer>
#include <QWidget>
#include <gtest/gtest.h>

#include <functional>

namespace varlo::test {

template<typename Control> Control *Find(const QObject *window, const char *name) {
    auto *control = window->findChild<Control *>(QString::fromLatin1(name));
    EXPECT_NE(control, nullptr) << name;
    return control;
}

// Drags `data` onto the widget and drops it there, as a desktop does that proposes to move. Returns the
// action that was taken, Qt::IgnoreAction when the widget refused.
inline Qt::DropAction DropOn(QWidget *widget, const QMimeData &data) {
    const Qt::DropActions actions = Qt::CopyAction | Qt::MoveAction;
    QDragEnterEvent enter(QPoint(5, 5), actions, &data, Qt::LeftButton, Qt::NoModifier);
    enter.ignore();
    QCoreApplication::sendEvent(widget, &enter);
    QDropEvent drop(QPointF(5, 5), actions, &data, Qt::LeftButton, Qt::NoModifier);
    drop.setDropAction(Qt::MoveAction);
    drop.ignore();
    if (enter.isAccepted())
        QCoreApplication::sendEvent(widget, &drop);
    return drop.isAccepted() ? drop.dropAction() : Qt::IgnoreAction;
}

// Waits for the modal dialog of that class, which the code under test is about to open, and calls `answer`
// with it. The test fails when none comes within five seconds.
template<typename Dialog> class WhenDialog {
public:
    explicit WhenDialog(std::function<void(Dialog &)> answer) : answer_(std::move(answer)) {
        limit_.start();
        QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { Look(); });
        timer_.start(1);
    }
    ~WhenDialog() { EXPECT_TRUE(wasSeen_) << "the dialog did not come"; }

private:
    void Look() {
        auto *dialog = qobject_cast<Dialog *>(QApplication::activeModalWidget());
        if (dialog) {
            timer_.stop();
            wasSeen_ = true;
            answer_(*dialog);
        } else if (limit_.hasExpired(5000)) {
            timer_.stop();
            if (QWidget *other = QApplication::activeModalWidget())
                other->close();
        }
    }

    std::function<void(Dialog &)> answer_;
    QTimer timer_;
    QElapsedTimer limit_;
    bool wasSeen_ = false;
};

} // namespace varlo::test

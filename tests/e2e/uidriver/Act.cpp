#include "Act.h"

#include "Find.h"
#include "core/Literals.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractScrollArea>
#include <QApplication>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QDropEvent>
#include <QInputMethodEvent>
#include <QJsonArray>
#include <QKeySequence>
#include <QLineEdit>
#include <QMimeData>
#include <QPointer>
#include <QtTest>

namespace varlo::e2e {

namespace {

QString Text(const QJsonObject &command, const char *key) {
    return command.value(QLatin1String(key)).toString();
}

QWidget *Target(const QJsonObject &command) {
    return FindUsable(Text(command, "name"), Text(command, "window"));
}

// The place that a person would click: the indicator of a check box, the middle of all else.
QPoint PlaceIn(const QWidget *widget) {
    const auto *button = qobject_cast<const QAbstractButton *>(widget);
    const bool hasIndicator = button && button->isCheckable() && !button->inherits("QPushButton");
    return hasIndicator ? QPoint(8, widget->height() / 2) : widget->rect().center();
}

void SendContextMenu(QWidget *widget, const QPoint &place) {
    QContextMenuEvent event(QContextMenuEvent::Mouse, place, widget->mapToGlobal(place));
    QApplication::sendEvent(widget, &event);
}

// A double click is a click and one more press: a list tells by the first one which row is meant.
void ClickAt(QWidget *widget, const QPoint &place, const QJsonObject &command,
             Qt::KeyboardModifiers keys = {}) {
    const bool right = Text(command, "button") == u"right"_s;
    const QPointer<QWidget> alive(widget);
    QTest::mouseClick(widget, right ? Qt::RightButton : Qt::LeftButton, keys, place);
    if (alive && command.value(QLatin1String("double")).toBool())
        QTest::mouseDClick(widget, Qt::LeftButton, keys, place);
    if (alive && right)
        SendContextMenu(widget, place);
}

void Replace(QWidget *widget, const QString &text) {
    widget->setFocus(Qt::OtherFocusReason);
    QTest::keyClick(widget, Qt::Key_A, Qt::ControlModifier);
    if (text.isEmpty()) {
        QTest::keyClick(widget, Qt::Key_Delete);
        return;
    }
    QInputMethodEvent event;
    event.setCommitString(text);
    QApplication::sendEvent(widget, &event);
}

void DropOn(QWidget *target, const QList<QUrl> &files) {
    const auto *area = qobject_cast<QAbstractScrollArea *>(target);
    QWidget *widget = area ? area->viewport() : target; // where the pointer is, inside the frame
    QMimeData data;
    data.setUrls(files);
    const QPoint place = widget->rect().center();
    QDragEnterEvent enter(place, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(widget, &enter);
    if (!enter.isAccepted())
        return; // as on the screen: the pointer forbids it
    QDropEvent drop(place, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(widget, &drop);
}

QAbstractButton *ButtonOf(const QWidget *box, const QString &caption) {
    for (QAbstractButton *button : box->findChildren<QAbstractButton *>())
        if (button->isVisible() && Plain(button->text()) == caption)
            return button;
    throw Refusal{u"the box \""_s + box->windowTitle() + u"\" has no button "_s + caption};
}

QLineEdit *InputOf(const QWidget *box) {
    if (auto *fileName = box->findChild<QLineEdit *>(u"fileNameEdit"_s)) // Qt's own file chooser
        return fileName;
    const auto lines = box->findChildren<QLineEdit *>();
    if (lines.isEmpty())
        throw Refusal{u"the box has no line for a text"_s};
    return lines.first();
}

} // namespace

Doing Click(const QJsonObject &command) {
    return [widget = QPointer<QWidget>(Target(command)), command] {
        if (widget)
            ClickAt(widget, PlaceIn(widget), command);
    };
}

Doing ClickRow(const QJsonObject &command) {
    auto *view = As<QAbstractItemView>(Target(command));
    const QModelIndex index = view->model()->index(command.value(QLatin1String("row")).toInt(), 0);
    if (!index.isValid())
        throw Refusal{view->objectName() + u" has no such row"_s};
    const bool add = command.value(QLatin1String("add")).toBool();
    return [view = QPointer(view), index = QPersistentModelIndex(index), command, add] {
        if (!view || !index.isValid())
            return;
        view->scrollTo(index);
        ClickAt(view->viewport(), view->visualRect(index).center(), command,
                add ? Qt::ControlModifier : Qt::NoModifier);
    };
}

Doing TypeText(const QJsonObject &command) {
    return [widget = QPointer<QWidget>(Target(command)), text = Text(command, "text")] {
        if (!widget)
            return;
        widget->setFocus(Qt::OtherFocusReason);
        for (const QChar c : text)
            if (widget)
                QTest::sendKeyEvent(QTest::Click, widget,
                                    c == u'\n' ? Qt::Key_Return : QTest::asciiToKey(c.toLatin1()),
                                    c == u'\n' ? u"\r"_s : QString(c), Qt::NoModifier);
    };
}

Doing EnterText(const QJsonObject &command) {
    return [widget = QPointer<QWidget>(Target(command)), text = Text(command, "text")] {
        if (widget)
            Replace(widget, text);
    };
}

Doing PressKeys(const QJsonObject &command) {
    const QKeySequence keys(Text(command, "keys"));
    if (keys.isEmpty() || keys[0].key() == Qt::Key_unknown)
        throw Refusal{u"there is no key "_s + Text(command, "keys")};
    return [widget = QPointer<QWidget>(Target(command)), keys] {
        if (!widget)
            return;
        if (widget->focusPolicy() != Qt::NoFocus)
            widget->setFocus(Qt::OtherFocusReason);
        for (int i = 0; i < keys.count() && widget; ++i)
            QTest::keyClick(widget, keys[static_cast<uint>(i)].key(),
                            keys[static_cast<uint>(i)].keyboardModifiers());
    };
}

Doing SelectEntry(const QJsonObject &command) {
    auto *combo = As<QComboBox>(Target(command));
    const int index = command.contains(QLatin1String("index")) ? command.value(QLatin1String("index")).toInt()
                                                               : combo->findText(Text(command, "text"));
    if (index < 0 || index >= combo->count())
        throw Refusal{combo->objectName() + u" has no such entry"_s};
    return [combo = QPointer(combo), index] {
        if (!combo)
            return;
        combo->showPopup();
        combo->view()->setCurrentIndex(
            combo->model()->index(index, combo->modelColumn(), combo->rootModelIndex()));
        QTest::keyClick(combo->view(), Qt::Key_Return);
    };
}

Doing DropFiles(const QJsonObject &command) {
    QWidget *widget = Target(command);
    while (!widget->acceptDrops() && widget->parentWidget() && !widget->isWindow())
        widget = widget->parentWidget();
    if (!widget->acceptDrops())
        throw Refusal{Text(command, "name") + u" takes no files"_s};
    QList<QUrl> files;
    for (const QJsonValue &file : command.value(QLatin1String("files")).toArray())
        files << QUrl::fromLocalFile(file.toString());
    return [widget = QPointer(widget), files] {
        if (widget)
            DropOn(widget, files);
    };
}

Doing CloseWindow(const QJsonObject &command) {
    return [window = QPointer<QWidget>(Target(command)->window())] {
        if (window)
            window->close();
    };
}

Doing ChooseAction(const QJsonObject &command) {
    return [action = QPointer<QAction>(FindUsableAction(Text(command, "name")))] {
        if (!action)
            return;
        if (QMenu *menu = OpenMenuOf(action))
            QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(action).center());
        else
            action->trigger();
    };
}

Doing AnswerBox(const QJsonObject &command) {
    QWidget *box = ModalBox();
    const bool hasInput = command.contains(QLatin1String("input"));
    QLineEdit *line = hasInput ? InputOf(box) : nullptr;
    QAbstractButton *button = ButtonOf(box, Text(command, "button"));
    return [line = QPointer(line), button = QPointer(button), text = Text(command, "input")] {
        if (line)
            Replace(line, text);
        if (button)
            QTest::mouseClick(button, Qt::LeftButton, {}, button->rect().center());
    };
}

} // namespace varlo::e2e

#include "core/MessageBox.h"

#include "core/Literals.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QLayout>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>

namespace varlo {

namespace {

constexpr qsizetype kLongestText = 20'000; // characters, some 300 lines
constexpr int kTextWidth = 480;            // pixels, where a scroll bar is needed

} // namespace

MessageBox::MessageBox(Icon icon, const QString &title, const QString &text, StandardButtons buttons,
                       QWidget *parent)
    : QMessageBox(icon, title, QString(), buttons, parent) {
    setTextFormat(Qt::PlainText);
    setText(text.size() > kLongestText ? text.left(kLongestText) + u"\n[...]"_s : text);
    if (NeedsAButton())
        setWindowFlag(Qt::WindowCloseButtonHint, false);
    RemoveButtonIcons(*this);
    FitText();
}

void MessageBox::FitText() {
    const QSize room = screen()->availableSize();
    const int width = qMin(kTextWidth, room.width() * 2 / 3);
    const QRect column(0, 0, width, 1 << 24);
    if (fontMetrics().boundingRect(column, Qt::TextWrapAnywhere, text()).height() < room.height() / 2)
        return;
    setText(Breakable(text(), u'\n'));
    auto *label = findChild<QLabel *>(u"qt_msgbox_label"_s);
    auto *area = new QScrollArea(this);
    delete layout()->replaceWidget(label, area);
    label->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    area->setWidget(label);
    area->setWidgetResizable(true);
    area->setFrameShape(QFrame::NoFrame);
    area->setMinimumSize(width, room.height() / 2);
}

void MessageBox::keyPressEvent(QKeyEvent *event) {
    if (NeedsAButton() && event->matches(QKeySequence::Cancel))
        event->ignore();
    else
        QMessageBox::keyPressEvent(event);
}

void MessageBox::closeEvent(QCloseEvent *event) {
    if (NeedsAButton())
        event->ignore();
    else
        QMessageBox::closeEvent(event);
}

QString Breakable(const QString &text, QChar mark) {
    constexpr int kLongestWord = 40;
    QString broken;
    int run = 0;
    for (QChar c : text) {
        run = c.isSpace() ? 0 : run + 1;
        if (run > 0 && run % kLongestWord == 0)
            broken += mark;
        broken += c;
    }
    return broken;
}

void RemoveButtonIcons(QDialog &dialog) {
    for (QPushButton *button : dialog.findChildren<QPushButton *>())
        button->setIcon(QIcon());
}

} // namespace varlo

#include "app/frmConsole.h"

#include "core/Literals.h"
#include "core/Session.h"

#include <QCloseEvent>
#include <QPlainTextEdit>
#include <QShortcut>
#include <QTextCursor>

#include <chrono>
#include <utility>

namespace varlo {

namespace {

using namespace std::chrono_literals;
constexpr auto kFlushInterval = 50ms; // quick enough to look immediate

// The text box forgets its oldest lines by itself, but slowly: more than these are better put in anew.
constexpr int kFewLines = 5000;

// Below this size, in pixels each way, a window is minimised rather than resized.
constexpr int kSmallestInnerSize = 10;

} // namespace

frmConsole::frmConsole(Session &session, QWidget *parent) : QWidget(parent, Qt::Window), session_(session) {
    CreateControls();
    LayOut();
    ConnectControls();
}

void frmConsole::CreateControls() {
    setObjectName(u"frmConsole"_s);
    setWindowTitle(u"Console"_s);
    txtConsole = new QPlainTextEdit(this);
    txtConsole->setObjectName(u"txtConsole"_s);
    txtConsole->setAccessibleName(u"Console"_s);
    txtConsole->setReadOnly(true);
    txtConsole->setUndoRedoEnabled(false);            // an undo step for each line would double the memory
    txtConsole->setMaximumBlockCount(kMostLines + 1); // the last one is the empty line behind the last end
    flushTimer_.setSingleShot(true);
    flushTimer_.setInterval(kFlushInterval);
}

void frmConsole::LayOut() {
    resize(640, 360);
}

void frmConsole::ConnectControls() {
    connect(&session_.Status, &StatusFeed::ConsoleLine, this, &frmConsole::Collect);
    connect(&flushTimer_, &QTimer::timeout, this, &frmConsole::Flush);
    connect(txtConsole, &QPlainTextEdit::textChanged, this, &frmConsole::txtConsole_Change);
    for (const QKeySequence &keys : {QKeySequence(Qt::Key_Escape), QKeySequence(Qt::CTRL | Qt::Key_W)})
        connect(new QShortcut(keys, this), &QShortcut::activated, this, &QWidget::close);
}

void frmConsole::ShowAtEnd() {
    if (isMinimized())
        showNormal();
    else
        show();
    raise();
    activateWindow();
    txtConsole_Change();
}

void frmConsole::Collect(const QString &line) {
    collected_ += line;
    collected_ += u'\n';
    collectedLines_ += line.count(u'\n') + 1; // a chunk of a message is many lines
    if (collectedLines_ >= 2 * kMostLines || collected_.size() > kMostText)
        ForgetOldest();
    if (isVisible() && !flushTimer_.isActive())
        flushTimer_.start();
}

// Once for every kMostLines lines, and of long ones half at a time, so that a line costs the same however much
// there is.
void frmConsole::ForgetOldest() {
    const qsizetype text = collected_.size() > kMostText ? kMostText / 2 : kMostText;
    qsizetype end = 0;
    for (; collectedLines_ > kMostLines || collected_.size() - end > text; --collectedLines_)
        end = collected_.indexOf(u'\n', end) + 1;
    collected_ = collected_.sliced(end);
}

void frmConsole::Flush() {
    if (collected_.isEmpty() || !isVisible())
        return;
    const qsizetype shown = txtConsole->blockCount() - 1;
    const bool isTooLong = txtConsole->document()->characterCount() + collected_.size() > kMostText;
    if (isTooLong || (collectedLines_ > kFewLines && shown + collectedLines_ > kMostLines)) {
        collected_.prepend(txtConsole->toPlainText());
        collectedLines_ += shown;
        txtConsole->clear();
        ForgetOldest();
    }
    QTextCursor end(txtConsole->document());
    end.movePosition(QTextCursor::End);
    collectedLines_ = 0;
    end.insertText(std::exchange(collected_, QString()));
}

void frmConsole::txtConsole_Change() {
    txtConsole->moveCursor(QTextCursor::End);
    txtConsole->ensureCursorVisible();
}

void frmConsole::showEvent(QShowEvent *event) {
    Flush();
    QWidget::showEvent(event);
}

void frmConsole::resizeEvent(QResizeEvent *event) {
    if (width() > kSmallestInnerSize && height() > kSmallestInnerSize)
        txtConsole->setGeometry(rect());
    QWidget::resizeEvent(event);
}

void frmConsole::closeEvent(QCloseEvent *event) {
    if (session_.AppExiting) {
        QWidget::closeEvent(event);
        return;
    }
    event->ignore();
    hide();
}

} // namespace varlo

#include "compose/MessageEdit.h"

#include "compose/LineEnds.h"
#include "compose/TextChange.h"
#include "compose/WordBoundary.h"
#include "core/Literals.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QFont>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMimeData>
#include <QTextBlock>
#include <QTextDocument>

namespace varlo {

namespace {

// QMimeData::hasText is also true for files, whose names would be pasted.
bool HasPlainText(const QMimeData *data) {
    return data && data->hasFormat(u"text/plain"_s);
}

QFont FixedPitchFont() {
    QFont font(u"Courier New"_s, 10);
    font.setStyleHint(QFont::Monospace); // where there is no such font
    font.setFixedPitch(true);
    return font;
}

} // namespace

MessageEdit::MessageEdit(QWidget *parent) : QPlainTextEdit(parent) {
    setUndoRedoEnabled(false);
    setFont(FixedPitchFont());
    setTabChangesFocus(true);
}

QString MessageEdit::Text() const {
    return WithCrLf(document()->toRawText());
}

void MessageEdit::SetText(const QString &text) {
    setPlainText(text);
}

void MessageEdit::ChangeText(const QString &text) {
    const TextChange change = ChangeBetween(document()->toRawText(), WithParagraphs(text));
    QTextCursor cursor = textCursor();
    cursor.setPosition(static_cast<int>(change.At));
    cursor.setPosition(static_cast<int>(change.At + change.Length), QTextCursor::KeepAnchor);
    cursor.insertText(change.Text);
    setTextCursor(cursor);
}

void MessageEdit::SetCaret(qsizetype position) {
    QTextCursor caret = textCursor();
    caret.setPosition(static_cast<int>(DocumentPosition(Text(), position)));
    setTextCursor(caret);
}

void MessageEdit::InsertAtCaret(const QString &text) {
    QTextCursor caret = textCursor();
    caret.clearSelection();
    caret.insertText(text);
    setTextCursor(caret);
    ensureCursorVisible();
}

QString MessageEdit::SelectedText() const {
    return WithLineFeeds(textCursor().selectedText());
}

void MessageEdit::Copy() {
    if (textCursor().hasSelection())
        QGuiApplication::clipboard()->setText(SelectedText());
    setFocus();
}

void MessageEdit::Cut() {
    Copy();
    textCursor().removeSelectedText();
}

void MessageEdit::Paste() {
    const QMimeData *clip = QGuiApplication::clipboard()->mimeData();
    if (HasPlainText(clip))
        insertFromMimeData(clip);
    setFocus();
}

void MessageEdit::SelectEverything() {
    setFocus();
    selectAll();
}

// Line by line: a message of a megabyte must not be copied for every word that goes.
void MessageEdit::DeleteWord() {
    QTextCursor word = textCursor();
    if (!word.hasSelection() && word.atBlockStart()) {
        word.movePosition(QTextCursor::PreviousCharacter, QTextCursor::KeepAnchor);
    } else if (!word.hasSelection()) {
        const QTextBlock line = word.block();
        const qsizetype start = WordStartBefore(line.text(), word.positionInBlock());
        word.setPosition(line.position() + static_cast<int>(start), QTextCursor::KeepAnchor);
    }
    word.removeSelectedText();
    setTextCursor(word);
}

void MessageEdit::keyPressEvent(QKeyEvent *event) {
    bool taken = false;
    if (event->modifiers() == Qt::ControlModifier)
        Q_EMIT ControlKey(event->key(), &taken);
    if (event->key() == Qt::Key_F10 && event->modifiers() == Qt::ShiftModifier)
        OpenMenuAtCaret(); // the menu key comes as an event of its own
    else if (!taken)
        QPlainTextEdit::keyPressEvent(event);
}

void MessageEdit::contextMenuEvent(QContextMenuEvent *event) {
    if (event->reason() == QContextMenuEvent::Mouse)
        Q_EMIT MenuWanted(event->globalPos());
    else
        OpenMenuAtCaret();
}

void MessageEdit::OpenMenuAtCaret() {
    ensureCursorVisible();
    Q_EMIT MenuWanted(viewport()->mapToGlobal(cursorRect().bottomLeft()));
}

bool MessageEdit::canInsertFromMimeData(const QMimeData *source) const {
    return HasPlainText(source);
}

void MessageEdit::insertFromMimeData(const QMimeData *source) {
    if (!HasPlainText(source))
        return;
    textCursor().insertText(source->text());
    ensureCursorVisible();
}

QMimeData *MessageEdit::createMimeDataFromSelection() const {
    auto *plain = new QMimeData;
    plain->setText(SelectedText());
    return plain;
}

} // namespace varlo

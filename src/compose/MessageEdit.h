// The text box of the message body: plain text only, with the program's own undo and clipboard commands.
#pragma once

#include <QPlainTextEdit>

namespace varlo {

// Texts and positions count with CR LF line ends; inside the widget a line break is one character, and the
// conversion happens here only. The undo of the text box itself is off.
class MessageEdit : public QPlainTextEdit {
    Q_OBJECT

public:
    explicit MessageEdit(QWidget *parent = nullptr);

    QString Text() const;
    // Replaces the whole text and puts the caret at its start.
    void SetText(const QString &text);
    // The same for undo and redo: only what differs is touched, so that a step through a large message is
    // instant. The caret is where the change ends.
    void ChangeText(const QString &text);
    void SetCaret(qsizetype position);

    // Inserts `text` at the caret; a selection is given up, its text stays.
    void InsertAtCaret(const QString &text);

    // Each gives the focus to the text box.
    void Copy();
    void Cut();
    void Paste(); // does nothing unless the clipboard holds plain text
    void SelectEverything();

    // Deletes the selection or, without one, the word before the caret.
    void DeleteWord();

Q_SIGNALS:
    // A key was pressed with Ctrl and no other modifier; set `*taken` to keep it from the text box.
    void ControlKey(int key, bool *taken);
    // By the right mouse button, there; by the menu key or Shift+F10, at the caret. On the screen.
    void MenuWanted(const QPoint &at);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    bool canInsertFromMimeData(const QMimeData *source) const override;
    void insertFromMimeData(const QMimeData *source) override;
    QMimeData *createMimeDataFromSelection() const override;

private:
    QString SelectedText() const;
    void OpenMenuAtCaret();
};

} // namespace varlo

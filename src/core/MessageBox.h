// A message box that fits on the screen and is not answered by accident.
#pragma once

#include <QMessageBox>

namespace varlo {

// What Qt's own box does, and: a question with only Yes and No is answered by its buttons alone, never by Esc
// or by closing it; a text too tall for the screen gets a scroll bar, one that no scroll bar helps is cut (its
// whole stands in the log); no icons on the buttons.
class MessageBox : public QMessageBox {
public:
    MessageBox(Icon icon, const QString &title, const QString &text, StandardButtons buttons,
               QWidget *parent = nullptr);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private:
    bool NeedsAButton() const { return standardButtons() == (Yes | No); }
    void FitText();
};

// The text with `mark`, a line break or a place for one, in words that no line can hold: a name can have 255
// characters without a blank.
QString Breakable(const QString &text, QChar mark);

// Takes the toolkit's icons off the buttons of a dialog: those of this program have none there.
void RemoveButtonIcons(QDialog &dialog);

} // namespace varlo

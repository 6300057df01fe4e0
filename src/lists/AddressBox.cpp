#include "lists/AddressBox.h"

#include "lists/AddressRules.h"
#include "lists/HintColor.h"

#include <QKeyEvent>

namespace varlo {

AddressBox::AddressBox(QWidget *parent) : QLineEdit(parent) {
    connect(this, &QLineEdit::textChanged, this, &AddressBox::Clean);
    ShowPlaceholder();
}

// Whether what is typed comes to stand at the start or the end of the text.
bool AddressBox::IsAtEnd() const {
    const qsizetype start = hasSelectedText() ? selectionStart() : cursorPosition();
    const qsizetype end = hasSelectedText() ? selectionEnd() : cursorPosition();
    return start == 0 || end == text().size();
}

void AddressBox::keyPressEvent(QKeyEvent *event) {
    if (event->text() != u" " || !IsAtEnd())
        return QLineEdit::keyPressEvent(event);
    if (hasSelectedText())
        del(); // the blank takes its place, and is dropped
}

void AddressBox::Clean() {
    const QString clean = CleanTypedAddress(text());
    if (clean == text())
        return;
    const auto cut = text().lastIndexOf(clean); // in front
    const auto caret = std::clamp<qsizetype>(cursorPosition() - cut, 0, clean.size());
    setText(clean); // a change of its own, which comes here again
    if (clean == text())
        setCursorPosition(static_cast<int>(caret));
}

void AddressBox::changeEvent(QEvent *event) {
    QLineEdit::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        ShowPlaceholder();
}

// A palette keeps a dark placeholder when everything else of it becomes light on dark.
void AddressBox::ShowPlaceholder() {
    const QColor wanted = HintColor(palette());
    if (palette().color(QPalette::PlaceholderText) == wanted)
        return;
    QPalette own; // sets this one color, so that all others go on following the window
    own.setColor(QPalette::PlaceholderText, wanted);
    setPalette(own);
}

} // namespace varlo

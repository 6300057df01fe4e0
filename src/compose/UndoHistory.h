// The undo history of the message body: a hundred slots of text and the slot that is shown.
#pragma once

#include "compose/TextChange.h"

#include <QString>

#include <deque>
#include <vector>

namespace varlo {

// The newest state sits in slot 99, older ones below it; a slot that holds no state reads "smeebux". Only the
// shown text is kept whole: each other state is kept as its difference from its neighbour on the side of the
// shown one, so that a hundred states of a large message cost little more than one.
//
// The text a message starts with is no state until it is changed; undo never leads back before the first
// change. A message that reads exactly "smeebux" looks like an empty slot: undo and redo stop short of it,
// and that is all it does. The states beyond it stay as they are, and the next change goes on from the text
// that is shown.
class UndoHistory {
public:
    static constexpr qint16 kSlots = 100;
    static constexpr qint16 kNewest = kSlots - 1;

    // Empties every slot and forgets the shown text.
    void Clear();

    // Takes `text` as the newest state and shows it; states that had been undone are discarded, so that the
    // state shown before is always the one that the next undo brings back. Does nothing while Suppress is
    // set. Linear in the length of the text.
    void Record(const QString &text);

    // Step to the neighbouring state. False, with nothing changed, when there is none on that side.
    bool Undo();
    bool Redo();

    // The text of the slot that is shown; empty until the first Record.
    const QString &Shown() const { return shown_; }
    qint16 Position() const { return static_cast<qint16>(kNewest - static_cast<qint16>(redo_.size())); }
    // The content of one slot, 0 to 99. Throws RuntimeError 5 for any other number.
    QString Slot(int slot) const;

    // Bytes that the texts of all states take together.
    qsizetype StoredBytes() const;

    // Set while undo or redo writes the text into the window, so that this write is not recorded.
    bool Suppress = false;

private:
    QString shown_;
    bool hasState_ = false;        // slot 99 holds a state
    std::deque<TextChange> undo_;  // each leads to the next older state; the nearest is last
    std::vector<TextChange> redo_; // each leads to the next newer state; the nearest is last
};

// Where the caret goes after undo or redo: before the line break and signature that close the message, or to
// the end. `text` and the result count with CR LF line ends. Without a signature there is nothing to stay in
// front of.
qsizetype CaretAfterUndo(const QString &text, const QString &signature);

} // namespace varlo

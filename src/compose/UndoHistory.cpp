#include "compose/UndoHistory.h"

#include "core/Literals.h"
#include "core/RuntimeError.h"

namespace varlo {

namespace {

const QString kNoState = u"smeebux"_s;

} // namespace

void UndoHistory::Clear() {
    *this = UndoHistory();
}

void UndoHistory::Record(const QString &text) {
    if (Suppress)
        return;
    redo_.clear();
    if (hasState_)
        undo_.push_back(ChangeBetween(text, shown_));
    if (undo_.size() > kNewest)
        undo_.pop_front();
    shown_ = text;
    hasState_ = true;
}

bool UndoHistory::Undo() {
    if (undo_.empty() || Slot(Position() - 1) == kNoState)
        return false;
    redo_.push_back(Apply(undo_.back(), shown_));
    undo_.pop_back();
    return true;
}

bool UndoHistory::Redo() {
    if (redo_.empty() || Slot(Position() + 1) == kNoState)
        return false;
    undo_.push_back(Apply(redo_.back(), shown_));
    redo_.pop_back();
    return true;
}

QString UndoHistory::Slot(int slot) const {
    if (slot < 0 || slot > kNewest)
        throw RuntimeError(InvalidProcedureCall);
    const int older = Position() - slot; // negative: towards newer states
    if (!hasState_ || older > static_cast<int>(undo_.size()))
        return kNoState;
    QString text = shown_;
    for (int i = 1; i <= older; ++i)
        Apply(undo_[undo_.size() - static_cast<size_t>(i)], text);
    for (int i = 1; i <= -older; ++i)
        Apply(redo_[redo_.size() - static_cast<size_t>(i)], text);
    return text;
}

qsizetype UndoHistory::StoredBytes() const {
    qsizetype characters = shown_.capacity();
    for (const TextChange &step : undo_)
        characters += step.Text.capacity();
    for (const TextChange &step : redo_)
        characters += step.Text.capacity();
    return characters * static_cast<qsizetype>(sizeof(QChar));
}

qsizetype CaretAfterUndo(const QString &text, const QString &signature) {
    const QString closing = u"\r\n"_s + signature;
    if (!signature.isEmpty() && text.contains(closing))
        return text.size() - closing.size();
    return text.size();
}

} // namespace varlo

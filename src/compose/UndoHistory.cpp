#include "compose/UndoHistory.h"

#include "core/RuntimeError.h"

#include <algorithm>
#include <iterator>

namespace varlo {

namespace {

const QString kNoState = QStringLiteral("smeebux");

} // namespace

void UndoHistory::Clear() {
    *this = UndoHistory();
}

void UndoHistory::Record(const QString &text) {
    if (Suppress)
        return;
    redo_.clear();
    if (hasState_)
        undo_.push_back(Difference(text, shown_));
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
    for (const Step &step : undo_)
        characters += step.Text.capacity();
    for (const Step &step : redo_)
        characters += step.Text.capacity();
    return characters * static_cast<qsizetype>(sizeof(QChar));
}

UndoHistory::Step UndoHistory::Difference(const QString &from, const QString &to) {
    const auto [fromDiffers, toDiffers] = std::mismatch(from.cbegin(), from.cend(), to.cbegin(), to.cend());
    const auto [fromRest, toRest] = std::mismatch(from.crbegin(), std::make_reverse_iterator(fromDiffers),
                                                  to.crbegin(), std::make_reverse_iterator(toDiffers));
    const qsizetype prefix = fromDiffers - from.cbegin();
    const qsizetype suffix = fromRest - from.crbegin();
    return {prefix, from.size() - prefix - suffix, to.sliced(prefix, to.size() - prefix - suffix)};
}

// Returns the step that leads back.
UndoHistory::Step UndoHistory::Apply(const Step &step, QString &text) {
    Step back{step.At, step.Text.size(), text.sliced(step.At, step.Length)};
    text.replace(step.At, step.Length, step.Text);
    return back;
}

qsizetype CaretAfterUndo(const QString &text, const QString &signature) {
    const QString closing = QStringLiteral("\r\n") + signature;
    if (!signature.isEmpty() && text.contains(closing))
        return text.size() - closing.size();
    return text.size();
}

} // namespace varlo

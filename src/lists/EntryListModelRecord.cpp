// The part of a list box that keeps what changed and goes back to it.
#include "lists/EntryListModel.h"

#include <iterator>

namespace varlo {

namespace {

// More rows than this are put back as one reset: each costs the views a round of signals.
constexpr qsizetype kFewRows = 64;

} // namespace

void EntryListModel::NoteAdded(const Row &row) {
    if (record_)
        record_->Added.append(row);
}

void EntryListModel::NoteRemoved(const Row &row) {
    if (record_)
        record_->Removed.append(row);
}

// Without sorting what nobody has looked at: an alphabetical list goes by the texts.
void EntryListModel::NoteAll(QList<EntryRow> RowsChange::*part) {
    if (!record_)
        return;
    rows_.ForEach([&](const Row &row) { (record_->*part).append(row); });
    for (const QString &text : unsorted_)
        (record_->*part).append({text, 0});
}

void EntryListModel::Exchange(const QList<EntryRow> &out, const QList<EntryRow> &in) {
    RowsChange *const record = std::exchange(record_, nullptr);
    RemoveRows(RowsStill(out));
    PutBack(in);
    record_ = record;
}

QList<int> EntryListModel::RowsStill(const QList<EntryRow> &rows) const {
    if (IsAlphabetical()) {
        QStringList texts;
        for (const EntryRow &row : rows)
            texts.append(row.Text);
        return RowsOf(texts);
    }
    QList<int> still;
    for (const EntryRow &row : rows)
        if (const int at = RowOfSerial(row.Serial); at < Count() && rows_.At(at) == row)
            still.append(at);
    std::sort(still.begin(), still.end());
    return still;
}

void EntryListModel::PutBack(QList<EntryRow> rows) {
    std::sort(rows.begin(), rows.end(),
              [](const EntryRow &a, const EntryRow &b) { return a.Serial < b.Serial; });
    if (rows.size() > kFewRows)
        return Merge(rows);
    for (const EntryRow &row : std::as_const(rows)) {
        const int at = IsAlphabetical() ? PlaceOf(row.Text) : RowOfSerial(row.Serial);
        beginInsertRows({}, at, at);
        Index(row);
        rows_.Insert(at, row);
        endInsertRows();
    }
}

void EntryListModel::Merge(const QList<EntryRow> &rows) {
    if (IsAlphabetical()) {
        QStringList texts = Entries();
        for (const EntryRow &row : rows)
            texts.append(row.Text);
        nextSerial_ += static_cast<quint32>(texts.size());
        return Reset({}, texts);
    }
    ChunkedRows<Row> merged;
    auto next = rows.begin();
    rows_.ForEach([&](const Row &row) {
        for (; next != rows.end() && next->Serial < row.Serial; ++next)
            merged.Append(*next);
        merged.Append(row);
    });
    for (; next != rows.end(); ++next)
        merged.Append(*next);
    Reset(std::move(merged));
}

} // namespace varlo

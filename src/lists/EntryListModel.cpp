#include "lists/EntryListModel.h"

#include "core/RuntimeError.h"
#include "core/modPublic.h"

#include <QScopeGuard>

#include <numeric>

namespace varlo {

namespace {

// More separate ranges than this are removed as one reset: each range costs the views a round of signals.
constexpr int kMostRanges = 64;

bool ComesBefore(const QString &a, const QString &lowerB, const QString &b) {
    const int byLower = LowerCased(a).compare(lowerB);
    return byLower != 0 ? byLower < 0 : a < b;
}

// Where the texts stand, in alphabetical order. Sorting looks at each text some fifteen times, so it is
// lower-cased before. A merge sort has little to do where a file is in order, or nearly.
std::vector<qsizetype> Sorted(const QStringList &texts) {
    QStringList lowers;
    lowers.reserve(texts.size());
    for (const QString &text : texts)
        lowers.append(LowerCased(text));
    std::vector<qsizetype> places(static_cast<size_t>(texts.size()));
    std::iota(places.begin(), places.end(), 0);
    std::stable_sort(places.begin(), places.end(), [&](qsizetype a, qsizetype b) {
        const int byLower = lowers[a].compare(lowers[b]);
        return byLower != 0 ? byLower < 0 : texts[a] < texts[b];
    });
    return places;
}

QList<std::pair<int, int>> RangesOf(const QList<int> &rows) {
    QList<std::pair<int, int>> ranges;
    for (int row : rows) {
        if (!ranges.isEmpty() && ranges.last().second + 1 == row)
            ranges.last().second = row;
        else
            ranges.append({row, row});
    }
    return ranges;
}

} // namespace

EntryListModel::EntryListModel(Order order, QObject *parent) : QAbstractListModel(parent), order_(order) {
}

int EntryListModel::rowCount(const QModelIndex &parent) const {
    return parent.isValid() ? 0 : Count();
}

QVariant EntryListModel::data(const QModelIndex &index, int role) const {
    const bool isText = role == Qt::DisplayRole || role == Qt::EditRole;
    if (!isText || !index.isValid() || index.row() >= Count())
        return {};
    return Entry(index.row());
}

QStringList EntryListModel::Entries() const {
    QStringList entries;
    entries.reserve(Count());
    Rows().ForEach([&](const Row &row) { entries.append(row.Text); });
    return entries;
}

ChunkedRows<EntryListModel::Row> &EntryListModel::Rows() const {
    if (!unsorted_.isEmpty()) {
        quint32 serial = nextSerial_ - static_cast<quint32>(unsorted_.size());
        const QStringList texts = std::exchange(unsorted_, {});
        for (const qsizetype place : Sorted(texts))
            rows_.Append({texts[place], serial++});
    }
    return rows_;
}

QHash<QString, EntryListModel::Serials> &EntryListModel::MadeIndex() const {
    if (!isIndexed_) {
        index_.reserve(Count());
        rows_.ForEach([this](const Row &row) { AddToIndex(row); });
        isIndexed_ = true;
    }
    return index_;
}

void EntryListModel::Reset(ChunkedRows<Row> rows, const QStringList &unsorted) {
    beginResetModel();
    index_ = {};
    isIndexed_ = false;
    unsorted_ = unsorted;
    rows_ = std::move(rows);
    endResetModel();
}

void EntryListModel::SetEntries(const QStringList &entries) {
    const QStringList fitting = entries.mid(0, kMostEntries); // shared, when all fit
    const quint32 firstSerial =
        std::exchange(nextSerial_, nextSerial_ + static_cast<quint32>(fitting.size()));
    if (IsAlphabetical()) {
        Reset({}, fitting);
    } else {
        ChunkedRows<Row> rows;
        for (const QString &text : fitting)
            rows.Append({text, firstSerial + static_cast<quint32>(rows.Size())});
        Reset(std::move(rows));
    }
    if (fitting.size() < entries.size())
        throw RuntimeError(Overflow);
}

void EntryListModel::ReplaceAll(const QStringList &entries) {
    NoteAll(&RowsChange::Removed);
    const auto noted = qScopeGuard([this] { NoteAll(&RowsChange::Added); });
    SetEntries(entries);
}

int EntryListModel::Add(const QString &entry) {
    if (Count() >= kMostEntries)
        throw RuntimeError(Overflow);
    const int row = PlaceOf(entry);
    InsertRow(row, entry);
    return row;
}

void EntryListModel::AddAll(const QStringList &entries) {
    const QStringList fitting = entries.first(qMin<qsizetype>(entries.size(), kMostEntries - Count()));
    if (IsAlphabetical())
        for (const QString &entry : fitting)
            InsertRow(PlaceOf(entry), entry);
    else if (!fitting.isEmpty())
        Append(fitting);
    if (fitting.size() < entries.size())
        throw RuntimeError(Overflow);
}

void EntryListModel::Append(const QStringList &entries) {
    int row = Count();
    beginInsertRows({}, row, row + static_cast<int>(entries.size()) - 1);
    for (const QString &entry : entries) {
        const Row added{entry, nextSerial_++};
        Index(added);
        NoteAdded(added);
        rows_.Insert(row++, added);
    }
    endInsertRows();
}

int EntryListModel::Replace(int row, const QString &entry) {
    if (IsAlphabetical()) {
        Remove(row);
        return Add(entry);
    }
    const quint32 serial = rows_.At(row).Serial;
    NoteRemoved(rows_.At(row));
    Unindex(row);
    rows_.SetAt(row, {entry, serial});
    Index(rows_.At(row));
    NoteAdded(rows_.At(row));
    Q_EMIT dataChanged(index(row), index(row));
    return row;
}

void EntryListModel::Remove(int row) {
    beginRemoveRows({}, row, row);
    RemoveRow(row);
    endRemoveRows();
}

void EntryListModel::RemoveRows(const QList<int> &rows) {
    const auto ranges = RangesOf(rows);
    if (ranges.size() > kMostRanges || rows.size() == Count()) {
        ChunkedRows<Row> kept;
        qsizetype next = 0;
        int at = 0;
        Rows().ForEach([&](const Row &row) {
            if (next < rows.size() && rows[next] == at) {
                NoteRemoved(row);
                ++next;
            } else {
                kept.Append(row);
            }
            ++at;
        });
        Reset(std::move(kept));
        return;
    }
    for (auto range = ranges.rbegin(); range != ranges.rend(); ++range) {
        beginRemoveRows({}, range->first, range->second);
        for (int row = range->second; row >= range->first; --row)
            RemoveRow(row);
        endRemoveRows();
    }
}

int EntryListModel::FindFirst(const QString &entry) const {
    if (!IsAlphabetical()) {
        const auto found = MadeIndex().constFind(LowerCased(entry));
        return found == index_.constEnd() ? -1 : RowOfSerial(found->first());
    }
    const QString lower = LowerCased(entry);
    const int row = Rows().LowerBound([&](const Row &r) { return LowerCased(r.Text) < lower; });
    return row < Count() && LowerCased(Entry(row)) == lower ? row : -1;
}

int EntryListModel::FindExact(const QString &entry) const {
    const int first = FindFirst(entry);
    for (int row = first; row >= 0 && row < Count(); ++row)
        if (Entry(row) == entry)
            return row;
    return -1;
}

QList<int> EntryListModel::RowsOf(const QStringList &entries) const {
    QHash<QString, int> wanted;
    for (const QString &entry : entries)
        ++wanted[entry];
    QList<int> rows;
    int at = 0;
    Rows().ForEach([&](const Row &row) {
        const auto found = wanted.find(row.Text);
        if (found != wanted.end() && (*found)-- > 0)
            rows.append(at);
        ++at;
    });
    return rows;
}

int EntryListModel::RowOfSerial(quint32 serial) const {
    return rows_.LowerBound([&](const Row &r) { return r.Serial < serial; });
}

int EntryListModel::PlaceOf(const QString &entry) const {
    if (!IsAlphabetical())
        return Count();
    const QString lower = LowerCased(entry);
    return Rows().LowerBound([&](const Row &r) { return ComesBefore(r.Text, lower, entry); });
}

void EntryListModel::Index(const Row &row) {
    if (isIndexed_)
        AddToIndex(row);
}

void EntryListModel::AddToIndex(const Row &row) const {
    Serials &serials = index_[LowerCased(row.Text)];
    serials.insert(std::lower_bound(serials.cbegin(), serials.cend(), row.Serial), row.Serial);
}

void EntryListModel::Unindex(int row) {
    if (!isIndexed_)
        return;
    const Row removed = rows_.At(row);
    const auto equal = index_.find(LowerCased(removed.Text));
    if (equal->size() == 1)
        index_.erase(equal);
    else
        equal->erase(std::lower_bound(equal->cbegin(), equal->cend(), removed.Serial));
}

void EntryListModel::InsertRow(int row, const QString &entry) {
    beginInsertRows({}, row, row);
    const Row added{entry, nextSerial_++};
    Index(added);
    NoteAdded(added);
    rows_.Insert(row, added);
    endInsertRows();
}

void EntryListModel::RemoveRow(int row) {
    NoteRemoved(Rows().At(row));
    Unindex(row);
    Rows().RemoveAt(row);
}

} // namespace varlo

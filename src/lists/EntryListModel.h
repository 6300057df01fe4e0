// The rows of one list box: up to 32,767 texts, in the order in which they came or in alphabetical order.
#pragma once

#include "lists/ChunkedRows.h"
#include "lists/RowsChange.h"

#include <QAbstractListModel>
#include <QHash>
#include <QStringList>
#include <QVarLengthArray>

namespace varlo {

// Texts are equal when their lower-cased forms are. Adding, removing and finding one entry costs a moment
// whatever the size; the bulk operations are one change of the model. New contents are sorted when somebody
// first looks at an alphabetical list, and indexed when somebody first looks for an entry of a chronological
// one: the program starts with the last list, and usually shows one of its two orders. Of the longest list that
// spares a load of 3 ms the other 15 or more (two thirds for sorting), which is what the mutable members are
// good for.
class EntryListModel : public QAbstractListModel {
    Q_OBJECT

public:
    enum class Order {
        Chronological, // new entries go to the end
        Alphabetical,  // by the lower-cased text, ties by code point
    };

    // Positions are 16-bit signed numbers throughout, so no list is longer.
    static constexpr int kMostEntries = 32767;

    explicit EntryListModel(Order order, QObject *parent = nullptr);

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;

    int Count() const { return rows_.Size() + static_cast<int>(unsorted_.size()); }
    QString Entry(int row) const { return Rows().At(row).Text; }
    QStringList Entries() const;
    // What tells a row from all others, as long as it is on the list, whatever comes and goes before it.
    quint32 Serial(int row) const { return Rows().At(row).Serial; }

    // What every change but SetEntries did to the rows is added to `record` from now on; null: to nothing.
    void RecordTo(RowsChange *record) { record_ = record; }

    // Replaces all entries, for a list that is opened. Throws RuntimeError 6 after the first 32,767 of a longer
    // list have been taken.
    void SetEntries(const QStringList &entries);
    // The same as a change of the list.
    void ReplaceAll(const QStringList &entries);
    // Adds one entry and returns its row. Throws RuntimeError 6 when the list is full.
    int Add(const QString &entry);
    // Adds many. Throws RuntimeError 6 after as many as fit have been taken.
    void AddAll(const QStringList &entries);
    // Replaces one entry; an alphabetical list moves it to its new place. Returns its row.
    int Replace(int row, const QString &entry);
    void Remove(int row);
    // Removes many; `rows` ascend without repeats.
    void RemoveRows(const QList<int> &rows);
    // Takes these rows out, as far as they are still there, and puts those in, each where it belongs. Not
    // recorded. The list must not become too long (HasRoomFor).
    void Exchange(const QList<EntryRow> &out, const QList<EntryRow> &in);
    bool HasRoomFor(qsizetype out, qsizetype in) const { return Count() - out + in <= kMostEntries; }

    // The row of the first entry that equals `entry` but for letter case, or -1.
    int FindFirst(const QString &entry) const;
    // The row of the first entry that is `entry` to the letter, or -1.
    int FindExact(const QString &entry) const;
    // The rows, from the top, of these entries to the letter, each as often as it is given.
    QList<int> RowsOf(const QStringList &entries) const;

private:
    using Row = EntryRow;
    // Where all equal entries of a chronological list stand, ascending. All of them, so that a list that
    // holds every address twice loses its entries as fast as any other; nearly always there is one.
    using Serials = QVarLengthArray<quint32, 2>;

    bool IsAlphabetical() const { return order_ == Order::Alphabetical; }
    ChunkedRows<Row> &Rows() const;
    QHash<QString, Serials> &MadeIndex() const;
    int RowOfSerial(quint32 serial) const;
    int PlaceOf(const QString &entry) const;
    void Reset(ChunkedRows<Row> rows, const QStringList &unsorted = {});
    void AddToIndex(const Row &row) const;
    void Index(const Row &row);
    void Unindex(int row);
    void Append(const QStringList &entries);
    void InsertRow(int row, const QString &entry);
    void RemoveRow(int row);
    void NoteAll(QList<EntryRow> RowsChange::*part);
    void NoteAdded(const Row &row);
    void NoteRemoved(const Row &row);
    QList<int> RowsStill(const QList<EntryRow> &rows) const;
    void PutBack(QList<EntryRow> rows);
    void Merge(const QList<EntryRow> &rows);

    const Order order_;
    mutable ChunkedRows<Row> rows_;         // empty while the entries are still in unsorted_
    mutable QStringList unsorted_;          // of an alphabetical list that nobody has looked at
    mutable QHash<QString, Serials> index_; // of a chronological list, by lower-cased text
    mutable bool isIndexed_ = false;        // index_ knows all rows; else it is empty
    quint32 nextSerial_ = 0;
    RowsChange *record_ = nullptr;
};

} // namespace varlo

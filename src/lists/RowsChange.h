// What a step of the operator did to one list box, as rows: those that came and those that went.
#pragma once

#include <QList>
#include <QString>

namespace varlo {

// One row of a list box.
struct EntryRow {
    QString Text;
    quint32 Serial =
        0; // ascends with the rows of a chronological list; an alphabetical one goes by its texts

    bool operator==(const EntryRow &) const = default;
};

// No positions: where a row belongs is said by its serial in a chronological list, and by its text in an
// alphabetical one. So whatever else has come or gone meanwhile does not stand in the way of going back.
struct RowsChange {
    QList<EntryRow> Added;
    QList<EntryRow> Removed;

    bool IsEmpty() const { return Added.isEmpty() && Removed.isEmpty(); }
    // Rows that both came and went are neither. `byText`: rows of the same text are the same.
    void Settle(bool byText);
};

} // namespace varlo

#include "lists/RowsChange.h"

#include <QHash>

namespace varlo {

void RowsChange::Settle(bool byText) {
    if (Added.isEmpty() || Removed.isEmpty())
        return;
    const auto key = [byText](const EntryRow &row) {
        return std::pair<quint32, QString>(byText ? 0 : row.Serial, row.Text);
    };
    QHash<std::pair<quint32, QString>, int> removed;
    for (const EntryRow &row : Removed)
        ++removed[key(row)];
    const auto isBoth = [&](const EntryRow &row) {
        const auto found = removed.find(key(row));
        return found != removed.end() && (*found)-- > 0;
    };
    QHash<std::pair<quint32, QString>, int> both;
    Added.removeIf([&](const EntryRow &row) {
        const bool gone = isBoth(row);
        if (gone)
            ++both[key(row)];
        return gone;
    });
    Removed.removeIf([&](const EntryRow &row) {
        const auto found = both.find(key(row));
        return found != both.end() && (*found)-- > 0;
    });
}

} // namespace varlo

// The domains of addresses: what stands behind the last "@".
#pragma once

#include <QList>
#include <QSet>
#include <QString>
#include <QStringList>

namespace varlo {

struct DomainCount {
    QString Domain; // lower-cased; empty for entries without one
    int Count = 0;

    bool operator==(const DomainCount &) const = default;
};

// The domain of one entry, lower-cased; empty when it has no "@".
QString DomainOf(const QString &entry);

// Each domain once, the most frequent first, equally frequent ones by name.
QList<DomainCount> CountDomains(const QStringList &entries);

// The rows, ascending, of the entries of these domains.
QList<int> RowsOfDomains(const QStringList &entries, const QSet<QString> &domains);

} // namespace varlo

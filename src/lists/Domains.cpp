#include "lists/Domains.h"

#include "core/modPublic.h"

#include <QHash>

#include <algorithm>

namespace varlo {

QString DomainOf(const QString &entry) {
    const qsizetype at = entry.lastIndexOf(u'@');
    return at < 0 ? QString() : LowerCased(entry.mid(at + 1));
}

QList<DomainCount> CountDomains(const QStringList &entries) {
    QHash<QString, int> counts;
    for (const QString &entry : entries)
        ++counts[DomainOf(entry)];
    QList<DomainCount> domains;
    for (auto i = counts.cbegin(); i != counts.cend(); ++i)
        domains.append({i.key(), i.value()});
    std::sort(domains.begin(), domains.end(), [](const DomainCount &a, const DomainCount &b) {
        return a.Count == b.Count ? a.Domain < b.Domain : a.Count > b.Count;
    });
    return domains;
}

QList<int> RowsOfDomains(const QStringList &entries, const QSet<QString> &domains) {
    QList<int> rows;
    for (qsizetype row = 0; row < entries.size(); ++row)
        if (domains.contains(DomainOf(entries[row])))
            rows.append(static_cast<int>(row));
    return rows;
}

} // namespace varlo

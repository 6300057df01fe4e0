#include "history/Differences.h"

#include <QHash>

namespace varlo::History {

namespace {

QStringList Without(const QStringList &entries, const QStringList &others) {
    QHash<QString, int> left;
    left.reserve(others.size());
    for (const QString &other : others)
        ++left[other];
    QStringList without;
    for (const QString &entry : entries) {
        const auto found = left.find(entry);
        if (found == left.end() || (*found)-- <= 0)
            without.append(entry);
    }
    return without;
}

} // namespace

Differences Between(const QStringList &older, const QStringList &newer) {
    return {Without(newer, older), Without(older, newer)};
}

} // namespace varlo::History

#include "lists/ListComparison.h"

#include "core/modPublic.h"

#include <QSet>

namespace varlo {

namespace {

QSet<QString> KeysOf(const QStringList &entries) {
    QSet<QString> keys;
    keys.reserve(entries.size());
    for (const QString &entry : entries)
        keys.insert(LowerCased(entry));
    return keys;
}

} // namespace

ListComparison CompareLists(const QStringList &first, const QStringList &second) {
    ListComparison comparison;
    QSet<QString> done{QString()}; // what is empty is no address
    const QSet<QString> inSecond = KeysOf(second);
    const auto place = [&](const QString &entry, ComparePart part) {
        const QString key = LowerCased(entry);
        if (!done.contains(key))
            comparison[part].append(entry);
        done.insert(key);
    };
    for (const QString &entry : first)
        place(entry, inSecond.contains(LowerCased(entry)) ? kBoth : kOnlyFirst);
    for (const QString &entry : second)
        place(entry, kOnlySecond);
    return comparison;
}

QStringList JoinParts(const ListComparison &comparison, const std::array<bool, kParts> &wanted) {
    QStringList joined;
    for (size_t part = 0; part < kParts; ++part)
        if (wanted[part])
            joined += comparison[part];
    return joined;
}

} // namespace varlo

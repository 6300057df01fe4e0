#include "history/AddressTrail.h"

#include "core/RuntimeError.h"

#include <optional>

namespace varlo::History {

namespace {

std::optional<bool> HasAddress(const TrailStop &stop, const QString &address) {
    try {
        const QStringList entries = stop.Entries();
        return std::any_of(entries.begin(), entries.end(), [&](const QString &entry) {
            return entry.compare(address, Qt::CaseInsensitive) == 0;
        });
    } catch (const RuntimeError &) {
        return std::nullopt;
    }
}

} // namespace

QList<TrailEvent> TrailOf(const QString &address, const QList<TrailStop> &stops) {
    QList<TrailEvent> events;
    const TrailStop *before = nullptr; // the last stop that could be read
    const TrailStop *last = nullptr;   // the one next to this stop
    bool wasThere = false;
    for (const TrailStop &stop : stops) {
        const auto isThere = HasAddress(stop, address);
        if (isThere && before && *isThere != wasThere) {
            events.append({*isThere ? TrailEvent::Kind::Joined : TrailEvent::Kind::Left, before->Until,
                           last->Next, before->Until == last->Next ? before->Cause : QString()});
        } else if (isThere && !before && *isThere) {
            events.append({TrailEvent::Kind::WasThere, stop.Until, stop.Until, {}});
        }
        last = &stop;
        if (isThere) {
            before = &stop;
            wasThere = *isThere;
        }
    }
    return events;
}

} // namespace varlo::History

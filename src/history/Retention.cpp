#include "history/Retention.h"

#include "core/Literals.h"

#include <QSet>

namespace varlo::History {

namespace {

// What at most one version is kept for; empty when all are.
QString PeriodOf(const QDateTime &time, const QDateTime &now) {
    const QDateTime whole = now.addDays(-kWholeDays);
    if (time >= whole)
        return {};
    return time.toString(time >= now.addDays(-kDailyDays) ? u"yyyy-MM-dd"_s : u"yyyy-MM"_s);
}

} // namespace

QList<qsizetype> Superfluous(const QList<QDateTime> &times, const QDateTime &now) {
    QList<qsizetype> superfluous;
    QSet<QString> periods;
    for (qsizetype i = times.size() - 1; i >= 0; --i) {
        const QString period = PeriodOf(times[i], now);
        if (!period.isEmpty() && periods.contains(period))
            superfluous.prepend(i);
        periods.insert(period);
    }
    return superfluous;
}

} // namespace varlo::History

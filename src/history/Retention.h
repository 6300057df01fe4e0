// Which versions stay: all of the last week, then one a day for a month, one a month for ever.
#pragma once

#include <QDateTime>
#include <QList>

namespace varlo::History {

inline constexpr qint64 kWholeDays = 7;  // of which every version stays
inline constexpr qint64 kDailyDays = 31; // of which the last one of each day stays

// The places in `times` (the oldest first) of those that may go. A time after `now` stays.
QList<qsizetype> Superfluous(const QList<QDateTime> &times, const QDateTime &now);

} // namespace varlo::History

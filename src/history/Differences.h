// What tells two versions of a list apart.
#pragma once

#include <QStringList>

namespace varlo::History {

struct Differences {
    QStringList Added;   // in the order in which they stand in the newer one
    QStringList Removed; // and in the older one
};

// Entries to the letter; one that stands there twice counts twice. Their order is not looked at.
Differences Between(const QStringList &older, const QStringList &newer);

} // namespace varlo::History

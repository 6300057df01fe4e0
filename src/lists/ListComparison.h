// Two lists side by side.
#pragma once

#include <QStringList>

#include <array>

namespace varlo {

// The parts into which two lists fall. Their parts together are the union, the middle one is the intersection, the
// first one the difference.
enum ComparePart { kOnlyFirst, kBoth, kOnlySecond, kParts };

// Each address once, letter case aside, as it is first spelt, in the order of the lists; empty entries stay out.
using ListComparison = std::array<QStringList, kParts>;

ListComparison CompareLists(const QStringList &first, const QStringList &second);

// Those of some parts, in the order of the parts.
QStringList JoinParts(const ListComparison &comparison, const std::array<bool, kParts> &wanted);

} // namespace varlo

// Which texts count as e-mail addresses.
#pragma once

#include <QStringView>

namespace varlo {

// What an address fails by, in the order in which the rules are applied.
enum class AddressFault {
    None,
    NoAt,
    NoDot,
    TooShort,
    SecondAt,
    NoDotBehindAt,
    Forbidden, // a character that no address may hold, the quotation mark among them
    TwoDots,
};

// The fixed rules, deliberately loose: "@", ".", six characters, one "@" only, a point behind it, none of the
// forbidden characters, no "..". The first one that fails.
AddressFault FaultOf(QStringView address);

inline bool PassesAddressRules(QStringView address) {
    return FaultOf(address) == AddressFault::None;
}

// The same as a sentence for the operator, which names the character; empty when the address is valid.
QString FaultText(const QString &address);

} // namespace varlo

// The two tests that every path runs before it puts an address on a list.
#pragma once

#include "core/AddressSyntax.h"
#include "core/Session.h"

namespace varlo {

class EntryListModel;

// Whether the address passes the rules (core/AddressSyntax.h); a box names an invalid one unless `Silent`.
bool IsValidAddress(Session &session, const QString &address, bool Silent);

// False, with a status line, when the list box holds the entry already, letter case aside. Entries are
// compared as they stand: a bare address never equals a pending entry, which begins with its sign, so that
// the same address typed twice is queued twice. That is wanted.
bool IsNewAddress(Session &session, const QString &address, const EntryListModel &listBox);

// The text of an address as typed, captured or pasted: without blanks around it and without a leading
// "mailto:".
QString CleanTypedAddress(const QString &text);

} // namespace varlo

// The mailbox among the preferences, and the way to it.
#pragma once

#include "core/Preferences.h"
#include "net/Endpoint.h"
#include "pop3/Pop3Session.h"

namespace varlo {

inline constexpr quint16 kPop3Port = 110;

// The user's part of it.
Pop3Account MailboxAccount(const Preferences &values);

// Where its server is. Without encryption the port is 110 whatever the preferences say. A port that cannot be
// one is 0, which no connection can be made to.
net::Endpoint MailboxEndpoint(const Preferences &values);

} // namespace varlo

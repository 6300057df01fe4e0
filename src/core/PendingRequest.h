// One request to come to the open list or to leave it, as it waits on the Pending list.
#pragma once

#include <QString>

namespace varlo {

enum class RequestKind {
    Subscribe,   // "+"
    Unsubscribe, // "-"
    Unknown,     // neither sign: processing logs it and changes nothing
};

// Who asked for it; the tests that a request has to pass depend on it.
enum class RequestOrigin { List, Typed, Clipboard, Mailbox, FailedDelivery, Import };

struct PendingRequest {
    RequestKind Kind = RequestKind::Subscribe;
    QString Address;
    RequestOrigin Origin = RequestOrigin::List;

    // What the list box shows: the sign, directly followed by the address.
    QString Entry() const;
    // The request that a list box shows so.
    static PendingRequest FromEntry(const QString &entry, RequestOrigin origin = RequestOrigin::List);
    // The request for the opposite; an unknown one stays as it is.
    PendingRequest Reversed() const;

    bool operator==(const PendingRequest &) const = default;
};

// "+3, -1", what became of some requests; a count of 0 is left out, and of two "no activity" is left.
QString ActivityText(int subscribed, int unsubscribed);

} // namespace varlo

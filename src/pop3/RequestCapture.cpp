#include "pop3/RequestCapture.h"

#include "core/Literals.h"
#include "core/Reporting.h"
#include "pop3/ExtractAddress.h"

namespace varlo {

namespace {

// Returns how many entries were added. The sender's address goes in as it stands: neither trimmed nor
// lower-cased.
qint16 AddSenders(const clsMessages &messages, RequestKind kind, const PendingDoor &pending) {
    qint16 added = 0;
    for (const clsMessage &message : messages)
        if (pending.Offer({kind, ExtractAddress(message.From()), RequestOrigin::Mailbox}))
            added = To16Bit(added + 1);
    return added;
}

} // namespace

void CaptureRequests(Session &session, const Requests &requests, const PendingDoor &pending) {
    const qint16 subscribed = AddSenders(requests.colSubscribe, RequestKind::Subscribe, pending);
    const qint16 unsubscribed = AddSenders(requests.colUnsubscribe, RequestKind::Unsubscribe, pending);
    pending.SelectLast();
    StatusMessage(session, u"POP3 check complete ("_s + ActivityText(subscribed, unsubscribed) + u')');
    if (pending.Bypass())
        pending.ProcessPending();
}

} // namespace varlo

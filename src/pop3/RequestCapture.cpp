#include "pop3/RequestCapture.h"

#include "core/Literals.h"
#include "pop3/ExtractAddress.h"
#include "pop3/KeptErrors.h"

namespace varlo {

namespace {

// Returns how many entries were added. The sender's address goes in as it stands: neither trimmed nor
// lower-cased.
qint16 AddSenders(const clsMessages &messages, RequestKind kind, const PendingDoor &pending,
                  KeptErrors &errors) {
    qint16 added = 0;
    for (const clsMessage &message : messages) {
        const auto offer = [&] {
            if (pending.Offer({kind, ExtractAddress(message.From()), RequestOrigin::Mailbox}))
                added = To16Bit(added + 1);
        };
        errors(offer, message.From()); // the server has deleted those that follow, too
    }
    return added;
}

} // namespace

void CaptureRequests(Session &session, const Requests &requests, const PendingDoor &pending) {
    KeptErrors errors;
    const qint16 subscribed = AddSenders(requests.colSubscribe, RequestKind::Subscribe, pending, errors);
    const qint16 unsubscribed =
        AddSenders(requests.colUnsubscribe, RequestKind::Unsubscribe, pending, errors);
    errors([&] { pending.SelectLast(); });
    errors([&] {
        StatusMessage(session, u"POP3 check complete ("_s + ActivityText(subscribed, unsubscribed) + u')');
    });
    errors([&] {
        if (pending.Bypass())
            pending.ProcessPending();
    });
    errors.Tell(session);
}

} // namespace varlo

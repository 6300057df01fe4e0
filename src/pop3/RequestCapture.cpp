#include "pop3/RequestCapture.h"

#include "core/Literals.h"
#include "core/PendingRequest.h"
#include "core/Reporting.h"
#include "pop3/ExtractAddress.h"

namespace varlo {

namespace {

// Returns how many entries were added. The sender's address goes in as it stands: neither trimmed nor
// lower-cased.
qint16 AddSenders(const clsMessages &messages, QChar sign, const PendingDoor &pending) {
    qint16 added = 0;
    for (const clsMessage &message : messages) {
        const QString address = ExtractAddress(message.From());
        const QString entry = sign + address;
        // Both are always asked, so that the operator hears of a duplicate that is invalid, too.
        const bool isValid = pending.IsValid(address);
        const bool isNew = pending.IsNew(entry);
        if (!isValid || !isNew)
            continue;
        pending.AddPending(entry);
        added = To16Bit(added + 1);
    }
    return added;
}

} // namespace

void CaptureRequests(Session &session, const Requests &requests, const PendingDoor &pending) {
    const qint16 subscribed = AddSenders(requests.colSubscribe, u'+', pending);
    const qint16 unsubscribed = AddSenders(requests.colUnsubscribe, u'-', pending);
    pending.SelectLast();
    pending.UpdateControls();
    StatusMessage(session, u"POP3 check complete ("_s + ActivityText(subscribed, unsubscribed) + u')');
    if (pending.Bypass())
        pending.ProcessPending();
}

} // namespace varlo

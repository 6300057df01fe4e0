#include "pop3/Recognition.h"

#include "pop3/TrimBlanks.h"

namespace varlo {

Recognised Recognise(const clsMessage &message, Requests &requests) {
    const QString subject = TrimBlanks(message.Subject().toLower());
    if (subject == u"subscribe") {
        requests.colSubscribe.Add(message, message.MessageID());
        return Recognised::Subscribe;
    }
    if (subject == u"unsubscribe") {
        requests.colUnsubscribe.Add(message, message.MessageID());
        return Recognised::Unsubscribe;
    }
    return Recognised::Unrelated;
}

} // namespace varlo

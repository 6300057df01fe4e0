#include "core/PendingRequest.h"

#include "core/Literals.h"

#include <QStringList>

namespace varlo {

namespace {

RequestKind KindOf(QChar sign) {
    if (sign == u'+')
        return RequestKind::Subscribe;
    return sign == u'-' ? RequestKind::Unsubscribe : RequestKind::Unknown;
}

} // namespace

QString PendingRequest::Entry() const {
    switch (Kind) {
    case RequestKind::Subscribe:
        return u'+' + Address;
    case RequestKind::Unsubscribe:
        return u'-' + Address;
    case RequestKind::Unknown:
        break;
    }
    return Address;
}

PendingRequest PendingRequest::FromEntry(const QString &entry, RequestOrigin origin) {
    const RequestKind kind = entry.isEmpty() ? RequestKind::Unknown : KindOf(entry.front());
    return {kind, kind == RequestKind::Unknown ? entry : entry.mid(1), origin};
}

PendingRequest PendingRequest::Reversed() const {
    PendingRequest reversed = *this;
    if (Kind != RequestKind::Unknown)
        reversed.Kind = Kind == RequestKind::Subscribe ? RequestKind::Unsubscribe : RequestKind::Subscribe;
    return reversed;
}

QString ActivityText(int subscribed, int unsubscribed) {
    QStringList parts;
    if (subscribed > 0)
        parts << u'+' + QString::number(subscribed);
    if (unsubscribed > 0)
        parts << u'-' + QString::number(unsubscribed);
    return parts.isEmpty() ? u"no activity"_s : parts.join(u", "_s);
}

} // namespace varlo

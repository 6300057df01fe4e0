// Why a send did not succeed, in the words of the error event.
#pragma once

#include "core/Literals.h"
#include "smtp/SMTP.h"

#include <QString>

#include <optional>

namespace OSSMTP {

struct Failure {
    // Aborted: the caller asked for it, nothing is reported. Lost: the connection is gone, which may be tried
    // again as long as the server was not given the message.
    enum Kind { Reported, Lost, Aborted };

    int Number = 0;
    QString Description;
    Kind What = Reported;

    bool operator==(const Failure &) const = default;
};

using MaybeFailure = std::optional<Failure>;

inline Failure AbortedFailure() {
    return {0, QString(), Failure::Aborted};
}

inline Failure TimedOutFailure() {
    return {TimedOut, u"The server did not answer in time"_s, Failure::Reported};
}

inline Failure LostFailure() {
    return {ConnectionLost, u"The connection was closed by the server"_s, Failure::Lost};
}

inline Failure InvalidReplyFailure() {
    return {InvalidReply, u"The server's answer is not an SMTP reply"_s, Failure::Reported};
}

} // namespace OSSMTP

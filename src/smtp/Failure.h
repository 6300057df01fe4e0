// Why a send did not succeed, in the words of the error event.
#pragma once

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
    return {TimedOut, QStringLiteral("The server did not answer in time"), Failure::Reported};
}

inline Failure LostFailure() {
    return {ConnectionLost, QStringLiteral("The connection was closed by the server"), Failure::Lost};
}

inline Failure InvalidReplyFailure() {
    return {InvalidReply, QStringLiteral("The server's answer is not an SMTP reply"), Failure::Reported};
}

} // namespace OSSMTP

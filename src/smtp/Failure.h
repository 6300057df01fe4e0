// Why a mail did not go out, in the words of the error event.
#pragma once

#include "core/Literals.h"
#include "net/Trouble.h"

#include <QString>

#include <optional>

namespace OSSMTP {

using varlo::net::MailError;
using enum varlo::net::MailError;

struct Failure {
    int Number = 0;
    QString Description;
    // The connection is gone, which may be tried again as long as the server was not given the message.
    bool IsLost = false;
    // The account is not right; the Description is sentences for the operator.
    bool IsOfAccount = false;

    bool operator==(const Failure &) const = default;
};

using MaybeFailure = std::optional<Failure>;

inline Failure LostFailure() {
    return {ConnectionLost, u"The connection was closed by the server"_s, true};
}

inline Failure InvalidReplyFailure() {
    return {InvalidReply, u"The server's answer is not an SMTP reply"_s, false};
}

// Such an account serves no recipient, so nobody is tried with it.
inline Failure AccountFailure(int number, const QString &description) {
    return {number, description, false, true};
}

inline Failure FailureOf(const varlo::net::Failure &failure) {
    const MailError number = varlo::net::MailNumber(failure.Cause);
    if (number == ConnectionLost)
        return LostFailure();
    return {number, failure.Text, false};
}

} // namespace OSSMTP

// Trying again what another program stands in the way of for a moment.
#pragma once

#include "core/RuntimeError.h"

#include <QDeadlineTimer>

#include <chrono>
#include <thread>

namespace varlo {

// How long a virus scanner or a backup may hold a file, and how often one looks whether it still does.
constexpr std::chrono::milliseconds kPatience(1000);
constexpr std::chrono::milliseconds kBetweenTries(20);

// Runs `attempt`, again and again for at most `patience` while it throws RuntimeError and `isHeld` says that
// somebody stands in the way. Gives what it gives; the last failure is thrown on.
template<typename Attempt, typename IsHeld>
auto Patiently(Attempt attempt, IsHeld isHeld, std::chrono::milliseconds patience = kPatience)
    -> decltype(attempt()) {
    const QDeadlineTimer deadline(patience);
    for (;;) {
        try {
            return attempt();
        } catch (const RuntimeError &) {
            if (deadline.hasExpired() || !isHeld())
                throw;
        }
        std::this_thread::sleep_for(kBetweenTries);
    }
}

} // namespace varlo

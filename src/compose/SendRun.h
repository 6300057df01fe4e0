// One send as a pure step: an event in, what is to be done next out. Knows no mailer, no clock and no window.
#pragma once

#include "compose/DuplicateCheck.h"
#include "core/Mailer.h"
#include "core/PendingRequest.h"

#include <QStringList>

#include <optional>

namespace varlo {

// What is to be done now, in the order of the members.
struct SendStep {
    enum class Next {
        Nothing,  // wait on: the event belonged to no recipient
        GoOn,     // call GoOn at once
        Yield,    // let the windows have their events, then call GoOn
        Breathe,  // the same, unless they had them a moment ago: then call GoOn at once
        Submit,   // send the message to the recipient `Text`, then call Finished
        Complete, // every recipient had his turn
        Fail,     // this machine cannot send it to anybody: the run-time error `Number` with the words `Text`
    };

    QString Status;                             // a line for the window, the console and the log; empty: none
    std::optional<PendingRequest> Pending = {}; // for the Pending list
    Next Then = Next::Nothing;
    QString Text = {};
    int Number = 0;

    bool operator==(const SendStep &) const = default;
};

// Every recipient has one turn, in order:
//
//   turn begins ----- new ---> Announced -- GoOn: Submit --> Submitted -- Finished --> next turn
//        \----- duplicate ---> Skipped ---- GoOn ------------------------------------> next turn
//
// Never throws.
class SendRun {
public:
    SendRun() = default;
    explicit SendRun(QStringList recipients);

    // Begins the next turn, or ends the yield of the one that has begun.
    SendStep GoOn();
    // What became of the mail that was submitted. At any other time it is nobody's.
    SendStep Finished(const Outcome &outcome);

    qsizetype Count() const { return recipients_.size(); }
    qsizetype Index() const { return index_; } // whose turn it is, from 0; Count() after the last
    qsizetype Duplicates() const { return duplicates_.Count(); }
    qsizetype Failed() const { return failed_; }

private:
    enum class State { Between, Announced, Skipped, Submitted };

    SendStep BeginTurn();
    SendStep SMTP_ErrorSMTP(int Number, const QString &Description);

    QStringList recipients_;
    DuplicateCheck duplicates_;
    State state_ = State::Between;
    qsizetype index_ = 0;
    qsizetype failed_ = 0;
};

} // namespace varlo

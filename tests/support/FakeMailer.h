// Mailers without a wire: they keep what they were given and answer from a script.
#pragma once

#include "core/Mailer.h"

#include <QPointer>

#include <functional>
#include <optional>
#include <vector>

namespace varlo::test {

// One mail as a mailer was given it, with the account that the mailer was made for.
struct SentMail {
    QString Server;
    int Port = 0;
    QString Sender;
    QString Subject;
    QString Text;
    QString Recipient;
    QStringList Attachments;
    bool operator==(const SentMail &) const = default;
};

// What all the mailers of one test share. It must live as long as any of them.
class FakeMailers {
public:
    MakeMailer Maker();

    // The recipients of all mails, as they were named.
    QStringList Recipients() const;
    // Whether a mail is under way that the script left unanswered.
    bool IsBusy() const { return !waiting_.isEmpty(); }
    // The first of those meets its fate.
    void Finish(const Outcome &outcome = {});

    std::vector<SentMail> Sent; // a mail that failed by a fault of our own is taken out again
    int Made = 0;               // how many mailers there were
    int Alive = 0;              // how many there are
    QPointer<Mailer> Newest;
    SentMail Current; // the one that OnSend is asked about
    // Called for every mail when it is under way, in an event of its own; nothing: no answer comes. It may
    // destroy the mailer.
    std::function<std::optional<Outcome>()> OnSend = [] { return Outcome(); };
    std::function<void(Mailer &)> OnMade = [](Mailer &) {};

private:
    friend class FakeMailer;

    QList<Mailer *> waiting_; // for an answer that the script did not give
};

// A refusal by the server, or an error of the component.
Outcome Failure(int number, const QString &description);
// A fault of this machine's.
Outcome OwnFailure(int number, const QString &description);
// A fault of the account's.
Outcome AccountFailure(int number, const QString &description);

} // namespace varlo::test

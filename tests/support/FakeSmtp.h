// The SMTP component without a wire: linked instead of the real one, it keeps what it was told and answers
// from a script.
#pragma once

#include "smtp/SMTP.h"

#include <QStringList>

#include <functional>
#include <vector>

namespace varlo::test {

struct FakeSmtp {
    // One call of Send, as the component's properties stood then.
    struct Message {
        QString Server;
        int Port = 0;
        QString Sender;
        QString Subject;
        QString Text;
        QString Recipient;
        QStringList Attachments;
        bool operator==(const Message &) const = default;
    };

    // The fake behind a component.
    static FakeSmtp &Of(OSSMTP::SMTP &smtp);
    // The fake behind the component that was made last; it must still live.
    static FakeSmtp &Newest();
    // Called for every component that is made, for tests that cannot reach it.
    static std::function<void(FakeSmtp &)> OnCreated;
    // How many components there are.
    static int Alive();

    // The recipients of all messages, as the engine named them.
    QStringList Recipients() const;

    Message Current;
    std::vector<Message> Sent;
    int Aborts = 0;
    // Called for every message that is sent; what it returns is what Send returns. Failures come from Fail.
    std::function<bool()> OnSend = [] { return true; };
    std::function<void(const QString &path)> OnAddAttachment = [](const QString &) {};
    // Emits the error event; false, to be returned from OnSend.
    std::function<bool(int number, const QString &description)> Fail;
};

} // namespace varlo::test

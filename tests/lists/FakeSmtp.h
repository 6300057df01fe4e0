// Stands in for the SMTP component: linked instead of it, it writes down what it was told and sends nothing.
#pragma once

#include <QStringList>

#include <functional>

namespace varlo::test {

// What all mailers of a test did. One is made by the fixture, which so forgets the test before.
class FakeSmtp {
public:
    FakeSmtp();
    ~FakeSmtp();
    FakeSmtp(const FakeSmtp &) = delete;
    FakeSmtp &operator=(const FakeSmtp &) = delete;

    struct Failure {
        int Number = 0; // 0: the mail was taken
        QString Description;
    };

    // The outcome of the send that is under way; called in the middle of it.
    std::function<Failure()> OnSend = [] { return Failure{}; };
    int Created = 0;
    int Alive = 0;
    int Aborts = 0;
    QStringList Calls; // "server mail.test", "port 25", "to a@x.test", "send"

    static FakeSmtp *Instance;
};

} // namespace varlo::test

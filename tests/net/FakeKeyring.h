// A keyring in memory that answers when it is told to.
#pragma once

#include "core/Literals.h"
#include "net/Keyring.h"

#include <QMap>

#include <deque>
#include <memory>

namespace varlo::test {

class FakeKeyring : public net::Keyring {
public:
    struct State {
        QMap<QString, QString> Secrets;
        QString Trouble; // of every answer
        std::deque<std::function<void()>> Waiting;

        // Answers what was asked, and what is asked on that.
        void Answer() {
            while (!Waiting.empty()) {
                const auto next = Waiting.front();
                Waiting.pop_front();
                next();
            }
        }
    };

    explicit FakeKeyring(std::shared_ptr<State> state) : state_(std::move(state)) {}

    void Read(const QString &name, Given given) override {
        state_->Waiting.push_back([state = state_.get(), name, given] {
            given(state->Trouble.isEmpty() ? state->Secrets.value(name) : QString(), state->Trouble);
        });
    }
    void Write(const QString &name, const QString &secret, Done done) override {
        state_->Waiting.push_back([state = state_.get(), name, secret, done] {
            if (state->Trouble.isEmpty() && secret.isEmpty())
                state->Secrets.remove(name);
            else if (state->Trouble.isEmpty())
                state->Secrets[name] = secret;
            done(state->Trouble);
        });
    }

private:
    const std::shared_ptr<State> state_;
};

} // namespace varlo::test

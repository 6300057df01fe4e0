// A mailer as fast as it can be: takes every message and sends none. What is left is the work of those who
// send.
#pragma once

#include "core/Mailer.h"

#include <QPointer>

#include <utility>

namespace varlo {

class NullMailer : public Mailer {
public:
    void Submit(const Mail &) override {
        if (!std::exchange(submitted_, true) && !running_)
            QMetaObject::invokeMethod(this, &NullMailer::Run, Qt::QueuedConnection);
    }

private:
    // Takes what the handler of Finished submits in the same event. The last handler destroys it.
    void Run() {
        const QPointer<NullMailer> self(this);
        running_ = true;
        while (self && std::exchange(submitted_, false))
            Q_EMIT Finished({});
        if (self)
            running_ = false;
    }

    bool submitted_ = false;
    bool running_ = false;
};

} // namespace varlo

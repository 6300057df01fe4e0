// A mailer as fast as it can be: takes every message and sends none. What is left is the work of those who
// send.
#pragma once

#include "core/Mailer.h"

namespace varlo {

class NullMailer : public Mailer {
public:
    void Submit(const Mail &) override {
        QMetaObject::invokeMethod(
            this, [this] { Q_EMIT Finished({}); }, Qt::QueuedConnection);
    }
};

} // namespace varlo

#include "pop3/clsMessages.h"

#include "core/RuntimeError.h"

namespace varlo {

void clsMessages::Add(const clsMessage &Message, const QString &strKey) {
    if (!strKey.isEmpty()) {
        if (keys_.contains(strKey))
            throw RuntimeError(KeyAlreadyPresent);
        keys_.insert(strKey);
    }
    messages_.push_back(Message);
}

} // namespace varlo

// The messages kept during one mailbox check, in the order in which they arrived.
#pragma once

#include "pop3/clsMessage.h"

#include <QSet>

#include <vector>

namespace varlo {

class clsMessages {
public:
    using Enumerator = std::vector<clsMessage>::const_iterator;

    // Appends the message, under `strKey` unless that is empty. Throws RuntimeError 457 when the key is there
    // already; the collection is then as it was.
    void Add(const clsMessage &Message, const QString &strKey = {});

    // The messages in the order added.
    Enumerator begin() const { return messages_.begin(); }
    Enumerator end() const { return messages_.end(); }

private:
    std::vector<clsMessage> messages_;
    QSet<QString> keys_;
};

} // namespace varlo

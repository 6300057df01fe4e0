// A place of the system where passwords are kept.
#pragma once

#include <QString>

#include <functional>

namespace varlo::net {

// `trouble` is what went wrong, in the system's words; empty when nothing did. No answer comes from within a call;
// the system may ask the operator something first, so one can take as long as he does.
class Keyring {
public:
    using Done = std::function<void(const QString &trouble)>;
    using Given = std::function<void(const QString &secret, const QString &trouble)>;

    virtual ~Keyring() = default;

    // The secret under that name; an empty one when there is none.
    virtual void Read(const QString &name, Given given) = 0;
    // Keeps the secret under that name in place of an older one; an empty one removes it.
    virtual void Write(const QString &name, const QString &secret, Done done) = 0;
};

} // namespace varlo::net

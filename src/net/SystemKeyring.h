// The system's own keyring.
#pragma once

#include "net/Keyring.h"

namespace varlo::net {

// The Secret Service or the wallet of the desktop on Linux, the credential store on Windows. A system without one
// says so with every answer.
class SystemKeyring : public Keyring {
public:
    void Read(const QString &name, Given given) override;
    void Write(const QString &name, const QString &secret, Done done) override;
};

} // namespace varlo::net

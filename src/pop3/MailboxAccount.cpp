#include "pop3/MailboxAccount.h"

#include "core/TrustedServer.h"

namespace varlo {

namespace {

// Any other number, as the preferences window shows it: none.
net::Encryption EncryptionOf(int stored) {
    constexpr int kStls = 1;
    constexpr int kTls = 2;
    if (stored == kStls)
        return net::Encryption::StartTls;
    return stored == kTls ? net::Encryption::Tls : net::Encryption::None;
}

} // namespace

Pop3Account MailboxAccount(const Preferences &values) {
    const net::Encryption security = EncryptionOf(values.POPSecurity);
    return {values.POPServer,
            values.POPUsername,
            values.POPPassword,
            values.POPDeleteAll,
            security == net::Encryption::StartTls,
            security != net::Encryption::None};
}

net::Endpoint MailboxEndpoint(const Preferences &values) {
    const net::Encryption security = EncryptionOf(values.POPSecurity);
    if (security == net::Encryption::None)
        return {values.POPServer, kPop3Port, security, {}};
    return {values.POPServer, values.POPPort.toUShort(), security,
            TrustedCertificate(values.POPTrusted, values.POPServer)};
}

} // namespace varlo

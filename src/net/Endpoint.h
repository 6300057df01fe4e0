// The other end of a connection, and the way there.
#pragma once

#include <QByteArray>
#include <QNetworkProxy>
#include <QString>

namespace varlo::net {

enum class Encryption {
    None,
    WhenOffered, // with StartTls, by whatever certificate: better than in the clear, and nobody to ask
    StartTls,    // with StartTls, by a trusted certificate
    Tls,         // from the first byte, by a trusted certificate
};

struct Endpoint {
    QString Host; // name or address; a name may hold other than ASCII characters
    int Port = 0;
    Encryption Security = Encryption::None;
    // SHA-256 of a certificate that is trusted whoever signed it, in 32 bytes; empty for none.
    QByteArray Pin;

    bool operator==(const Endpoint &) const = default;
};

// `host` as it is looked up: without blanks around it and brackets, a name in ASCII. Empty when it can be no
// host.
QString HostName(const QString &host);

// The proxy that the environment names for all connections ("socks5://host:port", "http://host:port" in
// all_proxy). None for this machine itself and for what no_proxy lists.
QNetworkProxy ProxyFor(const QString &hostName);

} // namespace varlo::net

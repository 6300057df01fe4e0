#include "net/Endpoint.h"

#include "core/Ascii.h"
#include "core/Literals.h"

#include <QHostAddress>
#include <QUrl>

#include <algorithm>

namespace varlo::net {

namespace {

bool IsPlain(QChar c) {
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || (c >= u'0' && c <= u'9') || c == u'-' ||
           c == u'_' || c == u'.';
}

QString Variable(const char *lower, const char *upper) {
    const QString value = qEnvironmentVariable(lower);
    return value.isEmpty() ? qEnvironmentVariable(upper) : value;
}

bool IsThisMachine(const QString &hostName) {
    return hostName == "localhost"_L1 || QHostAddress(hostName).isLoopback();
}

// "*", a host, or a domain with everything in it.
bool Covers(const QString &entry, const QString &hostName) {
    const QString domain = entry.startsWith(u'.') ? entry.sliced(1) : entry;
    return entry == "*"_L1 || hostName.compare(domain, Qt::CaseInsensitive) == 0 ||
           (!domain.isEmpty() && hostName.endsWith(u'.' + domain, Qt::CaseInsensitive));
}

bool IsExempt(const QString &hostName) {
    const QStringList entries = Variable("no_proxy", "NO_PROXY").split(u',', Qt::SkipEmptyParts);
    return std::any_of(entries.begin(), entries.end(),
                       [&](const QString &entry) { return Covers(entry.trimmed(), hostName); });
}

} // namespace

QString HostName(const QString &host) {
    QString text = host.trimmed();
    if (text.startsWith(u'[') && text.endsWith(u']'))
        text = text.sliced(1, text.size() - 2);
    if (const QHostAddress address(text); text.contains(u':'))
        return address.isNull() ? QString() : text;
    if (!IsAscii(text))
        text = QString::fromLatin1(QUrl::toAce(text));
    return std::all_of(text.begin(), text.end(), IsPlain) ? text : QString();
}

QNetworkProxy ProxyFor(const QString &hostName) {
    const QUrl url(Variable("all_proxy", "ALL_PROXY"));
    const QString scheme = url.scheme();
    const bool http = scheme == "http"_L1;
    if (url.host().isEmpty() || !(http || scheme == "socks5"_L1 || scheme == "socks5h"_L1) ||
        IsThisMachine(hostName) || IsExempt(hostName))
        return QNetworkProxy::NoProxy;
    const auto port = static_cast<quint16>(url.port(1080));
    return {http ? QNetworkProxy::HttpProxy : QNetworkProxy::Socks5Proxy, url.host(), port, url.userName(),
            url.password()};
}

} // namespace varlo::net

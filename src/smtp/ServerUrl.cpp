#include "smtp/ServerUrl.h"

#include <QUrl>

namespace OSSMTP {

namespace {

bool IsAscii(const QString &text) {
    return std::all_of(text.begin(), text.end(), [](QChar c) { return c.unicode() < 0x80; });
}

bool HasControls(const QString &text) {
    return std::any_of(text.begin(), text.end(), [](QChar c) { return c.unicode() < 0x20; });
}

// Empty when `host` can be no host.
QByteArray UrlHost(const QString &host) {
    const QString text = host.trimmed();
    if (HasControls(text))
        return {};
    if (!IsAscii(text))
        return QUrl::toAce(text);
    const bool bareIPv6 = text.count(QLatin1Char(':')) > 1 && !text.startsWith(QLatin1Char('['));
    return bareIPv6 ? '[' + text.toLatin1() + ']' : text.toLatin1();
}

} // namespace

Url ServerUrl(const QString &host, int port) {
    const QByteArray name = UrlHost(host);
    Url url(Curl().url());
    const bool ok =
        !name.isEmpty() && Curl().url_set(url.get(), CURLUPART_SCHEME, "smtp", 0) == CURLUE_OK &&
        Curl().url_set(url.get(), CURLUPART_HOST, name.constData(), 0) == CURLUE_OK &&
        Curl().url_set(url.get(), CURLUPART_PORT, QByteArray::number(port).constData(), 0) == CURLUE_OK;
    return ok ? std::move(url) : nullptr;
}

} // namespace OSSMTP

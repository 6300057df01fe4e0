// The server's name and port as a URL that libcurl connects to.
#pragma once

#include "smtp/Curl.h"

#include <QString>

#include <memory>

namespace OSSMTP {

struct FreeUrl {
    void operator()(CURLU *url) const { Curl().url_cleanup(url); }
};
using Url = std::unique_ptr<CURLU, FreeUrl>;

// smtp://host:port. `host` is a name (a non-ASCII one becomes its ASCII form) or an IP address, with or
// without brackets. Null when it is neither: nothing in it can become a user, a path or another port.
Url ServerUrl(const QString &host, int port);

} // namespace OSSMTP

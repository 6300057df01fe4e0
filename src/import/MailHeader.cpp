#include "import/MailHeader.h"

#include <algorithm>
#include <array>

namespace varlo {

namespace {

constexpr std::array kMachineHeaders{
    u"message-id",        u"in-reply-to",  u"references",
    u"resent-message-id", u"content-id",   u"received",
    u"received-spf",      u"return-path",  u"authentication-results",
    u"dkim-signature",    u"list-id",      u"list-unsubscribe",
    u"list-post",         u"list-help",    u"list-subscribe",
    u"list-owner",        u"list-archive", u"feedback-id",
    u"thread-index",      u"errors-to",
};

bool IsNameCharacter(QChar c) {
    return c == u'-' || (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || (c >= u'0' && c <= u'9');
}

} // namespace

bool IsMachineHeader(QStringView line) {
    const auto isQuote = [](QChar c) { return c == u'>' || c == u' '; };
    const auto start =
        line.startsWith(u'>') ? std::find_if_not(line.begin(), line.end(), isQuote) : line.begin();
    const auto colon = std::find_if_not(start, line.end(), IsNameCharacter);
    if (colon == line.end() || *colon != u':')
        return false;
    const QStringView name(start, colon);
    if (name.startsWith(u"x-", Qt::CaseInsensitive) || name.startsWith(u"arc-", Qt::CaseInsensitive))
        return true;
    return std::any_of(kMachineHeaders.begin(), kMachineHeaders.end(),
                       [&](QStringView machine) { return name.compare(machine, Qt::CaseInsensitive) == 0; });
}

} // namespace varlo

#include "import/MailHeader.h"

#include <algorithm>
#include <array>

namespace varlo {

namespace {

struct Field {
    QStringView Name;
    QStringView Value;
};

bool IsNameCharacter(QChar c) {
    return c == u'-' || (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || (c >= u'0' && c <= u'9');
}

// An empty name when the line has another form.
Field FieldOf(QStringView line) {
    const auto isQuote = [](QChar c) { return c == u'>' || c == u' '; };
    const auto start =
        line.startsWith(u'>') ? std::find_if_not(line.begin(), line.end(), isQuote) : line.begin();
    const auto colon = std::find_if_not(start, line.end(), IsNameCharacter);
    if (colon == line.end() || *colon != u':')
        return {};
    return {QStringView(start, colon), QStringView(colon + 1, line.end()).trimmed()};
}

template<size_t count> bool IsOneOf(QStringView name, const std::array<const char16_t *, count> &names) {
    return std::any_of(names.begin(), names.end(),
                       [&](QStringView each) { return name.compare(each, Qt::CaseInsensitive) == 0; });
}

// Nobody but a machine writes these.
bool IsUnmistakable(QStringView name) {
    constexpr std::array names{u"dkim-signature", u"authentication-results", u"received-spf", u"feedback-id",
                               u"thread-index"};
    return IsOneOf(name, names) || name.startsWith(u"arc-", Qt::CaseInsensitive);
}

bool IsOfMachines(QStringView name) {
    constexpr std::array names{u"message-id", u"in-reply-to",    u"references",       u"resent-message-id",
                               u"content-id", u"list-id",        u"list-unsubscribe", u"list-post",
                               u"list-help",  u"list-subscribe", u"list-owner",       u"list-archive",
                               u"errors-to",  u"return-path",    u"received"};
    return IsOneOf(name, names) || name.startsWith(u"x-", Qt::CaseInsensitive);
}

} // namespace

bool IsHeader(QStringView line) {
    return !FieldOf(line).Name.isEmpty();
}

bool IsMachineHeader(QStringView line, bool followsHeader) {
    const Field field = FieldOf(line);
    if (IsUnmistakable(field.Name))
        return true;
    const bool isMachines =
        field.Value.startsWith(u'<') || field.Value.startsWith(u"from ") || field.Value.startsWith(u"by ");
    return IsOfMachines(field.Name) && (isMachines || followsHeader);
}

} // namespace varlo

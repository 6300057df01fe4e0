#include "core/AddressSyntax.h"

#include "core/Literals.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace varlo {

namespace {

constexpr std::u16string_view kForbidden = u"!#$%^&*()=+{}[]|\\;:'/?>,< \"";
constexpr qsizetype kShortest = 6;

// Control characters beside the forbidden ones: an address with a line break in it would be two lines of a file. As a
// table, since a list of many thousands is looked at character by character.
constexpr std::array<bool, 128> kIsForbidden = [] {
    std::array<bool, 128> table{};
    for (size_t c = 0; c < table.size(); ++c)
        table[c] = c < u' ' || kForbidden.find(static_cast<char16_t>(c)) != kForbidden.npos;
    return table;
}();

bool IsForbidden(QChar c) {
    return c.unicode() < kIsForbidden.size() && kIsForbidden[c.unicode()];
}

QString ForbiddenText(const QString &address) {
    const QChar c = *std::find_if(address.begin(), address.end(), IsForbidden);
    if (c == u' ')
        return u"There is a blank in it."_s;
    if (c == u'"')
        return u"There is a quotation mark in it."_s;
    return c < u' ' ? u"There is a control character in it."_s : u"There is a \""_s + c + u"\" in it."_s;
}

} // namespace

AddressFault FaultOf(QStringView address) {
    const qsizetype at = address.indexOf(u'@');
    if (at < 0)
        return AddressFault::NoAt;
    if (!address.contains(u'.'))
        return AddressFault::NoDot;
    if (address.size() < kShortest)
        return AddressFault::TooShort;
    const QStringView domain = address.sliced(at + 1);
    if (domain.contains(u'@'))
        return AddressFault::SecondAt;
    if (!domain.contains(u'.'))
        return AddressFault::NoDotBehindAt;
    if (std::any_of(address.begin(), address.end(), IsForbidden))
        return AddressFault::Forbidden;
    return address.contains(u"..") ? AddressFault::TwoDots : AddressFault::None;
}

QString FaultText(const QString &address) {
    switch (FaultOf(address)) {
    case AddressFault::NoAt:
        return u"There is no \"@\" in it."_s;
    case AddressFault::NoDot:
        return u"There is no dot in it."_s;
    case AddressFault::TooShort:
        return u"It is shorter than six characters."_s;
    case AddressFault::SecondAt:
        return u"There is more than one \"@\" in it."_s;
    case AddressFault::NoDotBehindAt:
        return u"There is no dot behind the \"@\"."_s;
    case AddressFault::Forbidden:
        return ForbiddenText(address);
    case AddressFault::TwoDots:
        return u"There are two dots side by side in it."_s;
    case AddressFault::None:
        break;
    }
    return {};
}

} // namespace varlo

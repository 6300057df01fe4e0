#include "core/DeviceNames.h"

#include "core/Literals.h"

#include <algorithm>
#include <array>

namespace varlo {

namespace {

constexpr std::array kDevices{u"CON", u"PRN", u"AUX", u"NUL", u"CONIN$", u"CONOUT$"};
constexpr std::array kPorts{u"COM", u"LPT"};

bool Is(QStringView name, const char16_t *device) {
    return name.compare(QStringView(device), Qt::CaseInsensitive) == 0;
}

// The digits 1 to 9, and the three that are written raised.
bool IsPortNumber(QChar c) {
    return (c >= u'1' && c <= u'9') || c == u'\u00B9' || c == u'\u00B2' || c == u'\u00B3';
}

} // namespace

bool IsDeviceName(QStringView name) {
    const qsizetype point = name.indexOf(u'.');
    const QStringView stem = name.first(point < 0 ? name.size() : point).trimmed();
    const auto is = [stem](const char16_t *device) { return Is(stem, device); };
    if (std::any_of(kDevices.begin(), kDevices.end(), is))
        return true;
    return stem.size() == 4 && IsPortNumber(stem.back()) &&
           std::any_of(kPorts.begin(), kPorts.end(),
                       [stem](const char16_t *port) { return Is(stem.first(3), port); });
}

} // namespace varlo

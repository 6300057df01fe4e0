#include "lists/AddressRules.h"

#include "core/Literals.h"
#include "core/Reporting.h"
#include "lists/EntryListModel.h"

namespace varlo {

namespace {

const QString kForbidden = u"!#$%^&*()=+{}[]|\\;:'/?>,< \""_s;
constexpr qsizetype kShortest = 6;

} // namespace

bool PassesAddressRules(const QString &address) {
    const qsizetype at = address.indexOf(u'@');
    if (at < 0 || address.size() < kShortest)
        return false;
    const QStringView domain = QStringView(address).sliced(at + 1);
    if (domain.contains(u'@') || !domain.contains(u'.'))
        return false;
    // Control characters beside the forbidden ones: an address with a line break in it would be two lines of
    // a file.
    const bool hasForbidden = std::any_of(address.begin(), address.end(),
                                          [](QChar c) { return c < u' ' || kForbidden.contains(c); });
    return !hasForbidden && !address.contains(u".."_s);
}

bool IsValidAddress(Session &session, const QString &address, bool Silent) {
    const bool valid = PassesAddressRules(address);
    if (!valid && !Silent)
        session.Boxes.MsgBox(u"The e-mail address ["_s + address + u"] is invalid"_s, BoxButtons::Ok,
                             BoxIcon::Critical, kErrorTitle);
    return valid;
}

bool IsNewAddress(Session &session, const QString &address, const EntryListModel &listBox) {
    if (listBox.FindFirst(address) < 0)
        return true;
    StatusMessage(session, u"Duplicate address ["_s + address + u"] ignored"_s);
    return false;
}

QString CleanTypedAddress(const QString &text) {
    const QString trimmed = text.trimmed();
    const QString prefix = u"mailto:"_s;
    return trimmed.startsWith(prefix) ? trimmed.sliced(prefix.size()) : trimmed;
}

} // namespace varlo

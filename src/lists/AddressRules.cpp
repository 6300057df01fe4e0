#include "lists/AddressRules.h"

#include "core/Literals.h"
#include "core/Reporting.h"
#include "lists/EntryListModel.h"

namespace varlo {

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

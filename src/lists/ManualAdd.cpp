#include "lists/ManualAdd.h"

#include "core/Literals.h"
#include "core/Reporting.h"
#include "lists/AddressRules.h"
#include "lists/ListStore.h"

namespace varlo {

bool AddTypedAddress(Session &session, ListStore &lists, const QString &text, Request request,
                     const std::function<void()> &process) {
    ErrorTrap trap(session, u"Main.cmdEmailAdd"_s);
    if (!IsValidAddress(session, text, false)) {
        trap([&] { StatusMessage(session, u"The e-mail address ["_s + text + u"] is invalid"_s); });
        return false;
    }
    bool isNew = true;
    trap([&] { isNew = IsNewAddress(session, text, lists.lstEmailList(kPending)); });
    if (isNew) {
        const QString sign = request == Request::Subscribe ? u"+"_s : u"-"_s;
        trap([&] { lists.AddPending(sign + text); });
        trap([&] { StatusMessage(session, u"Added ["_s + text + u"] to the pending list"_s); });
    }
    if (process)
        process();
    return true;
}

void ReportValidity(Session &session, const QString &text) {
    if (IsValidAddress(session, text, false))
        session.Boxes.MsgBox(u"The e-mail address ["_s + text + u"] appears to be valid"_s, BoxButtons::Ok,
                             BoxIcon::Information);
}

} // namespace varlo

#include "lists/ManualAdd.h"

#include "core/Literals.h"
#include "lists/AddressRules.h"
#include "lists/ListStore.h"

namespace varlo {

bool AddTypedAddress(ListStore &lists, const QString &text, RequestKind kind,
                     const std::function<void()> &process) {
    const auto answer = [&] {
        const ListStep step(lists.Undo, u"Add Request"_s);
        return lists.Pending.Offer({kind, text, RequestOrigin::Typed});
    }();
    if (answer == PendingList::Answer::Invalid)
        return false;
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

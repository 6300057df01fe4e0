#include "lists/ManualAdd.h"

#include "core/Reporting.h"
#include "lists/AddressRules.h"
#include "lists/ListStore.h"

namespace varlo {

bool AddTypedAddress(Session &session, ListStore &lists, const QString &text, Request request,
                     const std::function<void()> &process) {
    ErrorTrap trap(session, QStringLiteral("Main.cmdEmailAdd"));
    if (!IsValidAddress(session, text, false)) {
        trap([&] {
            StatusMessage(session,
                          QStringLiteral("The e-mail address [") + text + QStringLiteral("] is invalid"));
        });
        return false;
    }
    bool isNew = true;
    trap([&] { isNew = IsNewAddress(session, text, lists.lstEmailList(kPending)); });
    if (isNew) {
        const QString sign = request == Request::Subscribe ? QStringLiteral("+") : QStringLiteral("-");
        trap([&] { lists.AddPending(sign + text); });
        trap([&] {
            StatusMessage(session,
                          QStringLiteral("Added [") + text + QStringLiteral("] to the pending list"));
        });
    }
    if (process)
        process();
    return true;
}

void ReportValidity(Session &session, const QString &text) {
    if (IsValidAddress(session, text, false))
        session.Boxes.MsgBox(QStringLiteral("The e-mail address [") + text +
                                 QStringLiteral("] appears to be valid"),
                             BoxButtons::Ok, BoxIcon::Information);
}

} // namespace varlo

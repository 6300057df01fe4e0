#include "lists/ClipboardCapture.h"

#include "core/Reporting.h"
#include "lists/AddressRules.h"
#include "lists/ListStore.h"

namespace varlo {

ClipboardCapture::ClipboardCapture(Session &session, ListStore &lists, ClipboardAccess clipboard)
    : session_(session), lists_(lists), clipboard_(std::move(clipboard)) {
}

QString ClipboardCapture::Caption(int count) {
    return QString::number(count) + QStringLiteral(" e-mail addresses captured");
}

void ClipboardCapture::Begin() {
    Trapped(session_, QStringLiteral("Main.cmdCapture"),
            [&] { StatusMessage(session_, QStringLiteral("E-mail address capture on")); });
    clipboard_.Clear(); // what was copied before is not meant
}

void ClipboardCapture::End() {
    Trapped(session_, QStringLiteral("Main.cmdCapture"),
            [&] { StatusMessage(session_, QStringLiteral("E-mail address capture off")); });
    clipboard_.Clear();
}

QString ClipboardCapture::Tick() {
    QString caption;
    Trapped(session_, QStringLiteral("Main.tmrCaptureEmail"), [&] {
        if (TakeText())
            caption = Caption(lists_.lstEmailList(kPending).Count());
    });
    return caption;
}

bool ClipboardCapture::TakeText() {
    const QString text = clipboard_.Text();
    clipboard_.Clear(); // so that each copied text is looked at once
    if (text.isEmpty())
        return false;
    const QString address = CleanTypedAddress(text);
    const bool isNew = IsNewAddress(session_, address, lists_.lstEmailList(kPending));
    const bool isValid = IsValidAddress(session_, address, true);
    if (!isNew || !isValid)
        return false;
    lists_.AddPending(u'+' + address);
    StatusMessage(session_, QStringLiteral("Added [") + address + QStringLiteral("] to the pending list"));
    lists_.UpdateControls();
    return true;
}

} // namespace varlo

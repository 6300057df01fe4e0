#include "lists/ClipboardCapture.h"

#include "core/Literals.h"
#include "core/Reporting.h"
#include "lists/AddressRules.h"
#include "lists/ListStore.h"

namespace varlo {

ClipboardCapture::ClipboardCapture(Session &session, ListStore &lists, ClipboardAccess clipboard)
    : session_(session), lists_(lists), clipboard_(std::move(clipboard)) {
}

QString ClipboardCapture::Caption(int count) {
    return QString::number(count) + u" e-mail addresses captured"_s;
}

void ClipboardCapture::Begin() {
    Trapped(session_, u"Main.cmdCapture"_s, [&] { StatusMessage(session_, u"E-mail address capture on"_s); });
    Empty(); // what was copied before is not meant
}

void ClipboardCapture::End() {
    Trapped(session_, u"Main.cmdCapture"_s,
            [&] { StatusMessage(session_, u"E-mail address capture off"_s); });
    Empty();
}

void ClipboardCapture::Empty() {
    Trapped(session_, u"Main.cmdCapture"_s, [this] { clipboard_.Clear(); });
}

QString ClipboardCapture::Tick() {
    const int before = lists_.Pending.Count();
    Trapped(session_, u"Main.tmrCaptureEmail"_s, [this] { TakeText(); });
    const int after = lists_.Pending.Count(); // it may have been taken, though that could not be logged
    return after == before ? QString() : Caption(after);
}

void ClipboardCapture::TakeText() {
    const QString text = clipboard_.Text();
    clipboard_.Clear(); // so that each copied text is looked at once
    if (!text.isEmpty())
        lists_.Pending.Offer({RequestKind::Subscribe, CleanTypedAddress(text), RequestOrigin::Clipboard});
}

} // namespace varlo

#include "lists/CarefulClipboard.h"

#include "core/Literals.h"
#include "core/Patience.h"

#include <QClipboard>
#include <QGuiApplication>

#ifdef Q_OS_WIN
#include <windows.h>
#endif

namespace varlo {

namespace {

// Anybody may have let go of it since the last look: its text is there, so it was not read.
void ThrowIfUnread(const RawClipboard &raw) {
    if (raw.OffersText())
        throw RuntimeError(kClipboardHeld, u"Can't open Clipboard"_s);
}

QString ReadText(const RawClipboard &raw) {
    QString text = raw.Text();
    if (text.isEmpty())
        ThrowIfUnread(raw);
    return text;
}

RawClipboard OfSystem() {
    RawClipboard raw{.Text = [] { return QGuiApplication::clipboard()->text(); },
                     .Clear = [] { QGuiApplication::clipboard()->clear(); },
                     .OffersText = [] { return false; },
                     .IsHeld = [] { return false; }};
#ifdef Q_OS_WIN
    raw.OffersText = [] { return ::IsClipboardFormatAvailable(CF_UNICODETEXT) != 0; };
    raw.IsHeld = [] { return !::OpenClipboard(nullptr) || !::CloseClipboard(); };
#endif
    return raw;
}

} // namespace

ClipboardAccess Careful(RawClipboard raw, std::chrono::milliseconds patience) {
    const auto read = [raw, patience] {
        const auto always = [] { return true; };
        try {
            return Patiently([&raw] { return ReadText(raw); }, always, patience);
        } catch (const RuntimeError &) {
            if (raw.IsHeld())
                throw;
            return QString(); // an empty text, which is a text, too
        }
    };
    const auto clear = [raw, patience] {
        const auto attempt = [&raw] {
            raw.Clear();
            ThrowIfUnread(raw);
        };
        Patiently(attempt, raw.IsHeld, patience);
    };
    return {.Text = read, .Clear = clear};
}

ClipboardAccess SystemClipboard() {
    return Careful(OfSystem());
}

} // namespace varlo

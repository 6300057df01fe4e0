// The clipboard of a system on which other programs can hold it shut.
#pragma once

#include "lists/ClipboardCapture.h"

#include <chrono>

namespace varlo {

// A clipboard as the system offers it: what cannot be opened looks empty, and clearing it does nothing.
struct RawClipboard {
    std::function<QString()> Text;
    std::function<void()> Clear;
    std::function<bool()> OffersText; // can be asked of a clipboard that is held
    std::function<bool()> IsHeld;     // by another program, at this moment
};

constexpr int kClipboardHeld = 521;

// The same with a held clipboard told from an empty one: tried again for `patience`, then RuntimeError(521).
ClipboardAccess Careful(RawClipboard raw,
                        std::chrono::milliseconds patience = std::chrono::milliseconds(200));

// The clipboard of this system.
ClipboardAccess SystemClipboard();

} // namespace varlo

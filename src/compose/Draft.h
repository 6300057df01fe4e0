// The one saved draft of a profile.
#pragma once

#include "core/Session.h"

#include <optional>

namespace varlo {

struct Draft {
    QString Subject;
    QString Body; // lines end with CR LF

    bool operator==(const Draft &) const = default;
};

// Writes "draft.txt" of the open profile: the subject as one line (line breaks in it become blanks), then the
// body, each closed by CR LF. Replaces an older draft as one step. Throws RuntimeError; the older draft then
// stays.
void SaveDraft(const Session &session, const Draft &draft);

// Reads it back; nothing when there is no draft. A file that holds no CR LF at all came from another editor:
// its line feeds count as line ends. Throws RuntimeError when it cannot be read.
std::optional<Draft> OpenDraft(const Session &session);

} // namespace varlo

// The operator's signature: read from the settings, put under a new message.
#pragma once

#include "core/Session.h"

#include <QString>

namespace varlo {

// The signature of the open profile, its lines ending with CR LF; empty when there is none.
QString LoadSignature(Session &session);

// Whether a new message begins with the signature. Throws RuntimeError 13 or 6 when the setting is not a
// number.
bool AutoAddSignature(Session &session);

// CR LF and the signature: what "Clear All" leaves and "Insert Signature" inserts, with an empty signature,
// too.
QString SignedBody(const QString &signature);

// The text that a new message begins with: an empty line above the signature when there is one and `autoAdd`
// is set, otherwise nothing.
QString InitialBody(const QString &signature, bool autoAdd);

} // namespace varlo

#include "compose/Signature.h"

#include "core/Literals.h"
#include "core/Settings.h"
#include "core/ValueText.h"

namespace varlo {

QString LoadSignature(Session &session) {
    return FromOneLine(session.AllSettings.Read(&Preferences::SignatureText));
}

bool AutoAddSignature(Session &session) {
    return session.AllSettings.Read(&Preferences::SignatureAutoAdd) == 1;
}

QString SignedBody(const QString &signature) {
    return u"\r\n"_s + signature;
}

QString InitialBody(const QString &signature, bool autoAdd) {
    return autoAdd && !signature.isEmpty() ? SignedBody(signature) : QString();
}

} // namespace varlo

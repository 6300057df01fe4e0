#include "compose/Signature.h"

#include "core/Literals.h"
#include "core/PreferenceKeys.h"

namespace varlo {

QString LoadSignature(Session &session) {
    return FromOneLine(ReadText(session.INI, Keys::SignatureText));
}

bool AutoAddSignature(Session &session) {
    return ReadNumber(session.INI, Keys::SignatureAutoAdd) == 1;
}

QString SignedBody(const QString &signature) {
    return u"\r\n"_s + signature;
}

QString InitialBody(const QString &signature, bool autoAdd) {
    return autoAdd && !signature.isEmpty() ? SignedBody(signature) : QString();
}

} // namespace varlo

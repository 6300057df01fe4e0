#include "compose/Signature.h"

#include "core/PreferenceKeys.h"

namespace varlo {

QString LoadSignature(Session &session) {
    return FromOneLine(ReadText(session.INI, Keys::SignatureText));
}

bool AutoAddSignature(Session &session) {
    return ReadNumber(session.INI, Keys::SignatureAutoAdd) == 1;
}

QString SignedBody(const QString &signature) {
    return QStringLiteral("\r\n") + signature;
}

QString InitialBody(const QString &signature, bool autoAdd) {
    return autoAdd && !signature.isEmpty() ? SignedBody(signature) : QString();
}

} // namespace varlo

#include "prefs/WrapValidator.h"

#include "core/Literals.h"

namespace varlo {

QValidator::State WrapValidator::validate(QString &input, int &) const {
    bool isNumber = false;
    const int column = input.trimmed().toInt(&isNumber);
    // Not "Invalid", which would swallow the keys of a number that is still being typed.
    return isNumber && column < 1 ? Intermediate : Acceptable;
}

void WrapValidator::fixup(QString &input) const {
    input = u"1"_s;
}

} // namespace varlo

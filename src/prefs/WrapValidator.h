// Keeps the wrap column at 1 or more without refusing anything that is typed.
#pragma once

#include <QValidator>

namespace varlo {

// The window itself checks no field: whatever stands in it when OK is chosen is converted and stored. What
// this adds happens before, in the field: a whole number below 1, which no text can be wrapped at, becomes
// "1" before the operator's eyes when he leaves the field or presses Enter. Every other text, a number or
// not, stays as it was typed.
class WrapValidator : public QValidator {
    Q_OBJECT

public:
    using QValidator::QValidator;

    State validate(QString &input, int &position) const override;
    void fixup(QString &input) const override;
};

} // namespace varlo

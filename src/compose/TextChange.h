// What makes one text out of another: the one stretch in which they differ.
#pragma once

#include <QString>

namespace varlo {

// Replacing `Length` characters at `At` by `Text`.
struct TextChange {
    qsizetype At = 0;
    qsizetype Length = 0;
    QString Text;

    bool operator==(const TextChange &) const = default;
};

// The change that makes `to` out of `from`: what both begin and end with is left out. A character of two
// units is never split. Linear in the length of the texts.
TextChange ChangeBetween(const QString &from, const QString &to);

// Applies the change to `text` and returns the one that leads back.
TextChange Apply(const TextChange &change, QString &text);

} // namespace varlo

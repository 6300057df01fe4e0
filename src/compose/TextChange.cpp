#include "compose/TextChange.h"

#include <algorithm>
#include <iterator>

namespace varlo {

TextChange ChangeBetween(const QString &from, const QString &to) {
    const auto firstDifference = std::mismatch(from.cbegin(), from.cend(), to.cbegin(), to.cend());
    auto prefix = firstDifference.first - from.cbegin();
    if (prefix > 0 && from[prefix - 1].isHighSurrogate())
        --prefix;
    const auto lastDifference =
        std::mismatch(from.crbegin(), std::make_reverse_iterator(from.cbegin() + prefix), to.crbegin(),
                      std::make_reverse_iterator(to.cbegin() + prefix));
    auto suffix = lastDifference.first - from.crbegin();
    if (suffix > 0 && from[from.size() - suffix].isLowSurrogate())
        --suffix;
    return {prefix, from.size() - prefix - suffix, to.sliced(prefix, to.size() - prefix - suffix)};
}

TextChange Apply(const TextChange &change, QString &text) {
    TextChange back{change.At, change.Text.size(), text.sliced(change.At, change.Length)};
    text.replace(change.At, change.Length, change.Text);
    return back;
}

} // namespace varlo

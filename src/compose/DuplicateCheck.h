// Finds the addresses that stand more than once among the recipients of one send.
#pragma once

#include <QSet>
#include <QString>

namespace varlo {

// Two addresses are the same when their lower-cased texts are: no blank is trimmed, no display name dropped.
// The answers are those of a comparison with every earlier address; a hash gives them in constant time. Most
// addresses are lower case already and share their text with the set, so that a million of them cost about 50
// MB.
class DuplicateCheck {
public:
    // Makes room for `count` addresses at once.
    void Reserve(qsizetype count) { seen_.reserve(count); }

    // True when no earlier address was the same; otherwise counts a duplicate.
    bool IsNew(const QString &address);

    // How many duplicates there were.
    qsizetype Count() const { return count_; }

    // The status text for a duplicate.
    static QString StatusText(const QString &address);

private:
    QSet<QString> seen_;
    qsizetype count_ = 0;
};

} // namespace varlo

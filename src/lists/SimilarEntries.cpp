#include "lists/SimilarEntries.h"

#include "core/Literals.h"
#include "core/modPublic.h"

namespace varlo {

namespace {

QString PersonOf(const QString &lower) {
    const QString name = lower.first(qMax<qsizetype>(lower.lastIndexOf(u'@'), 0));
    return name.section(u'+', 0, 0).remove(u'.');
}

// One insertion, removal, replacement or exchange of neighbours leads from one to the other.
bool DifferByOneLetter(QStringView a, QStringView b) {
    if (a.size() < b.size())
        std::swap(a, b);
    if (a.size() - b.size() > 1)
        return false;
    qsizetype same = 0;
    while (same < b.size() && a[same] == b[same])
        ++same;
    a = a.sliced(same);
    b = b.sliced(same);
    if (a.size() > b.size())
        return a.sliced(1) == b;
    return a.isEmpty() || a.sliced(1) == b.sliced(1) ||
           (a.size() > 1 && a[0] == b[1] && a[1] == b[0] && a.sliced(2) == b.sliced(2));
}

} // namespace

QString DomainOf(const QString &address) {
    const qsizetype at = address.lastIndexOf(u'@');
    return at < 0 ? QString() : LowerCased(address.sliced(at + 1));
}

bool IsOfDomain(const QString &address, const QString &domain) {
    const QString wanted = LowerCased(domain);
    const QString own = DomainOf(address);
    return !wanted.isEmpty() && (own == wanted || own.endsWith(u'.' + wanted));
}

bool AreSimilar(const QString &a, const QString &b) {
    const QString lowerA = LowerCased(a);
    const QString lowerB = LowerCased(b);
    const QString person = PersonOf(lowerA);
    return DifferByOneLetter(lowerA, lowerB) || (!person.isEmpty() && person == PersonOf(lowerB));
}

} // namespace varlo

// Which entries of a list belong together: those of one domain, and those that are nearly the same.
#pragma once

#include <QStringList>

namespace varlo {

// What stands behind the last "@", in lower case; empty when there is none.
QString DomainOf(const QString &address);

// Whether the address is one of that domain or of one below it ("a@mail.x.test" of "x.test"), letter case aside.
bool IsOfDomain(const QString &address, const QString &domain);

// Whether two addresses may be meant for the same person: the same before the "@" but for letter case, dots, and
// what follows a "+"; or the same but for one letter that is missing, too many, another one, or in its neighbour's
// place. An address is similar to itself.
bool AreSimilar(const QString &a, const QString &b);

} // namespace varlo

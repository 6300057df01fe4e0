// The program's own icons, in the colours of the palette that they are painted on.
#pragma once

#include <QIcon>
#include <QStringView>

namespace varlo {

// The icon of that name in packaging/icons ("save", "draft-open"); a null icon when there is none. The dark
// lines of its drawing take the palette's text colour each time it is painted, so that it follows a change of
// theme; a disabled one is paler. The program's icon "varlo-pro" keeps its colours.
QIcon Icon(QStringView name);

} // namespace varlo

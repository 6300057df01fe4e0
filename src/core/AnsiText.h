// Text from before UTF-8: bytes in the code page that the system's older programs write.
#pragma once

#include <QByteArray>
#include <QString>

namespace varlo {

// `bytes` as Windows-1252 with every byte kept: the five that it leaves unassigned become their C1 code points.
QString FromWindows1252(const QByteArray &bytes);

// `bytes` in the code page of the system's language, whatever code page this program declares for itself. Where
// they do not fit it, and on systems that have none, Windows-1252: no byte is lost.
QString FromAnsi(const QByteArray &bytes);

// The same in the numbered code page (Windows only; a null text elsewhere, and when the bytes do not fit it).
QString FromCodePage(const QByteArray &bytes, unsigned codePage);

} // namespace varlo

// Values of settings as text: numbers, truth values, and texts of several lines on one line.
#pragma once

#include <QString>

namespace varlo {

// `text` as a whole number of 16 or 32 bits; a half goes to the even neighbour. Throws RuntimeError: 13 when it
// is not a number, 6 when it does not fit.
qint16 ToWhole16(const QString &text);
qint32 ToWhole32(const QString &text);

// "True" and "False" in any letter case, or a number other than 0. Throws RuntimeError 13 or 6.
bool ToTruth(const QString &text);

// Multi-line texts stand on one line of the file, each line break as the two characters backslash and "n".
QString FromOneLine(QString stored); // "\n" to CR LF
QString ToOneLine(QString text);     // CR LF to "\n"

} // namespace varlo

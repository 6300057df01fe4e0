// Small routines that every room shares.
#pragma once

#include "core/Literals.h"

#include <QStringList>

namespace varlo {

// The characters that profile and list names cannot hold.
inline const QString kForbiddenInNames = u"\\/:*?\"<>|"_s;

// True when a file or folder lies at exactly that path.
bool PathExists(const QString &path);

// The text in lower case, letters of all alphabets. QString::toLower() looks up every character; this shares
// the text at once when it is plain lower case already, as most addresses are.
QString LowerCased(const QString &text);

// `text` with every character of `chars` replaced by one blank.
QString StripChars(QString text, const QString &chars);

// Sorts names that are remembered by their position: without regard to letter case, names that differ in
// nothing else by their characters.
void SortNames(QStringList &names);

// "1 hrs, 2 mins, 3 secs"; hours and minutes appear only when above 0.
QString DurationText(qint64 seconds);

} // namespace varlo

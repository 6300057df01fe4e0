// Small routines that every room shares.
#pragma once

#include <QString>

namespace varlo {

// The characters that profile and list names cannot hold.
inline const QString kForbiddenInNames = QStringLiteral("\\/:*?\"<>|");

// True when a file or folder lies at exactly that path.
bool PathExists(const QString &path);

// `text` with every character of `chars` replaced by one blank.
QString StripChars(QString text, const QString &chars);

// "1 hrs, 2 mins, 3 secs"; hours and minutes appear only when above 0.
QString DurationText(qint64 seconds);

} // namespace varlo

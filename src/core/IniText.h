// The text of an INI file: finding, setting and removing keys, every other line kept as it is.
#pragma once

#include <QString>

#include <optional>

namespace varlo::IniText {

// The value of the first key `key` in the first section `section`, without blanks and one pair of quotation
// marks around it; nothing when there is no such section or key.
std::optional<QString> Find(const QString &text, const QString &section, const QString &key);

// The text with the key set. A new key goes to the end of its section, a new section to the end of the text.
QString WithValue(const QString &text, const QString &section, const QString &key, const QString &value);

// `value` as it has to stand in a text so that Find gives it back: in quotation marks when blanks or quotation
// marks around it would be dropped otherwise.
QString Kept(const QString &value);

// The text without the first key of that name in the first section of that name.
QString WithoutKey(const QString &text, const QString &section, const QString &key);

// The text without the first section of that name.
QString WithoutSection(const QString &text, const QString &section);

} // namespace varlo::IniText

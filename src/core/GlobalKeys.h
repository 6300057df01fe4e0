// The keys of "global.ini": which profile is opened at the start.
#pragma once

#include "core/clsINIFile.h"

namespace varlo {

struct IniKey {
    const char *Section;
    const char *Key;
    const char *Default;
};

namespace GlobalKeys {
inline constexpr IniKey AutoStart{"Profiles", "AutoStart", "0"};
// The position of the last opened profile in the manager's list, not its name.
inline constexpr IniKey ProfileCurrent{"Profiles", "ProfileCurrent", "0"};
} // namespace GlobalKeys

// Reads a whole number of 32 bits. Throws RuntimeError 13 or 6 when the file has something else. Reading and
// writing leave the section of `ini` at the key's.
int ReadNumber(clsINIFile &ini, const IniKey &key);
void WriteValue(clsINIFile &ini, const IniKey &key, const QVariant &value);

} // namespace varlo

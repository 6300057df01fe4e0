#include "core/GlobalKeys.h"

#include "core/ValueText.h"

namespace varlo {

int ReadNumber(clsINIFile &ini, const IniKey &key) {
    ini.SetSection(QString::fromLatin1(key.Section));
    return ToWhole32(ini.GetValue(QString::fromLatin1(key.Key), QString::fromLatin1(key.Default)));
}

void WriteValue(clsINIFile &ini, const IniKey &key, const QVariant &value) {
    ini.SetSection(QString::fromLatin1(key.Section));
    ini.Values(QString::fromLatin1(key.Key), value);
}

} // namespace varlo

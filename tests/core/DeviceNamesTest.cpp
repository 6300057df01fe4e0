#include "core/DeviceNames.h"

#include <gtest/gtest.h>

namespace varlo {
namespace {

TEST(DeviceNames, ADeviceIsKnownInAnyCaseWithAnyExtensionAndBlanks) {
    for (const char16_t *name :
         {u"CON", u"con", u"Nul.txt", u"aux.tar.gz", u"prn .log", u" con", u"CONIN$", u"conout$"})
        EXPECT_TRUE(IsDeviceName(name)) << QStringView(name).toUtf8().constData();
}

TEST(DeviceNames, PortsCountFromOneToNine) {
    for (const char16_t *name : {u"COM1", u"com9.txt", u"LPT1", u"lpt3", u"COM\u00B9", u"LPT\u00B3.txt"})
        EXPECT_TRUE(IsDeviceName(name)) << QStringView(name).toUtf8().constData();
    for (const char16_t *name : {u"COM", u"COM0", u"COM10", u"LPTx", u"XCOM1", u"COM 1"})
        EXPECT_FALSE(IsDeviceName(name)) << QStringView(name).toUtf8().constData();
}

TEST(DeviceNames, OrdinaryNamesThatHoldADeviceAreNone) {
    for (const char16_t *name :
         {u"", u".", u"..", u".con", u"Contacts.txt", u"con-fetti", u"my nul", u"auxiliary"})
        EXPECT_FALSE(IsDeviceName(name)) << QStringView(name).toUtf8().constData();
}

} // namespace
} // namespace varlo

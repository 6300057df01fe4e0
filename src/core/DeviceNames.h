// Names that Windows keeps for its devices.
#pragma once

#include <QStringView>

namespace varlo {

// True for a file name that Windows takes for a device in every folder: "CON", "nul.txt", "Com1 .log". What is
// written to such a file is lost or waits for ever.
bool IsDeviceName(QStringView name);

} // namespace varlo

// The maintenance functions of the Preferences window: opening and emptying the profile's log and sent
// folders.
#pragma once

#include "core/Session.h"

namespace varlo {

// The items of the maintenance chooser, in its order.
const QStringList &MaintenanceItems();

// Runs the function named by the exact text of an item; any other text does nothing. A failure ends the
// function before its closing message: no file to delete is not worth a word, everything else is reported as
// "Preferences.cmdLogGo".
void RunMaintenance(Session &session, const QString &item);

// Deletes every file directly in `folder`, hidden ones and links included; what a link leads to, and
// sub-folders, are not touched. Throws RuntimeError: 53 when there is no file or no folder, 70 at the first
// file that cannot be deleted.
void DeleteAllFiles(const QString &folder);

} // namespace varlo

// What the start and the end of the main window do to the profile: folders, session markers, settings.
#pragma once

#include "core/Reporting.h"
#include "core/Session.h"

#include <QStringList>

namespace varlo {

// The folder that the data tree lies in: the executable's own, where it can be written or has profiles already;
// for a copy that was installed for all users (below /usr) or lies bare in a read-only place, the user's data
// folder, which is created.
QString FindProgramFolder(const QString &executableFolder);

// True when profiles lie beside the executable and cannot be written: other data in their place would look as if
// all lists were gone, so the program says so (ShowReadOnlyProfiles) and ends.
bool HasReadOnlyProfiles(const QString &executableFolder);
void ShowReadOnlyProfiles(Dialogs &boxes, const QString &executableFolder);

// Where the read-only documents can lie, seen from the executable: beside it, and in the shared data folder
// of an installation ("bin" and "share" side by side).
QStringList FindDocumentFolders(const QString &executableFolder);

// Points the settings at the open profile's "prefs.ini" and creates the folders that are missing. Every step
// runs under `trap`.
void PrepareProfile(Session &session, ErrorTrap &trap);

// Appends a marker, " SESSION STARTED" or " SESSION ENDED", to each of the three logs.
void WriteSessionMarkers(Session &session, const QString &words, ErrorTrap &trap);

} // namespace varlo

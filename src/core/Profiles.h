// The profile folders: listing, creating, renaming and deleting them.
#pragma once

#include <QStringList>

namespace varlo::Profiles {

// The names of the profiles in `profilesFolder`: its sub-folders, sorted without regard to letter case,
// names that differ in nothing else by their characters.
QStringList Names(const QString &profilesFolder);

// Creates the folder of a new profile. Throws RuntimeError: 75 when it exists, 76 or 70 when it cannot be
// made.
void Create(const QString &profilesFolder, const QString &name);

// Throws RuntimeError: 53 when the old one is gone, 58 when the new name is taken.
void Rename(const QString &profilesFolder, const QString &oldName, const QString &newName);

// Deletes the profile with all its contents; what could not be deleted stays. Links are removed, never
// followed. Never touches anything outside `profilesFolder`.
void Delete(const QString &profilesFolder, const QString &name);

} // namespace varlo::Profiles

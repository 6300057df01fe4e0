// What the program shares by its nature: the open profile, its settings, the status feed and the door to
// boxes.
#pragma once

#include "core/Dialogs.h"
#include "core/StatusFeed.h"
#include "core/clsINIFile.h"

#include <QDateTime>
#include <QMap>
#include <QStringList>

#include <functional>
#include <memory>

namespace varlo {

class Settings;
struct Preferences;

// The time of day as the operator's clock shows it. User-interface thread only.
QDateTime LocalTime();

// One object, made by main() and handed on by reference. User-interface thread only.
struct Session {
    Session(QString programFolder, Dialogs &boxes);
    ~Session();
    Session(const Session &) = delete;
    Session &operator=(const Session &) = delete;

    // A path below the open profile's folder, such as ProfileFile("lists", "news.vlo").
    QString ProfileFile(const QString &folder, const QString &name = {}) const;
    // The folder that holds the profiles.
    QString ProfilesFolder() const;

    const QString ProgramFolder; // the folder that the data tree lies in; no closing separator
    QStringList DocumentFolders; // where help and read-me lie when they are not in the program folder
    QString ProfilePath;         // the open profile's folder; empty until one is open
    clsINIFile INI;              // "global.ini" while a profile is chosen, then the profile's "prefs.ini"

private:
    // Behind pointers, so that a new setting does not touch everybody who has a session.
    const std::unique_ptr<Settings> settings_;

public:
    Settings &AllSettings; // what "prefs.ini" keeps; who uses it includes core/Settings.h
    Preferences &Prefs;    // what of it is held in memory; who uses it includes core/Preferences.h
    StatusFeed Status;
    Dialogs &Boxes;
    bool AppExiting = false; // the main window is unloading
    // The logs that could not be written since the operator's last action, with the number of the error.
    mutable QMap<QString, int> LogTrouble;
    std::function<QDateTime()> Now = LocalTime;
};

} // namespace varlo

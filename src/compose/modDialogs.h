// The file choosers, as every window calls them.
#pragma once

#include "core/Session.h"

namespace varlo {

// "All Files" with every file, as the pairs of description and pattern, separated by NUL characters, that the
// choosers take as a filter.
QString AllFilesFilter();

// Each takes the folder to start in and the chooser's title and returns the full path, with the system's
// separators; empty when cancelled.
QString OpenFile(Session &session, const QString &filter, const QString &folder, const QString &title);
QString SaveFile(Session &session, const QString &filter, const QString &folder, const QString &title);
QString BrowseFolder(Session &session, const QString &folder, const QString &title);

} // namespace varlo

// Where the Help menu and the About box lead: the documents, the maker's pages, a mail to the
// maker.
#pragma once

#include "core/Product.h"
#include "core/Session.h"

#include <QUrl>

namespace varlo {

struct ProductVersion {
    int Major = Product::kMajor;
    int Minor = Product::kMinor;
    int Revision = Product::kRevision;
};

// "2.1"
QString ShortText(const ProductVersion &version);
// "2.1 (Build 7)"
QString LongText(const ProductVersion &version);

namespace HelpTargets {

QUrl Website();
QUrl Forums();
// The maker's page that tells whether `version` is the latest.
QUrl UpdateCheck(const ProductVersion &version = {});
// A new mail to the maker with product and version in its subject.
QUrl SupportMail(const ProductVersion &version = {});
// The documents: in the program folder or, failing that, in the first of the session's document folders.
QUrl ReadMe(const Session &session);

// The help, best form first: the compiled file where something here opens such files, then the same pages as
// HTML for the browser. The compiled file stands last when it is the only hope.
QList<QUrl> Contents(const Session &session, bool hasChmViewer);

// The page about the window of that object name, such as "frmMain"; empty for a window that has none.
QString Page(const QString &window);

} // namespace HelpTargets

// True when a program for compiled help files is registered with the desktop. `applicationFolders` are the
// folders in which desktops of the freedesktop kind keep their registries; they are not asked on Windows,
// which brings a viewer.
bool HasChmViewer(const QStringList &applicationFolders);
bool HasChmViewer();

// Opens the help; a form that nothing opens gives way to the next. Reports failure as "Main.mnuHelpContents".
void OpenHelp(Session &session);

// Opens the help at `page` ("main.html"); where the pages are missing, at its beginning.
void OpenHelpPage(Session &session, const QString &page);

// Hands `target` to the desktop. Reports under `label` what nothing opens, and 53 for a local file that is
// not there.
void OpenTarget(Session &session, const QUrl &target, const QString &label);

} // namespace varlo

// The rules of the attachment list: its array, its size summary, what a drop adds to it.
#pragma once

#include <QStringList>
#include <QUrl>

namespace varlo {

// The paths in the program-wide array, in which a single empty element means none; and the array for such
// paths.
QStringList AttachmentPaths(const QStringList &array);
QStringList AttachmentArray(const QStringList &paths);

// "3 Files (3 KB)". Wanted: the total is rounded to whole kilobytes after every file, a half to the even
// neighbour; the figure is a guide for the operator and can differ from the sum of the bytes. Throws
// RuntimeError: 53 for a path where no file lies, 70 for one that cannot be read.
QString AttachmentSummary(const QStringList &paths);

// Names those of the paths that AttachmentSummary cannot count, for the operator; empty when there are none.
QString UnreadableText(const QStringList &paths);

// The local files among dropped addresses, in their order. A folder is no file that could be attached and is
// left out; a file that is gone already is taken, the summary tells of it.
QStringList DroppedFiles(const QList<QUrl> &urls);

} // namespace varlo

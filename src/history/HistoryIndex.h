// "index.csv", the notes beside the versions of a list: one line for each save, the oldest first.
#pragma once

#include <QList>
#include <QString>

namespace varlo::History {

// What is noted of one version. The line stays when the version itself has gone.
struct IndexRow {
    QString Stem;     // the version's file name without extensions
    QString Cause;    // what replaced it
    int Entries = -1; // that it had; -1 when nothing was noted
    int Added = -1;   // by what replaced it
    int Removed = -1;

    bool operator==(const IndexRow &) const = default;
};

// The lines that can be read, in their order; none when there is no file. Throws RuntimeError (70, 57).
QList<IndexRow> ReadIndex(const QString &folder);

// Appends one line; the file is made when missing, with a line of headings. Throws RuntimeError.
void AppendToIndex(const QString &folder, const IndexRow &row);

} // namespace varlo::History

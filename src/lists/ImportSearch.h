// What an import looks through: a text that is pasted or typed, and files.
#pragma once

#include "import/AddressFinder.h"

#include <QStringList>

#include <memory>
#include <vector>

namespace varlo {

// An address of any of the sources; the same one in several counts once and is that of the first.
struct ImportItem {
    QString Address;
    QString Source; // the file's name; empty for the typed text
    int Line = 0;
    int Times = 1;
    AddressFault Fault = AddressFault::None;
};

// Looks through its sources a slice of time after another, the typed text last.
class ImportSearch {
public:
    ImportSearch();

    // In the place of the text before.
    void SetText(const QString &text);
    // A text of that name, or of that name with a number when it is taken.
    void AddSource(const QString &name, const QString &text, const QString &path = {});
    // Reads the files, and those in a folder, as sources; one that is there already anew. What could not be read, as
    // sentences for the operator; empty when all could.
    QString AddFiles(const QStringList &paths);
    void RemoveSource(const QString &name);
    // In the order in which they came, without the typed text.
    QStringList SourceNames() const;

    // Looks on for about that long. True when everything has been looked at.
    bool Step(int milliseconds);
    bool IsDone() const;
    int Percent() const;

    // What has been found up to now.
    QList<ImportItem> Items() const;

private:
    struct Source {
        QString Name;
        QString Path; // of a file
        std::unique_ptr<AddressFinder> Finder;
    };

    QString AddFile(const QString &path);

    std::vector<Source> sources_; // the typed text is the last one
};

} // namespace varlo

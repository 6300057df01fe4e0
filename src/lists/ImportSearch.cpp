#include "lists/ImportSearch.h"

#include "core/Literals.h"
#include "core/RuntimeError.h"
#include "core/TextFile.h"
#include "core/modPublic.h"
#include "import/AnyText.h"

#include <QDir>
#include <QFileInfo>

namespace varlo {

namespace {

constexpr qint64 kLargestFile = qint64(256) * 1024 * 1024;

// The files that a dropped folder stands for; those of its own folders are not meant.
QStringList FilesOf(const QStringList &paths) {
    QStringList files;
    for (const QString &path : paths) {
        if (!QFileInfo(path).isDir()) {
            files << path;
            continue;
        }
        for (const QString &name : QDir(path).entryList(QDir::Files, QDir::Name))
            files << QDir(path).filePath(name);
    }
    return files;
}

} // namespace

ImportSearch::ImportSearch() {
    sources_.push_back({QString(), QString(), std::make_unique<AddressFinder>(QString())});
}

void ImportSearch::SetText(const QString &text) {
    sources_.back().Finder = std::make_unique<AddressFinder>(text);
}

void ImportSearch::AddSource(const QString &name, const QString &text, const QString &path) {
    const QStringList taken = SourceNames();
    QString own = name;
    for (int i = 2; taken.contains(own); ++i)
        own = name + u" (%1)"_s.arg(i);
    sources_.insert(sources_.end() - 1, Source{own, path, std::make_unique<AddressFinder>(text)});
}

QString ImportSearch::AddFile(const QString &path) {
    const QFileInfo file(path);
    if (file.size() > kLargestFile)
        return u"[%1] is larger than %2 MB."_s.arg(file.fileName()).arg(kLargestFile / 1024 / 1024);
    try {
        const auto text = DecodeAnyText(ReadFile(path));
        if (!text)
            return u"[%1] is not text. Save it as CSV or text first."_s.arg(file.fileName());
        const QString whole = file.absoluteFilePath();
        std::erase_if(sources_, [&](const Source &source) { return source.Path == whole; });
        AddSource(file.fileName(), *text, whole);
    } catch (const RuntimeError &error) {
        return u"[%1] could not be read: %2."_s.arg(file.fileName(), error.Description());
    }
    return {};
}

QString ImportSearch::AddFiles(const QStringList &paths) {
    QStringList troubles;
    for (const QString &path : FilesOf(paths))
        troubles << AddFile(path);
    troubles.removeAll(QString());
    return troubles.join(u' ');
}

void ImportSearch::RemoveSource(const QString &name) {
    std::erase_if(sources_, [&](const Source &source) { return source.Name == name && !name.isEmpty(); });
}

QStringList ImportSearch::SourceNames() const {
    QStringList names;
    for (const Source &source : sources_)
        if (!source.Name.isEmpty())
            names << source.Name;
    return names;
}

bool ImportSearch::Step(int milliseconds) {
    for (const Source &source : sources_)
        if (!source.Finder->IsDone() && !source.Finder->Step(milliseconds))
            return false;
    return true;
}

bool ImportSearch::IsDone() const {
    return std::all_of(sources_.begin(), sources_.end(),
                       [](const Source &source) { return source.Finder->IsDone(); });
}

int ImportSearch::Percent() const {
    qsizetype position = 0;
    qsizetype size = 0;
    for (const Source &source : sources_) {
        position += source.Finder->Position();
        size += source.Finder->Size();
    }
    return size == 0 ? 100 : static_cast<int>(100 * position / size);
}

QList<ImportItem> ImportSearch::Items() const {
    QList<ImportItem> items;
    QHash<QString, qsizetype> places;
    for (const Source &source : sources_) {
        for (const FoundAddress &found : source.Finder->Found()) {
            const QString key = LowerCased(found.Text);
            if (const auto place = places.constFind(key); place != places.constEnd()) {
                items[*place].Times += found.Times;
                continue;
            }
            places.insert(key, items.size());
            items.append({found.Text, source.Name, found.Line, found.Times, found.Fault});
        }
    }
    return items;
}

} // namespace varlo

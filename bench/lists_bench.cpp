// The lists at their largest, 32,767 entries, and at smaller sizes to show how the time grows.
//
//   Load/n             a list file of n addresses into both boxes
//   ReadAndSplit/n     the same file read and split into lines, and nothing else
//   Save/n             the chronological box into its file
//   WriteWhole/n       the same bytes into a temporary file that is synced and renamed
//   Process/n          n requests against n entries: a quarter each leave, are new, are duplicates, would
//   leave if
//                      they were there; status log and pending log are written
//   ProcessInWindow/n  the same while both list boxes and a status label show it
//   ProcessAfterSearch/n  the same while every other entry of the alphabetical box is selected
//   AppendLines/n      as many lines in two logs as Process writes: open, one write, close for each
//   Delete/n           all n selected entries, each with its status line in the log
//   AppendDeleted/n    the same lines appended to a log, and nothing else
//   UndoDelete/n       all n entries that were deleted come back, and are gone again
//   InsertTexts/n      the same texts put into two boxes and taken out, and nothing else
//   SaveKeeping/n      a save that changes the file, the version that it replaces kept
//   WriteTwice/n       the same bytes into two temporary files that are synced and renamed
//   FindTrail/n        when an address joined and left, across 20 versions
//   ReadVersions/n     the same files read and split into lines, and nothing else
//   CopyToPending/n    n selected entries
//   CopyTexts/n        the same texts made with their signs, and nothing else
//   Search/n           for a text in every second entry, after a search for one in every other
//   LowerAndContains/n the same comparisons, and nothing else
//   FindAsYouType/n    one key in the box above the list, beside LowerAndContains
//   SortOrder/n        with 500 selected entries
//   SortTexts/n        the same texts lower-cased and sorted, which the two boxes save

#include "core/Literals.h"
#include "core/Preferences.h"
#include "core/StatusLabel.h"
#include "core/TextFile.h"
#include "history/Timeline.h"
#include "history/Versions.h"
#include "lists/EntryListView.h"
#include "lists/FoundRows.h"
#include "lists/ListEditing.h"
#include "lists/ListStore.h"
#include "lists/PendingProcessing.h"
#include "support/MuteDialogs.h"

#include <QApplication>
#include <QDir>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

namespace {

using namespace varlo;

class ScriptedAnswers : public test::MuteDialogs {
public:
    BoxAnswer MsgBox(const QString &text, BoxButtons, BoxIcon, const QString &) override {
        qFatal("unexpected box: %s", qPrintable(text));
        return BoxAnswer::Ok;
    }
    QString InputBox(const QString &, const QString &, const QString &) override { return Input; }

    QString Input;
};

const QString kName = u"news"_s;

// Addresses in no alphabetical order; odd and even ones can be told apart.
QStringList Addresses(int64_t count, const QString &prefix = u"user"_s) {
    QStringList addresses;
    for (int64_t i = 0; i < count; ++i)
        addresses << prefix + QString::number(i * 7919 % 100003) + (i % 2 == 0 ? u'e' : u'o') +
                         u"@mail.example.org"_s;
    return addresses;
}

// A quarter each leave, are new, are on the list already, would leave if they were there.
QStringList Requests(const QStringList &entries) {
    const QStringList others = Addresses(entries.size(), u"other"_s);
    QStringList requests;
    for (qsizetype i = 0; i < entries.size(); ++i)
        requests << QString(i % 2 == 0 ? u'-' : u'+') + (i % 4 == 0 || i % 4 == 3 ? entries[i] : others[i]);
    return requests;
}

struct Program {
    explicit Program(int64_t size) : entries(Addresses(size)) {
        session.ProfilePath = QDir(session.ProfilesFolder()).filePath(u"Bench"_s);
        for (const char *sub : {"lists", "logs"})
            QDir().mkpath(session.ProfileFile(QString::fromLatin1(sub)));
        file = session.ProfileFile(u"lists"_s, kName + u".vlo"_s);
        WriteFile(file, Bytes());
        lists.Open.Load(kName);
    }

    QByteArray Bytes() const { return (entries.join(u"\r\n"_s) + u"\r\n"_s).toUtf8(); }
    QString Log(const char *name) const { return session.ProfileFile(u"logs"_s, QString::fromLatin1(name)); }
    void Reload() {
        lists.Open.DropChanges();
        lists.Open.Load(kName);
        lists.Box(kPending).Model().SetEntries({});
        session.Prefs.ListSortBy = kAlphabetical;
        QFile::remove(Log("StatusLog.txt"));
        QFile::remove(Log("PendingLog.txt"));
    }

    QTemporaryDir folder;
    ScriptedAnswers answers;
    Session session{folder.path(), answers};
    QStringList entries;
    QString file;
    ListStore lists{session};
    ListEditing editing{session, lists};
    PendingProcessing processing{session, lists, nullptr}; // without notifications
};

// What the main window shows of the lists.
struct Window {
    explicit Window(Program &program)
        : chronological(program.lists, kChronological, QString()),
          alphabetical(program.lists, kAlphabetical, QString()), pending(program.lists, kPending, QString()) {
        QObject::connect(&program.session.Status, &StatusFeed::StatusText, &status,
                         [this](const QString &text) { status.setText(text); });
        for (QWidget *widget : std::initializer_list<QWidget *>{&alphabetical, &pending, &status})
            widget->show();
    }
    EntryListView chronological;
    EntryListView alphabetical;
    EntryListView pending;
    StatusLabel status;
};

void Load(benchmark::State &state) {
    Program program(state.range(0));
    for (auto _ : state)
        program.lists.Open.Load(kName);
}

void ReadAndSplit(benchmark::State &state) {
    Program program(state.range(0));
    for (auto _ : state)
        benchmark::DoNotOptimize(QString::fromUtf8(ReadFile(program.file)).split(u"\r\n"_s));
}

void Save(benchmark::State &state) {
    Program program(state.range(0));
    for (auto _ : state)
        program.lists.Open.WriteList(kName);
}

void WriteWhole(benchmark::State &state) {
    Program program(state.range(0));
    const QByteArray bytes = program.Bytes();
    for (auto _ : state)
        WriteFile(program.file, bytes);
}

void ProcessRequests(benchmark::State &state, Program &program, bool afterSearch = false) {
    const QStringList requests = Requests(program.entries);
    for (auto _ : state) {
        state.PauseTiming();
        program.Reload();
        program.lists.Box(kPending).Model().AddAll(requests);
        program.answers.Input = u"e@mail"_s;
        if (afterSearch)
            program.editing.Search();
        QCoreApplication::processEvents();
        state.ResumeTiming();
        program.processing.Run();
    }
    if (program.lists.lstEmailList(kPending).Count() != 0)
        state.SkipWithError("not processed");
}

void Process(benchmark::State &state) {
    Program program(state.range(0));
    ProcessRequests(state, program);
}

void ProcessInWindow(benchmark::State &state) {
    Program program(state.range(0));
    Window window(program);
    ProcessRequests(state, program);
}

void ProcessAfterSearch(benchmark::State &state) {
    Program program(state.range(0));
    Window window(program);
    ProcessRequests(state, program, true);
}

// Status lines of one request: its progress, and for every fourth that it is a duplicate.
void AppendLines(benchmark::State &state) {
    Program program(state.range(0));
    const QStringList requests = Requests(program.entries);
    for (auto _ : state) {
        program.Reload();
        for (qsizetype i = 0; i < requests.size(); ++i) {
            AppendLine(program.Log("StatusLog.txt"), u"12:34:56 | Processing pending list (12345/32767)"_s);
            if (i % 4 == 3)
                AppendLine(program.Log("StatusLog.txt"),
                           u"12:34:56 | Duplicate address [user12345e@mail.example.org] ignored"_s);
            AppendLine(program.Log("PendingLog.txt"), requests[i]);
        }
    }
}

void Delete(benchmark::State &state) {
    Program program(state.range(0));
    Window window(program);
    for (auto _ : state) {
        state.PauseTiming();
        program.Reload();
        state.ResumeTiming();
        program.editing.SelectAll(kAlphabetical);
        program.editing.DeleteSelected(kAlphabetical);
    }
}

void AppendDeleted(benchmark::State &state) {
    Program program(state.range(0));
    for (auto _ : state) {
        QFile::remove(program.Log("StatusLog.txt"));
        for (const QString &entry : program.entries)
            AppendLine(program.Log("StatusLog.txt"), u"12:34:56 | Deleted ["_s + entry + u']');
    }
}

void UndoDelete(benchmark::State &state) {
    Program program(state.range(0));
    Window window(program);
    program.session.Prefs.LogStatus = 0;
    program.editing.SelectAll(kAlphabetical);
    program.editing.DeleteSelected(kAlphabetical);
    for (auto _ : state) {
        program.lists.Undo.Undo();
        benchmark::DoNotOptimize(program.lists.lstEmailList(kAlphabetical).Entry(0)); // sorted when looked at
        program.lists.Undo.Redo();
    }
    program.lists.Undo.Undo();
    if (program.lists.lstEmailList(kChronological).Entries() != program.entries)
        state.SkipWithError("not brought back");
}

void InsertTexts(benchmark::State &state) {
    const QStringList entries = Addresses(state.range(0));
    EntryListModel chronological(EntryListModel::Order::Chronological);
    EntryListModel alphabetical(EntryListModel::Order::Alphabetical);
    for (auto _ : state) {
        chronological.SetEntries(entries);
        alphabetical.SetEntries(entries);
        benchmark::DoNotOptimize(alphabetical.Entry(0));
        chronological.SetEntries({});
        alphabetical.SetEntries({});
    }
}

// Two contents in turn; the clock goes on, so that each version has a second of its own.
void SaveKeeping(benchmark::State &state) {
    Program program(state.range(0) - 1); // room for one more
    QDateTime clock = QDateTime::currentDateTime();
    program.session.Now = [&clock] { return clock = clock.addSecs(1); };
    bool isOnMore = false;
    for (auto _ : state) {
        state.PauseTiming();
        isOnMore = !isOnMore;
        if (isOnMore)
            program.lists.Open.Add(u"more@mail.example.org"_s);
        else
            program.lists.Open.Remove(u"more@mail.example.org"_s);
        QCoreApplication::processEvents();
        state.ResumeTiming();
        program.lists.Open.WriteList(kName);
    }
    if (History::Versions(program.session, kName).isEmpty())
        state.SkipWithError("nothing kept");
}

void WriteTwice(benchmark::State &state) {
    Program program(state.range(0));
    const QByteArray bytes = program.Bytes();
    for (auto _ : state) {
        WriteFile(program.file, bytes);
        WriteFile(program.file + u".2"_s, bytes);
    }
}

QList<History::TimelineRow> MakeVersions(Program &program) {
    for (int version = 0; version < 20; ++version) {
        program.lists.Open.Add(QString::number(version) + u"@mail.example.org"_s);
        program.lists.Open.WriteList(kName);
    }
    return History::TimelineOf(program.session, kName);
}

void FindTrail(benchmark::State &state) {
    Program program(state.range(0) - 20);
    const auto rows = MakeVersions(program);
    for (auto _ : state)
        benchmark::DoNotOptimize(History::TrailTexts(u"10@mail.example.org"_s, rows));
}

void ReadVersions(benchmark::State &state) {
    Program program(state.range(0) - 20);
    const auto rows = MakeVersions(program);
    for (auto _ : state)
        for (const History::TimelineRow &row : rows)
            benchmark::DoNotOptimize(QString::fromUtf8(ReadFile(row.Path)).split(u"\r\n"_s));
}

void CopyToPending(benchmark::State &state) {
    Program program(state.range(0));
    Window window(program);
    program.editing.SelectAll(kAlphabetical);
    for (auto _ : state) {
        program.lists.Box(kPending).Model().SetEntries({});
        program.editing.CurrentToPending(ListEditing::Transfer::Copy);
    }
}

void CopyTexts(benchmark::State &state) {
    const QStringList entries = Addresses(state.range(0));
    for (auto _ : state) {
        QStringList copies;
        for (const QString &entry : entries)
            copies << u'+' + entry;
        benchmark::DoNotOptimize(copies);
    }
}

void Search(benchmark::State &state) {
    Program program(state.range(0));
    Window window(program);
    bool even = false;
    for (auto _ : state) {
        even = !even;
        program.answers.Input = even ? u"e@mail"_s : u"o@mail"_s;
        program.editing.Search();
    }
    if (program.lists.SelectedCount(kAlphabetical) < state.range(0) / 2 - 1)
        state.SkipWithError("not found");
}

void LowerAndContains(benchmark::State &state) {
    const QStringList entries = Addresses(state.range(0));
    const QString text = u"e@mail"_s;
    for (auto _ : state) {
        int found = 0;
        for (const QString &entry : entries)
            found += entry.toLower().contains(text) ? 1 : 0;
        benchmark::DoNotOptimize(found);
    }
}

// A key in the box above the list: by turns one that every entry contains, and one that none does.
void FindAsYouType(benchmark::State &state) {
    Program program(state.range(0));
    FoundRows found(program.lists.lstEmailList(kChronological));
    bool isIn = false;
    for (auto _ : state) {
        isIn = !isIn;
        found.SetText(isIn ? u"@"_s : u"no such text"_s);
    }
    if (found.rowCount() > 0 && !isIn)
        state.SkipWithError("found");
}

void SortOrder(benchmark::State &state) {
    Program program(state.range(0));
    Window window(program);
    QList<int> rows;
    for (int row = 0; row < 1000; row += 2)
        rows.append(row);
    program.lists.SelectRows(kAlphabetical, rows);
    int order = 1;
    for (auto _ : state) {
        order = 1 - order;
        program.editing.ChangeSortOrder(order);
    }
    if (program.lists.SelectedCount(program.lists.VisibleBox()) != 500)
        state.SkipWithError("selection lost");
}

void SortTexts(benchmark::State &state) {
    const QStringList entries = Addresses(state.range(0));
    for (auto _ : state) {
        QStringList lower;
        for (const QString &entry : entries)
            lower << entry.toLower();
        std::sort(lower.begin(), lower.end());
        benchmark::DoNotOptimize(lower);
    }
}

void Sizes(benchmark::internal::Benchmark *operation) {
    for (int size : {4096, 8192, 16384, 32767})
        operation->Arg(size);
    operation->Unit(benchmark::kMillisecond);
}

BENCHMARK(Load)->Apply(Sizes);
BENCHMARK(ReadAndSplit)->Apply(Sizes);
BENCHMARK(Save)->Apply(Sizes);
BENCHMARK(WriteWhole)->Apply(Sizes);
BENCHMARK(Process)->Apply(Sizes);
BENCHMARK(ProcessInWindow)->Apply(Sizes);
BENCHMARK(ProcessAfterSearch)->Apply(Sizes);
BENCHMARK(AppendLines)->Apply(Sizes);
BENCHMARK(Delete)->Apply(Sizes);
BENCHMARK(AppendDeleted)->Apply(Sizes);
BENCHMARK(UndoDelete)->Apply(Sizes);
BENCHMARK(InsertTexts)->Apply(Sizes);
BENCHMARK(SaveKeeping)->Apply(Sizes);
BENCHMARK(WriteTwice)->Apply(Sizes);
BENCHMARK(FindTrail)->Apply(Sizes);
BENCHMARK(ReadVersions)->Apply(Sizes);
BENCHMARK(CopyToPending)->Apply(Sizes);
BENCHMARK(CopyTexts)->Apply(Sizes);
BENCHMARK(Search)->Apply(Sizes);
BENCHMARK(LowerAndContains)->Apply(Sizes);
BENCHMARK(FindAsYouType)->Apply(Sizes);
BENCHMARK(SortOrder)->Apply(Sizes);
BENCHMARK(SortTexts)->Apply(Sizes);

} // namespace

int main(int argc, char **argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}

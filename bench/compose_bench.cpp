// Operations of the compose room, each beside the least that such an operation can cost.
//
//   WrapProse         1 MB of prose, 72 columns      | ScanText      looks at every character of it once
//   WrapLongWord      1 MB without a blank
//   WrapBlanks        1 MB of blanks
//   WrapEmptyLines    1 MB of CR LF
//   FindDuplicates    1,000,000 addresses            | FillSet       puts as many into a QSet
//   FindMixedCase     the same in mixed letter case  | FillLowered   lowers them and puts them into a QSet
//   FindRepeats       500,000 addresses, each twice | FillSet
//   LoadRecipients    1,000,000 addresses, 40 lists  | ReadFiles     reads the bytes of the 40 files
//   SendToAll/10000/0    10,000 recipients, a component that sends nothing, no status log
//   SendToAll/10000/1    the same with the status log  | AppendLines   appends 10,000 lines to a file
//   SendToAll/1000000/0  1,000,000 recipients of whom nobody is there twice | FillSet
//   RecordUndo        100 states of 1 MB, a character changed in each | CopyStates    keeps a copy of each;
//                     the counter "copies" is how many whole texts the stored bytes would hold

#include "NullMailer.h"
#include "compose/DuplicateCheck.h"
#include "compose/Recipients.h"
#include "compose/SendEngine.h"
#include "compose/UndoHistory.h"
#include "core/Literals.h"
#include "core/Preferences.h"
#include "core/TextFile.h"
#include "core/WordWrap.h"
#include "support/MuteDialogs.h"

#include <QCoreApplication>
#include <QDir>
#include <QEventLoop>
#include <QSet>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

namespace varlo {
namespace {

constexpr int kMegabyte = 1 << 20;
constexpr int kAddresses = 1'000'000;
constexpr int kLists = 40;
constexpr int kRecipients = 10'000;

// A profile in a folder of its own.
struct Bench {
    Bench() : Shared(Folder.path(), Boxes) {
        Shared.ProfilePath = QDir(Shared.ProfilesFolder()).filePath(u"Bench"_s);
        for (const char *folder : {"lists", "sent", "logs"})
            QDir().mkpath(Shared.ProfileFile(QString::fromLatin1(folder)));
        Shared.INI.SetFile(Shared.ProfileFile(u"prefs.ini"_s));
    }

    QTemporaryDir Folder;
    test::MuteDialogs Boxes;
    Session Shared;
};

QStringList Addresses(int count, const char *name) {
    QStringList addresses;
    addresses.reserve(count);
    for (int i = 0; i < count; ++i)
        addresses << QString::fromLatin1(name) + QString::number(i) + u"@example.org"_s;
    return addresses;
}

QString Prose() {
    const QString sentence = u"The quick brown fox jumps over the lazy dog and the dog does not mind. "_s;
    return (sentence.repeated(6) + u"\r\n\r\n"_s).repeated(kMegabyte / 425).left(kMegabyte);
}

// ---- Word wrap

void Wrap(benchmark::State &state, const QString &text) {
    for (auto _ : state)
        benchmark::DoNotOptimize(WrapAtBlanks(text, 72));
    state.SetBytesProcessed(state.iterations() * text.size());
}

void WrapProse(benchmark::State &state) {
    Wrap(state, Prose());
}

void WrapLongWord(benchmark::State &state) {
    Wrap(state, QString(kMegabyte, u'x'));
}

void WrapBlanks(benchmark::State &state) {
    Wrap(state, QString(kMegabyte, u' '));
}

void WrapEmptyLines(benchmark::State &state) {
    Wrap(state, u"\r\n"_s.repeated(kMegabyte / 2));
}

void ScanText(benchmark::State &state) {
    const QString text = Prose();
    for (auto _ : state) {
        qsizetype found = 0;
        for (QChar c : text) {
            found += c == u' ' || c == u'\r' ? 1 : 0;
            benchmark::DoNotOptimize(found);
        }
    }
    state.SetBytesProcessed(state.iterations() * text.size());
}

// ---- Duplicates

void Find(benchmark::State &state, const char *name) {
    const QStringList addresses = Addresses(kAddresses, name);
    for (auto _ : state) {
        DuplicateCheck check;
        check.Reserve(addresses.size());
        for (const QString &address : addresses)
            benchmark::DoNotOptimize(check.IsNew(address));
    }
    state.SetItemsProcessed(state.iterations() * kAddresses);
}

template<typename Form> void Fill(benchmark::State &state, const char *name, Form form) {
    const QStringList addresses = Addresses(kAddresses, name);
    for (auto _ : state) {
        QSet<QString> set;
        set.reserve(addresses.size());
        for (const QString &address : addresses)
            set.insert(form(address));
        benchmark::DoNotOptimize(set.size());
    }
    state.SetItemsProcessed(state.iterations() * kAddresses);
}

void FindDuplicates(benchmark::State &state) {
    Find(state, "subscriber");
}

void FindRepeats(benchmark::State &state) {
    QStringList addresses = Addresses(kAddresses / 2, "subscriber");
    addresses += addresses;
    for (auto _ : state) {
        DuplicateCheck check;
        check.Reserve(addresses.size());
        for (const QString &address : addresses)
            benchmark::DoNotOptimize(check.IsNew(address));
        if (check.Count() != kAddresses / 2)
            state.SkipWithError("repeats were missed");
    }
    state.SetItemsProcessed(state.iterations() * kAddresses);
}

void FillSet(benchmark::State &state) {
    Fill(state, "subscriber", [](const QString &address) { return address; });
}

void FindMixedCase(benchmark::State &state) {
    Find(state, "Subscriber");
}

void FillLowered(benchmark::State &state) {
    Fill(state, "Subscriber", [](const QString &address) { return address.toLower(); });
}

// ---- Recipients

QStringList WriteLists(const Session &session) {
    const QStringList addresses = Addresses(kAddresses, "subscriber");
    QStringList names;
    for (int list = 0; list < kLists; ++list) {
        names << u"list"_s + QString::number(list);
        const auto part = addresses.mid(list * (kAddresses / kLists), kAddresses / kLists);
        WriteFile(session.ProfileFile(u"lists"_s, names.last() + u".vlo"_s),
                  EncodeText(part.join(u"\r\n"_s) + u"\r\n"_s));
    }
    return names;
}

void LoadRecipients(benchmark::State &state) {
    Bench bench;
    RecipientChoice choice;
    choice.ListNames = WriteLists(bench.Shared);
    choice.Index = kLists + 1;
    for (auto _ : state) {
        Recipients recipients(bench.Shared);
        recipients.Choose(choice);
        if (recipients.Addresses().size() != kAddresses)
            state.SkipWithError("addresses are missing");
    }
    state.SetItemsProcessed(state.iterations() * kAddresses);
}

void ReadFiles(benchmark::State &state) {
    Bench bench;
    const QStringList names = WriteLists(bench.Shared);
    for (auto _ : state)
        for (const QString &name : names)
            benchmark::DoNotOptimize(ReadFile(bench.Shared.ProfileFile(u"lists"_s, name + u".vlo"_s)));
    state.SetItemsProcessed(state.iterations() * kAddresses);
}

// ---- The engine

void SendToAll(benchmark::State &state) {
    Bench bench;
    bench.Shared.Prefs.LogStatus = static_cast<int>(state.range(1));
    const auto makeMailer = [](const MailAccount &) { return std::make_unique<NullMailer>(); };
    SendEngine engine(bench.Shared, makeMailer, [](const PendingRequest &) {});
    QEventLoop loop;
    bool isComplete = false;
    QObject::connect(&engine, &SendEngine::Completed, &loop, [&] { isComplete = true; });
    QObject::connect(
        &engine, &SendEngine::SendingChanged, &loop, [&](bool on) { on ? void() : loop.quit(); },
        Qt::QueuedConnection);
    ComposedMessage message;
    message.Subject = u"News"_s;
    message.Text = u"Hello."_s;
    message.Recipients = Addresses(static_cast<int>(state.range(0)), "subscriber");
    for (auto _ : state) {
        isComplete = false;
        engine.Send(message);
        loop.exec();
        if (!isComplete)
            state.SkipWithError("the send failed");
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void AppendLines(benchmark::State &state) {
    Bench bench;
    const QString path = bench.Shared.ProfileFile(u"logs"_s, u"StatusLog.txt"_s);
    for (auto _ : state)
        for (int i = 0; i < kRecipients; ++i)
            AppendLine(path, u"05:06:07 | Sending message 1234/10000"_s);
    state.SetItemsProcessed(state.iterations() * kRecipients);
}

// ---- Undo

// The states of a text of 1 MB that is typed into at a hundred places.
template<typename Keep> void Type(Keep keep) {
    QString text = Prose();
    for (int i = 0; i < UndoHistory::kSlots; ++i) {
        text[i * (kMegabyte / UndoHistory::kSlots)] = u'#';
        keep(text);
    }
}

void RecordUndo(benchmark::State &state) {
    qsizetype stored = 0;
    for (auto _ : state) {
        UndoHistory history;
        Type([&](const QString &text) { history.Record(text); });
        stored = history.StoredBytes();
    }
    state.counters["copies"] =
        static_cast<double>(stored) / static_cast<double>(Prose().size() * qsizetype(sizeof(QChar)));
}

void CopyStates(benchmark::State &state) {
    for (auto _ : state) {
        QStringList states;
        Type([&](const QString &text) { states << QString(text.constData(), text.size()); });
        benchmark::DoNotOptimize(states.size());
    }
}

BENCHMARK(WrapProse)->Unit(benchmark::kMicrosecond);
BENCHMARK(WrapLongWord)->Unit(benchmark::kMicrosecond);
BENCHMARK(WrapBlanks)->Unit(benchmark::kMicrosecond);
BENCHMARK(WrapEmptyLines)->Unit(benchmark::kMicrosecond);
BENCHMARK(ScanText)->Unit(benchmark::kMicrosecond);
BENCHMARK(FindDuplicates)->Unit(benchmark::kMillisecond);
BENCHMARK(FillSet)->Unit(benchmark::kMillisecond);
BENCHMARK(FindRepeats)->Unit(benchmark::kMillisecond);
BENCHMARK(FindMixedCase)->Unit(benchmark::kMillisecond);
BENCHMARK(FillLowered)->Unit(benchmark::kMillisecond);
BENCHMARK(LoadRecipients)->Unit(benchmark::kMillisecond);
BENCHMARK(ReadFiles)->Unit(benchmark::kMillisecond);
BENCHMARK(SendToAll)
    ->Args({kRecipients, 0})
    ->Args({kRecipients, 1})
    ->Args({kAddresses, 0})
    ->Unit(benchmark::kMillisecond);
BENCHMARK(AppendLines)->Unit(benchmark::kMillisecond);
BENCHMARK(RecordUndo)->Unit(benchmark::kMillisecond);
BENCHMARK(CopyStates)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace varlo

int main(int argc, char **argv) {
    QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}

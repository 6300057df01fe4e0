// Addresses out of texts, and the whole way onto the Pending list.
//
//   FindInList/n       a list of n addresses, one a line
//   FindInTable/n      the same as the second of three columns of a table, quotes around half of the cells
//   FindInProse/n      the same in sentences, with names beside them
//   FindInCards/n      the same in address cards
//   SplitLines/n       the list split into lines, each looked at for an "@", and nothing else
//   FindSparse/MB      one address in a million characters
//   FindOneLine/MB     addresses side by side on a single line
//   CountAts/MB        the same line gone through for "@", and nothing else
//   Decode/kind        10 MB as Windows-1252 (0), UTF-8 with a mark (1), UTF-16 (2)
//   Import/n           a file of n addresses read, looked through, set beside the lists, put on the Pending list
//   ReadAndAdd/n       the same file read, split and added to the list box as it stands, and nothing else
//   Export/n           n addresses as a table

#include "core/Literals.h"
#include "core/TextFile.h"
#include "import/AddressFinder.h"
#include "import/AnyText.h"
#include "lists/ImportReview.h"
#include "lists/ListExport.h"
#include "lists/ListStore.h"
#include "support/MuteDialogs.h"

#include <QCoreApplication>
#include <QStringEncoder>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

namespace {

using namespace varlo;

constexpr int64_t kMega = 1000000;

QStringList Addresses(int64_t count) {
    QStringList addresses;
    for (int64_t i = 0; i < count; ++i)
        addresses << u"user%1@mail.example.org"_s.arg(i * 7919 % 10000019);
    return addresses;
}

QString ListOf(int64_t count) {
    return Addresses(count).join(u"\r\n"_s);
}

QString Joined(int64_t count, const QString &pattern, const QString &head = {}) {
    QString text = head;
    for (const QString &address : Addresses(count))
        text += pattern.arg(address);
    return text;
}

void Find(benchmark::State &state, const QString &text, qsizetype expected) {
    for (auto _ : state) {
        if (const auto found = FindAddresses(text).size(); found != expected)
            state.SkipWithError("not all were found");
    }
    state.SetBytesProcessed(state.iterations() * text.size());
}

void FindInList(benchmark::State &state) {
    Find(state, ListOf(state.range(0)), state.range(0));
}

void FindInTable(benchmark::State &state) {
    Find(state, Joined(state.range(0), u"\"Smith, Anna\";%1;Bern\r\n"_s, u"Name;E-mail;City\r\n"_s),
         state.range(0));
}

void FindInProse(benchmark::State &state) {
    Find(state, Joined(state.range(0), u"and then \"Smith, Anna\" <%1>, who lives\nin Bern; "_s),
         state.range(0));
}

void FindInCards(benchmark::State &state) {
    Find(state, Joined(state.range(0), u"BEGIN:VCARD\r\nFN:Anna\r\nEMAIL;TYPE=work:%1\r\nEND:VCARD\r\n"_s),
         state.range(0));
}

void SplitLines(benchmark::State &state) {
    const QString text = ListOf(state.range(0));
    for (auto _ : state) {
        qsizetype ats = 0;
        for (const QString &line : varlo::SplitLines(text))
            ats += line.contains(u'@') ? 1 : 0;
        benchmark::DoNotOptimize(ats);
    }
}

void FindSparse(benchmark::State &state) {
    const QString noise = u"lorem ipsum dolor sit amet, consectetur\n"_s.repeated(kMega / 40);
    QString text;
    for (int64_t i = 0; i < state.range(0); ++i)
        text += noise + u"user%1@mail.example.org\n"_s.arg(i);
    Find(state, text, state.range(0));
}

QString OneLine(int64_t megabytes) {
    return Addresses(megabytes * kMega / 26).join(u", "_s);
}

void FindOneLine(benchmark::State &state) {
    Find(state, OneLine(state.range(0)), state.range(0) * kMega / 26);
}

void CountAts(benchmark::State &state) {
    const QString text = OneLine(state.range(0));
    for (auto _ : state)
        benchmark::DoNotOptimize(text.count(u'@'));
}

void Decode(benchmark::State &state) {
    const QString text = u"J\u00F6rg user@mail.example.org\r\n"_s.repeated(10 * kMega / 30);
    const QByteArray kinds[]{text.toLatin1(), "\xEF\xBB\xBF" + text.toUtf8(),
                             QStringEncoder(QStringConverter::Utf16, QStringConverter::Flag::WriteBom)(text)};
    for (auto _ : state)
        benchmark::DoNotOptimize(DecodeAnyText(kinds[state.range(0)]));
}

// A profile with a file of addresses in it.
struct Workplace {
    explicit Workplace(int64_t count) {
        session.ProfilePath = folder.path();
        WriteFile(File(), ListOf(count).toUtf8());
    }
    QString File() const { return folder.filePath(u"members.txt"_s); }

    QTemporaryDir folder;
    test::MuteDialogs boxes;
    Session session{folder.path(), boxes};
};

void Import(benchmark::State &state) {
    Workplace place(state.range(0));
    for (auto _ : state) {
        ListStore lists(place.session);
        ImportSearch search;
        search.AddFiles({place.File()});
        while (!search.Step(1000)) {
        }
        ImportReview review(lists);
        review.SetItems(search.Items());
        if (ApplyImport(place.session, lists, review.NewAddresses(), RequestKind::Subscribe) !=
            state.range(0))
            state.SkipWithError("not all were taken");
    }
}

void ReadAndAdd(benchmark::State &state) {
    const Workplace place(state.range(0));
    for (auto _ : state) {
        EntryListModel model(EntryListModel::Order::Chronological);
        model.AddAll(ReadLines(place.File()));
        benchmark::DoNotOptimize(model.Count());
    }
}

void Export(benchmark::State &state) {
    const QStringList addresses = Addresses(state.range(0));
    for (auto _ : state)
        benchmark::DoNotOptimize(ExportBytes(EntriesOf(addresses), ExportForm::Csv));
}

BENCHMARK(FindInList)->Arg(32767)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(FindInTable)->Arg(32767)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(FindInProse)->Arg(32767)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(FindInCards)->Arg(32767)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(SplitLines)->Arg(32767)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(FindSparse)->Arg(10)->Arg(50)->Unit(benchmark::kMillisecond);
BENCHMARK(FindOneLine)->Arg(10)->Arg(50)->Unit(benchmark::kMillisecond);
BENCHMARK(CountAts)->Arg(10)->Arg(50)->Unit(benchmark::kMillisecond);
BENCHMARK(Decode)->DenseRange(0, 2)->Unit(benchmark::kMillisecond);
BENCHMARK(Import)->Arg(1000)->Arg(32767)->Unit(benchmark::kMillisecond);
BENCHMARK(ReadAndAdd)->Arg(32767)->Unit(benchmark::kMillisecond);
BENCHMARK(Export)->Arg(32767)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char **argv) {
    const QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}

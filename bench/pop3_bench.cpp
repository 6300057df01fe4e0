// The mailbox session without a wire: log on, then RETR and DELE for every message.
//
//   Message/25, /50    one message of so many MB in chunks of 1,460 bytes; the ratio of the two tells whether
//   the cost
//                      is linear
//   Copy/25, /50       the same chunks appended to a byte array and nothing else: the limit
//   Mailbox/10000      so many requests of 2 KB, from the greeting to the reply to QUIT

#include "core/Literals.h"
#include "pop3/Pop3Session.h"
#include "pop3/Recognition.h"

#include <benchmark/benchmark.h>

namespace {

using namespace varlo;

constexpr qsizetype kChunk = 1460;

qsizetype ChunksOf(int64_t megabytes) {
    return qsizetype(megabytes) * 1024 * 1024 / kChunk;
}

void LogOn(Pop3Session &session, qsizetype messages) {
    session.Start({u"h"_s, u"joe"_s, u"secret"_s, 0});
    for (int i = 0; i < 3; ++i)
        session.DataArrival("+OK\r\n");
    session.DataArrival("+OK " + QByteArray::number(messages) + " 1\r\n");
}

void Message(benchmark::State &state) {
    const QByteArray chunk(kChunk, 'x');
    for (auto _ : state) {
        Pop3Session session;
        LogOn(session, 1);
        session.DataArrival("+OK\r\nSubject: subscribe\r\n\r\n");
        for (qsizetype i = ChunksOf(state.range(0)); i > 0; --i)
            session.DataArrival(chunk);
        benchmark::DoNotOptimize(session.DataArrival("\r\n.\r\n"));
    }
    state.SetBytesProcessed(state.iterations() * state.range(0) * 1024 * 1024);
}
BENCHMARK(Message)->Arg(25)->Arg(50)->Unit(benchmark::kMillisecond);

void Copy(benchmark::State &state) {
    const QByteArray chunk(kChunk, 'x');
    for (auto _ : state) {
        QByteArray bytes;
        for (qsizetype i = ChunksOf(state.range(0)); i > 0; --i)
            bytes += chunk;
        benchmark::DoNotOptimize(bytes.size());
    }
    state.SetBytesProcessed(state.iterations() * state.range(0) * 1024 * 1024);
}
BENCHMARK(Copy)->Arg(25)->Arg(50)->Unit(benchmark::kMillisecond);

QByteArray Request(int64_t number) {
    return "+OK\r\nFrom: a" + QByteArray::number(number) + "@b.test\r\nMessage-ID: <" +
           QByteArray::number(number) + "@b.test>\r\nX-Filler: " + QByteArray(900, 'x') +
           "\r\nSubject: subscribe\r\n\r\n" + QByteArray(1000, 'y') + "\r\n.\r\n";
}

void Mailbox(benchmark::State &state) {
    std::vector<QByteArray> mailbox;
    for (int64_t i = 0; i < state.range(0); ++i)
        mailbox.push_back(Request(i));
    for (auto _ : state) {
        Pop3Session session;
        Requests requests;
        LogOn(session, qsizetype(mailbox.size()));
        for (const QByteArray &reply : mailbox) {
            clsMessage message;
            benchmark::DoNotOptimize(message.CreateFromText(session.DataArrival(reply).back().Text));
            session.MessageExamined(Recognise(message, requests) != Recognised::Unrelated);
            session.DataArrival("+OK\r\n");
        }
        benchmark::DoNotOptimize(session.DataArrival("+OK\r\n"));
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(Mailbox)->Arg(10000)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();

// Messages per second of the SMTP component over one connection.
//
//   smtp_wire_bench PORT COUNT [SIZE]    sends COUNT messages with a text of SIZE bytes (1024) to
//   127.0.0.1:PORT
//
// Prints the rate alone on one line; send_to_sink.sh compares it with a peer's in the same run.

#include "core/Literals.h"
#include "smtp/SMTP.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>

#include <cstdio>
#include <memory>

namespace {

QString TextOf(int size) {
    const QString line = u"The quick brown fox jumps over the lazy dog, again and again.\r\n"_s;
    return line.repeated(size / static_cast<int>(line.size()) + 1).left(size);
}

// As the send engine does it: a recipient of its own for each mail, the next one in the handler of the one
// before.
int SendAll(OSSMTP::SMTP &smtp, int count, int size) {
    const auto message =
        std::make_shared<varlo::MailMessage>(varlo::MailMessage{u"Benchmark"_s, TextOf(size), {}});
    int sent = 0;
    int begun = 0;
    const auto submit = [&] {
        smtp.Submit({message, u"\"Our list\" <member%1@example.org>"_s.arg(begun++)});
    };
    QEventLoop loop;
    QObject::connect(&smtp, &OSSMTP::SMTP::Finished, &loop, [&](const varlo::Outcome &outcome) {
        sent += outcome.Result == varlo::Outcome::Kind::Sent;
        if (outcome.Result != varlo::Outcome::Kind::Sent)
            std::fprintf(stderr, "error %d: %s\n", outcome.Number, qPrintable(outcome.Description));
        begun < count ? submit() : loop.quit();
    });
    submit();
    loop.exec();
    return sent;
}

} // namespace

int main(int argc, char **argv) {
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() < 3) {
        std::fprintf(stderr, "usage: smtp_wire_bench PORT COUNT [SIZE]\n");
        return 2;
    }
    const int count = arguments[2].toInt();
    OSSMTP::SMTP smtp({u"127.0.0.1"_s, arguments[1].toInt(), u"\"The sender\" <sender@example.org>"_s});
    QElapsedTimer clock;
    clock.start();
    const int sent = SendAll(smtp, count, arguments.size() > 3 ? arguments[3].toInt() : 1024);
    std::printf("%.0f\n", sent * 1e9 / static_cast<double>(clock.nsecsElapsed()));
    return sent == count ? 0 : 1;
}

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

#include <cstdio>

namespace {

QString TextOf(int size) {
    const QString line = u"The quick brown fox jumps over the lazy dog, again and again.\r\n"_s;
    return line.repeated(size / static_cast<int>(line.size()) + 1).left(size);
}

void Prepare(OSSMTP::SMTP &smtp, int port, int size) {
    smtp.SetServer(u"127.0.0.1"_s);
    smtp.SetPort(port);
    smtp.SetSender(u"\"The sender\" <sender@example.org>"_s);
    smtp.SetSubject(u"Benchmark"_s);
    smtp.SetMessageText(TextOf(size));
    QObject::connect(&smtp, &OSSMTP::SMTP::ErrorSMTP, [](int number, const QString &description) {
        std::fprintf(stderr, "error %d: %s\n", number, qPrintable(description));
    });
}

// As the send engine does it: a recipient of its own for each message, events once per message.
int SendAll(OSSMTP::SMTP &smtp, int count) {
    int sent = 0;
    for (int i = 0; i < count; ++i) {
        QCoreApplication::processEvents();
        smtp.SetRecipient(u"\"Our list\" <member%1@example.org>"_s.arg(i));
        sent += smtp.Send();
    }
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
    OSSMTP::SMTP smtp;
    Prepare(smtp, arguments[1].toInt(), arguments.size() > 3 ? arguments[3].toInt() : 1024);
    QElapsedTimer clock;
    clock.start();
    const int sent = SendAll(smtp, count);
    std::printf("%.0f\n", sent * 1e9 / static_cast<double>(clock.nsecsElapsed()));
    return sent == count ? 0 : 1;
}

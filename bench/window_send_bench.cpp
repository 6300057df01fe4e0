// Messages per second of the whole program: compose window, send engine, component, status log.
//
//   window_send_bench PORT COUNT [SIZE]    loads a list of COUNT addresses, sends each a message with a text
//   of SIZE bytes (1024) to 127.0.0.1:PORT, "Log status messages" on
//
// Prints the rate alone on one line; send_to_sink.sh compares it with a peer's in the same run.

#include "compose/ComposeHost.h"
#include "compose/frmCompose.h"
#include "core/Literals.h"
#include "core/Preferences.h"
#include "core/Session.h"
#include "core/TextFile.h"
#include "smtp/SMTP.h"
#include "support/MuteDialogs.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTemporaryDir>

#include <cstdio>

namespace {

using namespace varlo;

// Nobody is there to answer: boxes go to the error output.
class QuietDialogs : public test::MuteDialogs {
public:
    BoxAnswer MsgBox(const QString &text, BoxButtons, BoxIcon, const QString &) override {
        std::fprintf(stderr, "%s\n", qPrintable(text));
        return BoxAnswer::Ok;
    }
};

class OneList : public ComposeHost {
public:
    QStringList ListNames() const override { return {u"News"_s}; }
    QString CurrentListName() const override { return u"News"_s; }
    QStringList SelectedAddresses() const override { return {}; }
    void Offer(const PendingRequest &) override { ++Failed; }

    int Failed = 0;
};

void PrepareProfile(Session &session, int port, int count) {
    session.ProfilePath = QDir(session.ProgramFolder).filePath(u"profiles/Bench"_s);
    for (const char *folder : {"lists", "sent", "logs"})
        QDir().mkpath(session.ProfileFile(QString::fromLatin1(folder)));
    session.INI.SetFile(session.ProfileFile(u"prefs.ini"_s));
    session.Prefs.SMTPServer = u"127.0.0.1"_s;
    session.Prefs.SMTPPort = static_cast<qint16>(port);
    session.Prefs.SMTPFrom = u"The sender"_s;
    session.Prefs.SMTPEmail = u"sender@example.org"_s;
    QByteArray list;
    for (int i = 0; i < count; ++i)
        list += "member" + QByteArray::number(i) + "@example.org\r\n";
    WriteFile(session.ProfileFile(u"lists"_s, u"News.vlo"_s), list);
}

void Compose(frmCompose &window, int size) {
    const QString line = u"The quick brown fox jumps over the lazy dog, again and again.\n"_s;
    window.findChild<QLineEdit *>(u"txtSubject"_s)->setText(u"Benchmark"_s);
    window.findChild<QPlainTextEdit *>(u"txtMessage"_s)
        ->setPlainText(line.repeated(size / static_cast<int>(line.size()) + 1).left(size));
}

} // namespace

int main(int argc, char **argv) {
    QApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() < 3) {
        std::fprintf(stderr, "usage: window_send_bench PORT COUNT [SIZE]\n");
        return 2;
    }
    const int count = arguments[2].toInt();
    const QTemporaryDir folder;
    QuietDialogs boxes;
    Session session(folder.path(), boxes);
    PrepareProfile(session, arguments[1].toInt(), count);
    OneList host;
    auto *window = new frmCompose(session, host, [](const MailAccount &account) {
        return std::make_unique<OSSMTP::SMTP>(account);
    }); // deletes itself when it is closed
    window->show();
    Compose(*window, arguments.size() > 3 ? arguments[3].toInt() : 1024);
    QCoreApplication::processEvents();
    QElapsedTimer clock;
    clock.start();
    window->findChild<QAction *>(u"mnuMessageSend"_s)->trigger();
    QApplication::exec(); // until the window has closed after the summary
    std::printf("%.0f\n", (count - host.Failed) * 1e9 / static_cast<double>(clock.nsecsElapsed()));
    return host.Failed == 0 ? 0 : 1;
}

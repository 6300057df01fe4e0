// Tells when a program stands ready: loaded into it by LD_PRELOAD, writes one line to the file named by
// SHOWN_PROBE when the event loop first has nothing to do after a window was painted.
//
// The line: nanoseconds of the monotonic clock, then VmHWM and VmRSS as /proc/self/status has them. It links
// Qt Core only, so that it brings no library that the measured program does not have.

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QEvent>
#include <QFile>

#include <chrono>

namespace {

QByteArray MemoryFigure(const QByteArray &status, const QByteArray &key) {
    const qsizetype at = status.indexOf(key + ':') + key.size() + 1;
    return status.mid(at, status.indexOf("kB", at) - at).trimmed();
}

class Probe : public QObject {
public:
    Probe(const QString &path, QCoreApplication *application) : QObject(application), path_(path) {
        application->installEventFilter(this);
        connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, this,
                &Probe::Idle);
    }

    bool eventFilter(QObject *watched, QEvent *event) override {
        painted_ = painted_ || (event->type() == QEvent::Paint && watched->isWidgetType());
        return false;
    }

private:
    void Idle() {
        const auto now = std::chrono::steady_clock::now().time_since_epoch();
        if (!painted_ || done_)
            return;
        done_ = true;
        QFile file(QStringLiteral("/proc/self/status"));
        const QByteArray status = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
        QFile report(path_);
        if (report.open(QIODevice::WriteOnly))
            report.write(QByteArray::number(
                             qint64(std::chrono::duration_cast<std::chrono::nanoseconds>(now).count())) +
                         ' ' + MemoryFigure(status, "VmHWM") + ' ' + MemoryFigure(status, "VmRSS") + '\n');
    }

    const QString path_;
    bool painted_ = false;
    bool done_ = false;
};

void StartProbe() {
    if (const QString path = qEnvironmentVariable("SHOWN_PROBE"); !path.isEmpty())
        new Probe(path, QCoreApplication::instance());
}

} // namespace

Q_COREAPP_STARTUP_FUNCTION(StartProbe)

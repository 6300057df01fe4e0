// Tells when a program's window is shown and when it stands ready: loaded into it by LD_PRELOAD, writes one
// line to the file named by SHOWN_PROBE when the event loop first has nothing to do after something was
// painted.
//
// The line: nanoseconds of the monotonic clock when the first painted window was handed to the window system,
// the same for the moment of writing, then VmHWM and VmRSS as /proc/self/status has them. It links what every
// program with windows has, so that it brings no library of its own.

#include "core/Literals.h"

#include <QAbstractEventDispatcher>
#include <QBackingStore>
#include <QCoreApplication>
#include <QFile>

#include <chrono>
#include <dlfcn.h>

namespace {

qint64 Now() {
    return std::chrono::nanoseconds(std::chrono::steady_clock::now().time_since_epoch()).count();
}

QByteArray MemoryFigure(const QByteArray &status, const QByteArray &key) {
    const qsizetype at = status.indexOf(key + ':') + key.size() + 1;
    return status.mid(at, status.indexOf("kB", at) - at).trimmed();
}

class Probe : public QObject {
public:
    Probe(const QString &path, QCoreApplication *application) : QObject(application), path_(path) {
        connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, this,
                &Probe::Idle);
    }

    static inline qint64 Shown = 0;

private:
    void Idle() {
        const qint64 now = Now();
        if (Shown == 0 || done_)
            return;
        done_ = true;
        QFile file(u"/proc/self/status"_s);
        const QByteArray status = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
        QFile report(path_);
        if (report.open(QIODevice::WriteOnly))
            report.write(QByteArray::number(Shown) + ' ' + QByteArray::number(now) + ' ' +
                         MemoryFigure(status, "VmHWM") + ' ' + MemoryFigure(status, "VmRSS") + '\n');
    }

    const QString path_;
    bool done_ = false;
};

void StartProbe() {
    if (const QString path = qEnvironmentVariable("SHOWN_PROBE"); !path.isEmpty())
        new Probe(path, QCoreApplication::instance());
}

} // namespace

Q_COREAPP_STARTUP_FUNCTION(StartProbe)

// Takes the place of the function of this name in Qt Gui, and calls it.
void QBackingStore::flush(const QRegion &region, QWindow *window, const QPoint &offset) {
    using Flush = void (*)(QBackingStore *, const QRegion &, QWindow *, const QPoint &);
    static const auto original =
        reinterpret_cast<Flush>(dlsym(RTLD_NEXT, "_ZN13QBackingStore5flushERK7QRegionP7QWindowRK6QPoint"));
    original(this, region, window, offset);
    if (Probe::Shown == 0)
        Probe::Shown = Now();
}

// The signals by which a system ends its programs.
#pragma once

#include <QObject>

namespace varlo {

// Turns SIGTERM, SIGHUP and SIGINT into a signal of Qt's kind, in the event loop; one that the program was
// started deaf to (nohup) stays ignored. At most one object at a time. Does nothing on Windows, where the end
// of a session is told to the windows.
class EndSignals : public QObject {
    Q_OBJECT

public:
    explicit EndSignals(QObject *parent = nullptr);
    ~EndSignals() override; // the signals do again what they did before

Q_SIGNALS:
    void Received();
};

} // namespace varlo

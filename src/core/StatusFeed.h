// Where status messages come out: the console's transcript and the status bar listen here.
#pragma once

#include <QObject>
#include <QString>

namespace varlo {

class StatusFeed : public QObject {
    Q_OBJECT

Q_SIGNALS:
    // A line for the console, with its time stamp and without a line end.
    void ConsoleLine(const QString &line);
    // The new text of the status bar.
    void StatusText(const QString &message);
};

} // namespace varlo

// Applies the requests of the Pending list to the open list, with a log and notification mails.
#pragma once

#include "core/Session.h"

#include <QObject>

#include <memory>

namespace OSSMTP {
class SMTP;
}

namespace varlo {

class ListStore;

class PendingProcessing : public QObject {
    Q_OBJECT

public:
    PendingProcessing(Session &session, ListStore &lists, QObject *parent = nullptr);
    ~PendingProcessing() override;

    // Processes every entry that is pending now, in order, and takes them off the Pending list. A failure is
    // reported as "Main.cmdCapturesAdd" and leaves all of them pending, so that no request is lost: those
    // applied already change nothing when they are processed again. Does nothing while a run is under way (a
    // notification is being sent and the window is alive) or a list is being loaded.
    void Run();

    bool IsRunning() const { return running_; }
    // Ends a wait for the mail server, because the program is closing.
    void Abort();

Q_SIGNALS:
    // A run began or ended: the lists are not for editing in between.
    void RunningChanged(bool running);

private:
    struct Notification {
        const QString &Subject;
        const QString &Body;
    };

    bool HasOpenList();
    void ConnectMailer();
    void ProcessAll();
    void ProcessEntry(const QString &entry, const QString &progress);
    bool Subscribe(const QString &address);
    bool Unsubscribe(const QString &address);
    void Notify(const QString &address, const Notification &mail, const QString &progress);
    void OnMailError(int number, const QString &description);

    Session &session_;
    ListStore &lists_;
    std::unique_ptr<OSSMTP::SMTP>
        SMTP_; // only while notifications are on; its settings stay for the whole run
    qint16 added_ = 0;
    qint16 removed_ = 0;
    bool running_ = false;
};

} // namespace varlo

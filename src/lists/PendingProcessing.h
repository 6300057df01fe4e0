// Applies the requests of the Pending list to the open list, with a log and notification mails.
#pragma once

#include "core/Mailer.h"
#include "core/Session.h"

#include <QObject>
#include <QTimer>

#include <functional>
#include <memory>

namespace varlo {

class ListStore;
struct PendingRequest;

// Without notifications a run is over when Run returns. With them it goes on from event to event: nothing
// that happens in a window meanwhile holds it up, and it holds up nothing but the lists.
class PendingProcessing : public QObject {
    Q_OBJECT

public:
    // `makeMailer` makes what the notifications of one run are sent with.
    PendingProcessing(Session &session, ListStore &lists, MakeMailer makeMailer, QObject *parent = nullptr);
    ~PendingProcessing() override;

    // Processes every entry that is pending now, in order, and takes them off the Pending list. A failure is
    // reported as "Main.cmdCapturesAdd" and leaves all of them pending, so that no request is lost: those
    // applied already change nothing when they are processed again. Does nothing while a run is under way or
    // a list is being loaded; nor, after a box, when no list is open or no notification could ever be sent.
    void Run();

    bool IsRunning() const { return pass_ != nullptr; }
    // Ends the run at once, because the program is closing: the notification that is being sent is dropped,
    // its request is logged, and all of them stay pending. Nothing when none is under way.
    void Abort();

Q_SIGNALS:
    // A run began or ended: the lists are not for editing in between.
    void RunningChanged(bool running);

private:
    struct Pass;

    bool HasOpenList();
    bool HasSoundAccount();
    void Begin();
    void Proceed(const std::function<void()> &step);
    void ProcessEntries();
    bool Apply(const PendingRequest &request);
    bool Subscribe(const QString &address);
    bool Unsubscribe(const QString &address);
    void AnnounceNotification();
    void SendNotification();
    void SMTP_Finished(const Outcome &outcome);
    void SMTP_ErrorSMTP(int Number, const QString &Description);
    void LogEntry();
    void Complete();
    void End();
    const QString &Entry() const;
    QString Progress() const;

    Session &session_;
    ListStore &lists_;
    const MakeMailer makeMailer_;
    std::unique_ptr<Pass> pass_; // the run that is under way
    QTimer yield_{this};         // windows have their events, then the notification is sent
};

} // namespace varlo

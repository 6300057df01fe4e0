// Sends one composed message to every recipient, one at a time, and tells how it went.
#pragma once

#include "compose/SendRun.h"
#include "core/RuntimeError.h"
#include "core/Session.h"

#include <QElapsedTimer>
#include <QObject>
#include <QStringList>
#include <QTimer>

#include <functional>
#include <memory>

namespace varlo {

// What the compose window holds when "Send Message" is chosen.
struct ComposedMessage {
    QString ToName; // the display name that every recipient sees
    QString Subject;
    QString Text;      // as typed, lines end with CR LF
    QString Signature; // as loaded when the window opened; a text that is only CR LF and this counts as empty
    QStringList Recipients;
    QStringList Attachments; // full paths; empty when the indicator is hidden
};

// One engine serves one compose window. Texts for the window come out as signals; boxes go through the
// session.
//
// A send goes on from event to event: nothing that happens in a window holds it up, and it holds up nothing.
// The engine may be destroyed at any time, by a handler of StatusChanged and under a box too; its send is
// cancelled then, with no more signals and boxes. The session and what `offer` works on must outlive it.
class SendEngine : public QObject {
    Q_OBJECT

public:
    // `makeMailer` makes what one send is sent with; `offer` puts the removal of an address on the
    // main window's Pending list.
    SendEngine(Session &session, MakeMailer makeMailer, std::function<void(const PendingRequest &)> offer,
               QObject *parent = nullptr);

    // The checks before a send, in their order. False after a box that names what is missing.
    bool Validate(const ComposedMessage &message);

    // Writes the sent copy and begins to send; Completed tells of the end. Run-time failures are reported as
    // "Compose.cmdSend"; one that comes in the middle, a log that cannot be written included, ends the send
    // before the next recipient, and the status tells how far it came. A call while a send runs does nothing.
    void Send(const ComposedMessage &message);

    // Ends the send at once: the mail that is under way is dropped. There is no summary. A later Send begins
    // anew.
    void Cancel();

    // True from the call of Send to the end, the summary box included.
    bool IsSending() const { return sending_; }

Q_SIGNALS:
    void StatusChanged(const QString &text);  // for the window's own status label
    void CaptionChanged(const QString &text); // "Sending: 12% Complete (34 secs remaining)"
    void ProgressChanged(int percent);        // 0 to 100
    void SendingChanged(bool sending);        // true: disable the menus and inputs
    void Sent();                              // every recipient had his turn, the summary is to be read
    void Completed();                         // every recipient had his turn, the summary is read

private:
    bool Refuse(const QString &text);
    void Prepare(const ComposedMessage &message);
    void CheckAttachments(const QStringList &paths);
    void Begin();
    void GoOn() { Do(run_.GoOn()); }
    void Do(const SendStep &step);
    void Act(const SendStep &step);
    bool IsYieldDue() const;
    void Complete();
    void Fail(const RuntimeError &error);
    void Stop();
    void End();
    void Tick();
    void Status(const QString &text);
    void Caption(const QString &text, int percent);
    QString Summary() const;
    qint64 Elapsed() const;

    Session &session_;
    const MakeMailer makeMailer_;
    const std::function<void(const PendingRequest &)> offer_;
    QTimer tmrTimeRemaining_{this};
    QTimer yield_{this};
    QElapsedTimer sinceYield_; // not running before the first

    bool sending_ = false;
    std::unique_ptr<Mailer> SMTP_; // lives as long as messages go out
    std::shared_ptr<const MailMessage> message_;
    QString toName_;
    SendRun run_;
    QDateTime start_;
};

} // namespace varlo

// Sends one composed message to every recipient, one at a time, and tells how it went.
#pragma once

#include "core/Session.h"

#include <QObject>
#include <QStringList>

#include <functional>
#include <memory>

namespace OSSMTP {
class SMTP;
}

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
// Events are processed while a send runs, so the window can be closed in the middle: its unload calls Cancel,
// and Send then returns at once. The engine may even be destroyed by such an event; the send on the stack
// ends as a cancelled one, with no more signals and boxes. The session, `smtp` (while it sends) and what
// `addPending` works on must live until Send has returned.
class SendEngine : public QObject {
    Q_OBJECT

public:
    // `addPending` puts one entry ("-" and an address) on the main window's Pending list.
    SendEngine(Session &session, OSSMTP::SMTP &smtp, std::function<void(const QString &entry)> addPending,
               QObject *parent = nullptr);
    ~SendEngine() override;

    // The checks before a send, in their order. False after a box that names what is missing.
    bool Validate(const ComposedMessage &message);

    // Sent copy, loop, summary. Returns when every recipient had his turn (true) or the send was cancelled or
    // failed as a whole (false). Reports run-time failures as "Compose.cmdSend"; one that comes in the
    // middle, a log that cannot be written included, ends the send before the next recipient, and the status
    // tells how far it came. A call while a send runs does nothing and returns false.
    bool Send(const ComposedMessage &message);

    // Sets the cancel flag and ends a wait for the server at once; the loop stops before the next recipient
    // and later errors are not counted. There is no summary. A later Send begins anew.
    void Cancel();

    // True from the call of Send to its return, the summary box included.
    bool IsSending() const;

Q_SIGNALS:
    void StatusChanged(const QString &text);  // for the window's own status label
    void CaptionChanged(const QString &text); // "Sending: 12% Complete (34 secs remaining)"
    void ProgressChanged(int percent);        // 0 to 100
    void SendingChanged(bool sending);        // true: disable the menus and inputs

private:
    class Private;
    std::shared_ptr<Private> d; // shared with the send that runs
};

} // namespace varlo

// Messages that were written and not sent: what is kept of them in "unsent.ini" until somebody decides.
#pragma once

#include "compose/Recipients.h"
#include "core/Session.h"

#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace varlo {

// What the compose window holds of the operator's.
struct UnsentMessage {
    QString Subject;
    QString ToName;
    QString Text; // lines end with CR LF
    RecipientSource Source = RecipientSource::Separator;
    QStringList Lists; // of OneList and SelectLists
    QStringList Attachments;

    bool operator==(const UnsentMessage &) const = default;
};

// Whether somebody wrote something: a subject, or a text that is more than blanks and the signature.
bool HasOwnWords(const UnsentMessage &message, const QString &signature);

// The messages as the file has them, and back; what is no part of a message is passed over.
QString UnsentToText(const std::vector<UnsentMessage> &messages);
std::vector<UnsentMessage> UnsentFromText(const QString &text);

// "unsent.ini" of the open profile: the messages of earlier windows, the newest of which is on offer, and the one
// of this window. Each change is written whole or not at all and readable by its owner alone; without a message
// there is no file. What throws RuntimeError has changed nothing.
class UnsentFile {
public:
    explicit UnsentFile(const Session &session) : session_(session) {}

    // Reads what earlier windows left. Throws RuntimeError.
    void Load();

    // The message on offer; null when there is none.
    const UnsentMessage *Offered() const { return earlier_.empty() ? nullptr : &earlier_.back(); }

    // Keeps the message of this window; nothing removes it. Writes only when it has changed. Throws
    // RuntimeError.
    void Keep(const std::optional<UnsentMessage> &message);

    // The offered message, which leaves the file; what the window holds instead, if anything, is offered after
    // the others. Call it only with an offer. Throws RuntimeError.
    UnsentMessage TakeUp(const std::optional<UnsentMessage> &instead);
    // Drops the offered message. Throws RuntimeError.
    void Discard();

private:
    void Become(std::vector<UnsentMessage> earlier, std::optional<UnsentMessage> own);

    const Session &session_;
    bool isLoaded_ = false;
    std::vector<UnsentMessage> earlier_; // the newest last
    std::optional<UnsentMessage> own_;   // as the file has it
};

} // namespace varlo

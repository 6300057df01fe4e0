#include "pop3/Pop3Session.h"

#include "core/Literals.h"
#include "core/RuntimeError.h"
#include "core/TextFile.h"
#include "core/ValueText.h"

// The states, with what a reply that begins with "+" makes of them. A chunk of any other kind closes the
// connection with a box, except in Retrieving, where every chunk is message text.
//
//   state        command sent    a reply leads to
//   Greeting     (none)          USER                                                     -> UserSent
//                                where the line is to be encrypted: STLS                  -> StlsSent
//   StlsSent     STLS            encrypt                                                  -> Encrypting
//   Encrypting   (none)          nothing counts; once it is encrypted: USER               -> UserSent
//   UserSent     USER            PASS                                                     -> PassSent
//   PassSent     PASS            STAT                                                     -> StatSent
//   StatSent     STAT            count < 1: QUIT -> QuitSent;  else "RETR 1"              -> Retrieving
//   Retrieving   RETR            no end mark yet: stay;  else examine, DELE or nothing    -> MessageDone
//   MessageDone  DELE, nothing   last message: QUIT -> QuitSent;  else RETR of the next   -> Retrieving
//   QuitSent     QUIT            close, capture the requests                              -> QuitSent
//
// Wanted, because operators and their mailboxes rely on it:
//   - A message that is not deleted ends the check in MessageDone: nothing was sent, so nothing answers. The
//   message is
//     left for the operator's mail program, and so are those behind it.
//   - A refused RETR is taken for message text, and the check rests in Retrieving.
//   - Only the reply to QUIT resets the current message. After a check that ended early the next one asks for
//   "RETR 1"
//     first, but goes on from the old number.
//   - Text left over from an interrupted message stands before the next one.
//   - Only what never ends is cut off: a reply or a message past its limit ends the check in Greeting. The reply to QUIT
//     may be as long as it likes, since it is the last.
//   - Lines that begin with a point keep the point that the server put before them.

namespace varlo {

namespace {

using Kind = Pop3Effect::Kind;

// Nobody reads the words of a reply but the operator. A character that the end of a chunk cuts through only
// makes this line fall back to another character set; the message itself is put together from bytes.
QString WithoutLineEnd(const QByteArray &chunk) {
    QString text = DecodeText(chunk);
    text.chop(2);
    return text;
}

// The number between the fourth character of "+OK 12 34567" and the next blank.
qint16 CountOf(const QByteArray &chunk) {
    const QString reply = DecodeText(chunk);
    const qsizetype blank = reply.indexOf(u' ', 4);
    if (blank < 0)
        throw RuntimeError(InvalidProcedureCall); // a text of negative length
    return ToWhole16(reply.sliced(4, blank - 4));
}

} // namespace

Pop3Effects Pop3Session::Start(const Pop3Account &account) {
    account_ = account;
    state_ = State::Greeting;
    return {{Kind::Close, {}},
            {Kind::Connect, account.Server},
            {Kind::LogStatus, u"Connecting to POP3 server"_s}};
}

Pop3Effects Pop3Session::DataArrival(const QByteArray &chunk) {
    if (state_ == State::Encrypting)
        return {}; // said by somebody between the server and here
    Pop3Effects effects;
    if (chunk.startsWith('+'))
        effects.push_back({Kind::Log, u"POP: "_s + Shown(WithoutLineEnd(chunk))});
    else if (state_ != State::Retrieving)
        return {{Kind::Close, {}}, {Kind::ReplyBox, u"POP3 Error ["_s + Shown(DecodeText(chunk)) + u']'}};
    if (chunk.size() >= kTooLongReply && AwaitsLine() && state_ != State::QuitSent) {
        GiveUp(u"The reply is too long"_s, effects);
        return effects;
    }
    try {
        Act(chunk, effects);
    } catch (const RuntimeError &error) {
        effects.push_back({Kind::Raise, error.Description(), error.Number()});
    }
    return effects;
}

void Pop3Session::Act(const QByteArray &chunk, Pop3Effects &effects) {
    switch (state_) {
    case State::Greeting:
        return Greeted(effects);
    case State::StlsSent:
        effects.push_back({Kind::Encrypt, {}});
        state_ = State::Encrypting;
        return;
    case State::Encrypting:
        return;
    case State::UserSent:
        return UserAccepted(effects);
    case State::PassSent:
        return PassAccepted(effects);
    case State::StatSent:
        return StatAnswered(chunk, effects);
    case State::Retrieving:
        return TextArrived(chunk, effects);
    case State::MessageDone:
        return Deleted(effects);
    case State::QuitSent:
        return QuitAccepted(effects);
    }
}

void Pop3Session::Greeted(Pop3Effects &effects) {
    count_ = 0;
    effects.push_back({Kind::LogStatus, u"Connected to POP3 server"_s});
    if (!account_.StartsTls)
        return SayUser(effects);
    effects.push_back({Kind::Send, u"STLS"_s});
    effects.push_back({Kind::Log, u"STLS"_s});
    state_ = State::StlsSent;
}

Pop3Effects Pop3Session::Encrypted() {
    if (state_ != State::Encrypting)
        return {};
    Pop3Effects effects{{Kind::Log, u"The connection is encrypted"_s}};
    SayUser(effects);
    return effects;
}

void Pop3Session::SayUser(Pop3Effects &effects) {
    const QString command = u"USER "_s + account_.UserName;
    effects.push_back({Kind::Send, command});
    effects.push_back({Kind::Log, command});
    state_ = State::UserSent;
}

void Pop3Session::UserAccepted(Pop3Effects &effects) {
    effects.push_back({Kind::Send, u"PASS "_s + account_.Password});
    effects.push_back({Kind::Log, u"PASS ********"_s}); // whatever the length of the password
    state_ = State::PassSent;
}

void Pop3Session::PassAccepted(Pop3Effects &effects) {
    effects.push_back({Kind::Send, u"STAT"_s});
    effects.push_back({Kind::Log, u"STAT"_s});
    state_ = State::StatSent;
}

void Pop3Session::StatAnswered(const QByteArray &chunk, Pop3Effects &effects) {
    count_ = CountOf(chunk);
    if (count_ < 1)
        return Quit(effects);
    current_ = To16Bit(current_ + 1);
    const QString command = u"RETR 1"_s; // wanted: the first message, whatever an earlier check left
    effects.push_back({Kind::Send, command});
    effects.push_back({Kind::Log, command});
    effects.push_back({Kind::LogStatus, Progress()}); // for the later messages the two lines change places
    state_ = State::Retrieving;
}

void Pop3Session::TextArrived(const QByteArray &chunk, Pop3Effects &effects) {
    if (!buffer_.Append(chunk)) {
        if (buffer_.IsTooLong())
            GiveUp(u"Message %1 is longer than 64 MB"_s.arg(current_), effects);
        return;
    }
    buffer_.Strip();
    effects.push_back({Kind::Examine, buffer_.Head()});
}

Pop3Effects Pop3Session::MessageExamined(bool isRequest) {
    Pop3Effects effects;
    if (isRequest || account_.DeleteUnrelated == 1) {
        const QString command = u"DELE "_s + QString::number(current_);
        effects.push_back({Kind::Send, command});
        effects.push_back({Kind::Log, command});
    }
    state_ = State::MessageDone;
    buffer_.Clear();
    return effects;
}

void Pop3Session::Deleted(Pop3Effects &effects) {
    if (current_ == count_)
        return Quit(effects);
    current_ = To16Bit(current_ + 1);
    const QString command = u"RETR "_s + QString::number(current_);
    effects.push_back({Kind::Send, command});
    effects.push_back({Kind::LogStatus, Progress()});
    effects.push_back({Kind::Log, command});
    state_ = State::Retrieving;
}

void Pop3Session::QuitAccepted(Pop3Effects &effects) {
    current_ = 0;
    count_ = 0;
    effects.push_back({Kind::Close, {}});
    effects.push_back({Kind::Capture, {}});
}

void Pop3Session::Quit(Pop3Effects &effects) {
    effects.push_back({Kind::Send, u"QUIT"_s});
    effects.push_back({Kind::Log, u"QUIT"_s});
    state_ = State::QuitSent;
}

// A number or a text that stayed would spoil the next check, as after an error.
void Pop3Session::GiveUp(const QString &why, Pop3Effects &effects) {
    *this = Pop3Session();
    effects.push_back({Kind::Close, {}});
    effects.push_back({Kind::ReplyBox, u"POP3 Error ["_s + why + u']'});
}

QString Pop3Session::Shown(QString reply) const {
    const bool mayRepeat = account_.IsEncrypted && state_ == State::PassSent && !account_.Password.isEmpty();
    return mayRepeat ? reply.replace(account_.Password, u"********"_s) : reply;
}

QString Pop3Session::Progress() const {
    return u"Downloading message "_s + QString::number(current_) + u'/' + QString::number(count_);
}

Pop3Effects Pop3Session::SocketError(int number, const QString &description) const {
    const QString text =
        u"POP3 check failed (error "_s + QString::number(number) + u" - "_s + description + u')';
    return {{Kind::ErrorBox, text}, {Kind::LogStatus, text}};
}

} // namespace varlo

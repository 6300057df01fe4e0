#include "pop3/Pop3Check.h"

#include "core/Literals.h"
#include "core/Reporting.h"
#include "core/Settings.h"
#include "core/TextFile.h"
#include "core/TrustedServer.h"
#include "pop3/KeptErrors.h"

#include <QPointer>

namespace varlo {

namespace {

using Kind = Pop3Effect::Kind;

static_assert(WinsockPOP::kLongestLine >= Pop3Session::kTooLongReply); // a line that was cut is told

// Read from the file for each check.
const Preferences &ReadMailbox(Settings &settings) {
    for (const auto member : {&Preferences::POPServer, &Preferences::POPPort, &Preferences::POPUsername,
                              &Preferences::POPPassword, &Preferences::POPTrusted})
        (void)settings.Read(member); // held then
    (void)settings.Read(&Preferences::POPDeleteAll);
    (void)settings.Read(&Preferences::POPSecurity);
    return settings.Held;
}

} // namespace

Pop3Check::Pop3Check(Session &session, PendingDoor pending, std::function<void()> openPreferences,
                     quint16 port, net::AskTrust askTrust, QObject *parent)
    : QObject(parent), session_(session), pending_(std::move(pending)),
      openPreferences_(std::move(openPreferences)), port_(port), askTrust_(std::move(askTrust)),
      WinsockPOP_([this] { return pop3_.AwaitsLine(); }) {
    connect(&WinsockPOP_, &WinsockPOP::DataArrival, this, &Pop3Check::WinsockPOP_DataArrival);
    connect(&WinsockPOP_, &WinsockPOP::Error, this, &Pop3Check::WinsockPOP_Error);
    connect(&WinsockPOP_, &WinsockPOP::Encrypted, this, &Pop3Check::WinsockPOP_Encrypted);
    connect(&WinsockPOP_, &WinsockPOP::Distrusted, this, &Pop3Check::WinsockPOP_Distrusted);
}

// A session that an error left in the middle would go on from its number and its text, and the next check
// delete messages that nobody has downloaded.
template<typename Event> void Pop3Check::Handle(Event &&event) {
    const QPointer<Pop3Check> alive(this);
    LastResort(session_, [&] {
        try {
            event();
        } catch (...) {
            if (alive) {
                WinsockPOP_.Close();
                pop3_ = Pop3Session();
            }
            throw;
        }
    });
}

void Pop3Check::Start() {
    Handle([this] { Begin(); });
}

void Pop3Check::Begin() {
    const Preferences &values = ReadMailbox(session_.AllSettings);
    const Pop3Account account = MailboxAccount(values);
    const bool mayBeInKeyring = account.Password.isEmpty() && session_.PasswordTrouble;
    if (const QString trouble = mayBeInKeyring ? session_.PasswordTrouble() : QString(); !trouble.isEmpty()) {
        session_.Boxes.MsgBox(trouble, BoxButtons::Ok, BoxIcon::Exclamation);
        return;
    }
    if (account.Server.isEmpty() || account.UserName.isEmpty() || account.Password.isEmpty()) {
        session_.Boxes.MsgBox(u"You must configure your POP3 server, username and password from "
                              "preferences before you can use this feature."_s,
                              BoxButtons::Ok, BoxIcon::Exclamation);
        openPreferences_();
        return;
    }
    endpoint_ = MailboxEndpoint(values);
    if (endpoint_.Security == net::Encryption::None)
        endpoint_.Port = port_;
    ++check_;
    requests_ = Requests();
    CarryOut(pop3_.Start(account));
}

void Pop3Check::WinsockPOP_DataArrival(const QByteArray &chunk) {
    Handle([&] { CarryOut(pop3_.DataArrival(chunk)); });
}

void Pop3Check::WinsockPOP_Error(int Number, const QString &Description) {
    Handle([&] { CarryOut(pop3_.SocketError(Number, Description)); });
}

void Pop3Check::WinsockPOP_Encrypted() {
    Handle([&] { CarryOut(pop3_.Encrypted()); });
}

void Pop3Check::WinsockPOP_Distrusted(const net::Certificate &certificate, int Number,
                                      const QString &Description) {
    const QPointer<Pop3Check> alive(this);
    const quint64 check = check_;
    const bool trusted =
        askTrust_ && askTrust_({endpoint_.Host, certificate, Description + u'.', !endpoint_.Pin.isEmpty()});
    if (!alive || check != check_)
        return;
    if (!trusted)
        return WinsockPOP_Error(Number, Description);
    session_.Prefs.POPTrusted = TrustText(endpoint_.Host, certificate.Sha256);
    session_.AllSettings.Write({&Preferences::POPTrusted});
    Start();
}

// A box runs an event loop, in which the operator can click for a new check or close the window. What is left
// of the old event is void then. From QUIT on the server deletes, whatever happens here: a log that cannot be
// written stops nothing any more, and is told when the rest is done.
void Pop3Check::CarryOut(const Pop3Effects &effects) {
    Session &session = session_;
    const QPointer<Pop3Check> alive(this);
    const quint64 check = check_;
    const bool isEnding = pop3_.CurrentState() == Pop3Session::State::QuitSent;
    KeptErrors errors;
    for (const Pop3Effect &effect : effects) {
        if (isEnding)
            errors([&] { CarryOut(effect); });
        else
            CarryOut(effect);
        if (!alive || check != check_)
            break;
    }
    errors.Tell(session);
}

void Pop3Check::CarryOut(const Pop3Effect &effect) {
    switch (effect.What) {
    case Kind::Close:
        return WinsockPOP_.Close();
    case Kind::Connect:
        return WinsockPOP_.Connect(endpoint_);
    case Kind::Send:
        return WinsockPOP_.SendData(EncodeText(effect.Text) + "\r\n");
    case Kind::Log:
        return StatusMessage(session_, effect.Text, false, true);
    case Kind::LogStatus:
        return StatusMessage(session_, effect.Text);
    case Kind::ReplyBox:
        session_.Boxes.MsgBox(effect.Text, BoxButtons::Ok, BoxIcon::Exclamation, u"Varlo POP3 Error"_s);
        return;
    case Kind::ErrorBox:
        session_.Boxes.MsgBox(effect.Text);
        return;
    case Kind::Examine:
        return Examine(effect.Text);
    case Kind::Capture:
        return CaptureRequests(session_, requests_, pending_);
    case Kind::Encrypt:
        return WinsockPOP_.StartTls();
    case Kind::Raise:
        throw RuntimeError(effect.Number, effect.Text);
    }
}

void Pop3Check::Examine(const QString &text) {
    const QPointer<Pop3Check> alive(this);
    const quint64 check = check_;
    clsMessage message;
    if (!message.CreateFromText(text))
        session_.Boxes.MsgBox(u"There was a problem with decoding the e-mail"_s);
    if (!alive || check != check_)
        return;
    const bool isRequest = Recognise(message, requests_) != Recognised::Unrelated;
    CarryOut(pop3_.MessageExamined(isRequest));
}

} // namespace varlo

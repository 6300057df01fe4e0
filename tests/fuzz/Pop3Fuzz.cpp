// A server that says anything, in chunks of any size. The first byte is the setting for unrelated messages, and
// whether the line is to be encrypted; then each chunk follows a byte with its length. The length 0 is a click for a new check, the longest one
// repeats its chunk.

#include "core/Literals.h"
#include "core/RuntimeError.h"
#include "core/TextFile.h"
#include "fuzz/FuzzSupport.h"
#include "pop3/Pop3Session.h"
#include "pop3/Recognition.h"

#include <QStringList>

using namespace varlo;
using fuzz::Require;

namespace {

using Kind = Pop3Effect::Kind;
using State = Pop3Session::State;

// Runs the session as the program does, next to a model that keeps the whole text and searches all of it.
class Model {
public:
    Model(int deleteUnrelated, bool startsTls) : deleteUnrelated_(deleteUnrelated), startsTls_(startsTls) {
        Click();
    }

    void Click() {
        requests_ = Requests();
        const Pop3Effects effects =
            session_.Start({u"h"_s, u"joe"_s, u"secret"_s, deleteUnrelated_, startsTls_});
        Require(effects.size() == 3 && session_.CurrentState() == State::Greeting, "a click starts anew");
    }

    void Say(const QByteArray &chunk) {
        const State before = session_.CurrentState();
        const Pop3Effects effects = session_.DataArrival(chunk);
        CheckEffects(effects);
        if (!chunk.startsWith('+') && before != State::Retrieving)
            CheckRefusal(effects, before);
        else if (IsTooLong(chunk, before))
            CheckGivenUp(effects);
        else
            CheckStep(before, effects);
        CheckText(chunk, before, effects);
        if (!effects.empty() && effects.back().What == Kind::Examine)
            Examine(effects.back().Text);
        if (session_.CurrentState() == State::Encrypting)
            Encrypt(chunk);
        if (!effects.empty() &&
            (effects.front().What == Kind::Close || effects.back().What == Kind::ReplyBox ||
             effects.back().What == Kind::Capture))
            Click(); // nothing more comes from a connection that was closed
    }

private:
    static void CheckEffects(const Pop3Effects &effects) {
        Require(effects.size() <= 4, "a reply has few effects");
        for (size_t i = 0; i < effects.size(); ++i) {
            const Pop3Effect &effect = effects[i];
            const bool isLast = i + 1 == effects.size();
            Require(isLast || (effect.What != Kind::Raise && effect.What != Kind::Examine),
                    "these come last");
            if (effect.What == Kind::Send)
                Require(!effect.Text.contains(u'\n') && !effect.Text.contains(u'\r'),
                        "a command is one line");
            if (effect.What == Kind::Log && effect.Text.startsWith(u"PASS"_s))
                Require(effect.Text == u"PASS ********"_s, "the password is never logged");
        }
    }

    // What was said in the clear is said once more, by somebody between the server and here.
    void Encrypt(const QByteArray &chunk) {
        Require(session_.DataArrival(chunk).empty(), "nothing counts before the handshake");
        const Pop3Effects effects = session_.Encrypted();
        CheckEffects(effects);
        Require(effects.size() == 3 && effects[1].Text == u"USER joe"_s,
                "the user comes after the handshake");
    }

    void CheckRefusal(const Pop3Effects &effects, State before) const {
        Require(effects.size() == 2 && effects[0].What == Kind::Close && effects[1].What == Kind::ReplyBox,
                "a refusal closes with a box");
        Require(session_.CurrentState() == before, "a refusal keeps the state");
    }

    static bool IsTooLong(const QByteArray &reply, State before) {
        return before != State::Retrieving && before != State::QuitSent &&
               reply.size() >= Pop3Session::kTooLongReply;
    }

    void CheckGivenUp(const Pop3Effects &effects) {
        Require(effects.size() == 3 && effects[1].What == Kind::Close && effects[2].What == Kind::ReplyBox,
                "a reply that is too long closes with a box");
        Require(session_.CurrentState() == State::Greeting && session_.Buffer().Size() == 0,
                "it leaves nothing");
        text_.clear();
    }

    void CheckStep(State before, const Pop3Effects &effects) const {
        const State after = session_.CurrentState();
        const bool failed = !effects.empty() && effects.back().What == Kind::Raise;
        switch (before) {
        case State::Greeting:
            return Require(after == (startsTls_ ? State::StlsSent : State::UserSent), "greeted");
        case State::StlsSent:
            return Require(after == State::Encrypting, "encryption");
        case State::Encrypting:
            return Require(false, "no reply is awaited then");
        case State::UserSent:
            return Require(after == State::PassSent, "user");
        case State::PassSent:
            return Require(after == State::StatSent, "password");
        case State::StatSent:
        case State::MessageDone:
            return Require(failed ? after == before : after == State::Retrieving || after == State::QuitSent,
                           "count or next message");
        case State::Retrieving:
            return Require(after == State::Retrieving && !failed, "text");
        case State::QuitSent:
            return Require(after == State::QuitSent, "quit");
        }
    }

    void CheckText(const QByteArray &chunk, State before, const Pop3Effects &effects) {
        if (before != State::Retrieving)
            return;
        text_ += chunk;
        const bool isWhole = text_.contains("\n.\r\n");
        Require(isWhole == (!effects.empty() && effects.back().What == Kind::Examine),
                "the end mark is found at once");
        if (isWhole) {
            text_ = text_.sliced(text_.indexOf("\r\n") + 2);
            text_.chop(3);
            const qsizetype emptyLine = text_.indexOf("\r\n\r\n");
            const QString head = emptyLine < 0 ? QString() : DecodeText(text_.first(emptyLine + 4));
            Require(effects.back().Text == head, "the message is what was sent");
        }
        Require(session_.Buffer().Size() == text_.size(), "the text is kept");
    }

    void Examine(const QString &text) {
        clsMessage message;
        try {
            const bool hasEmptyLine = message.CreateFromText(text);
            Require(hasEmptyLine == text.contains(u"\r\n\r\n"_s), "a missing empty line is told");
            const bool isRequest = Recognise(message, requests_) != Recognised::Unrelated;
            const Pop3Effects effects = session_.MessageExamined(isRequest);
            Require(effects.size() == (isRequest || deleteUnrelated_ == 1 ? 2 : 0), "requests are deleted");
            Require(session_.CurrentState() == State::MessageDone, "a message is done");
            text_.clear();
        } catch (const RuntimeError &error) {
            Require(error.Number() == Overflow || error.Number() == KeyAlreadyPresent,
                    "what reading can raise");
        }
    }

    Pop3Session session_;
    Requests requests_;
    const int deleteUnrelated_;
    const bool startsTls_;
    QByteArray text_;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    constexpr int longest = 255;
    constexpr int repeats = 160; // a chunk of 254 bytes so becomes longer than a header block may be
    fuzz::Input input(data, size);
    constexpr int kTls = 128;
    const int settings = input.Byte();
    Model model(settings % kTls % 3 - 1, settings >= kTls);
    int repeated = 0;
    while (!input.AtEnd()) {
        const int length = input.Byte();
        if (length == 0)
            model.Click();
        else if (length == longest && ++repeated <= 4) // the text may not grow without end
            model.Say(input.Chunk(longest - 1).repeated(repeats));
        else
            model.Say(input.Chunk(length));
    }
    return 0;
}

// An SMTP server that says anything up to the first mail, with encryption switched on in between. The first
// byte chooses what the client wants; then each chunk follows a byte with its length.

#include "core/Literals.h"
#include "fuzz/FuzzSupport.h"
#include "smtp/Handshake.h"
#include "smtp/ReplyParser.h"

using namespace OSSMTP;
using varlo::fuzz::Input;
using varlo::fuzz::Require;
using varlo::net::Encryption;

namespace {

using State = Handshake::State;

struct Choice {
    Encryption Wanted = Encryption::None;
    bool SignsIn = false;
    bool IsToken = false;
    bool ClearTextAllowed = false;
};

Choice ChoiceOf(int byte) {
    return {static_cast<Encryption>(byte & 3), (byte & 4) != 0, (byte & 8) != 0, (byte & 16) != 0};
}

Handshake Begin(const Choice &choice) {
    HandshakePlan plan{choice.Wanted, {}, choice.ClearTextAllowed};
    if (choice.SignsIn)
        plan.SignIn = varlo::net::Credentials{u"ed"_s, u"Secret-Word"_s, choice.IsToken, u"x.org"_s, 587};
    return Handshake(plan);
}

bool HoldsSecret(const QByteArray &out) {
    for (const QByteArray &word : out.simplified().split(' '))
        if (word.contains("Secret-Word") || QByteArray::fromBase64(word).contains("Secret-Word"))
            return true;
    return false;
}

// What is written, whatever was said.
void Look(const Choice &choice, const Handshake &handshake, const QByteArray &out) {
    Require(out.isEmpty() || (out.endsWith("\r\n") && out.count('\n') == 1), "one command is one line");
    const bool isClear = !handshake.IsEncrypted() && !choice.ClearTextAllowed;
    Require(!isClear || !(out.startsWith("AUTH") || HoldsSecret(out)), "nobody signs in in the clear");
    Require(choice.SignsIn || !out.startsWith("AUTH"), "nobody signs in who has no name");
    Require(choice.Wanted != Encryption::StartTls || handshake.IsEncrypted() ||
                handshake.Now() != State::Ready,
            "encryption that is a must is not given up");
    Require(!choice.SignsIn || handshake.Now() != State::Ready || !isClear, "ready is signed in");
}

// As Link does it: what a chunk holds behind the word to encrypt counts no more.
void Switch(Handshake &handshake, ReplyParser &parser, const Choice &choice) {
    parser.Clear();
    const QByteArray out = handshake.Resume();
    Require(out.startsWith("EHLO "), "everything is asked again");
    Require(!handshake.Offers("PIPELINING") && handshake.Now() == State::Talking, "nothing is remembered");
    Look(choice, handshake, out);
}

bool Take(Handshake &handshake, const Choice &choice, const Reply &reply) {
    const QByteArray out = handshake.Take(reply);
    Look(choice, handshake, out);
    Require(!choice.SignsIn || handshake.Now() != State::Ready || reply.Code == 235, "235 signs in");
    return handshake.Now() == State::Encrypting;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    Input input(data, size);
    const Choice choice = ChoiceOf(input.Byte());
    Handshake handshake = Begin(choice);
    ReplyParser parser;
    while (!input.AtEnd() && handshake.Now() == State::Talking && !parser.IsBroken()) {
        parser.Add(input.Chunk(input.Byte()));
        while (auto reply = handshake.Now() == State::Talking ? parser.Next() : std::nullopt)
            if (Take(handshake, choice, *reply))
                Switch(handshake, parser, choice);
    }
    Require(!handshake.Trouble().Description.contains(u"Secret-Word"_s) ||
                input.All().contains("Secret-Word"),
            "no trouble of our own words holds the secret");
    return 0;
}

// An SMTP server that says anything, in chunks of any size. The first byte chooses pipelining, the reset
// and a message that goes out with the commands; then each chunk follows a byte with its length.

#include "fuzz/FuzzSupport.h"
#include "smtp/ReplyParser.h"
#include "smtp/Transaction.h"

#include <vector>

using namespace OSSMTP;
using varlo::fuzz::Input;
using varlo::fuzz::Require;

namespace {

using State = Transaction::State;

std::vector<Reply> RepliesIn(ReplyParser &parser, const QByteArray &chunk) {
    std::vector<Reply> replies;
    parser.Add(chunk);
    while (auto reply = parser.Next()) {
        Require(reply->Code >= 100 && reply->Code <= 599, "a reply has a code");
        Require(reply->Text.size() <= 2 * ReplyParser::kLongestReply, "a reply is bounded");
        for (const QChar c : reply->Description())
            Require(c.category() != QChar::Other_Control, "a description is one line of text");
        replies.push_back(*reply);
    }
    return replies;
}

// The chunks must not matter.
void CompareWithOneRead(const QByteArray &all, const std::vector<Reply> &replies, bool broken) {
    if (all.size() > ReplyParser::kLongestReply)
        return; // where the limit strikes depends on the chunks
    ReplyParser parser;
    Require(RepliesIn(parser, all) == replies, "the same replies in one read");
    Require(parser.IsBroken() == broken, "the same end in one read");
}

void Step(Transaction &transaction, const Reply &reply, bool atOnce) {
    const State before = transaction.Now();
    const bool begun = transaction.DataBegun();
    const QByteArray out = transaction.Take(reply);
    Require(out.isEmpty() || out.endsWith("\r\n"), "commands are whole lines");
    Require(!begun || transaction.DataBegun(), "what has begun stays begun");
    Require(transaction.DataBegun() == begun || reply.Code == 354, "only 354 begins");
    Require(transaction.Now() != State::Content || transaction.DataBegun(), "content after 354 only");
    Require(transaction.Now() != State::Sent ||
                (before == (atOnce ? State::Commands : State::Content) && reply.Code / 100 == 2),
            "sent when the server took the content");
    Require(transaction.Now() != State::Refused ||
                (transaction.Answer() && transaction.Answer()->Code >= 400),
            "a refusal has its reply");
}

bool IsOver(const Transaction &transaction) {
    return transaction.Now() != State::Commands && transaction.Now() != State::Content;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    Input input(data, size);
    const int choice = input.Byte();
    const bool atOnce = (choice & 5) == 5;
    const auto open = [&](bool resetFirst) {
        return Transaction({"ed@x.org", "ann@y.org", {}, atOnce ? 7 : 0}, (choice & 1) != 0, resetFirst);
    };
    Transaction transaction = open((choice & 2) != 0);
    ReplyParser parser;
    QByteArray all;
    std::vector<Reply> replies;
    while (!input.AtEnd()) {
        const QByteArray chunk = input.Chunk(input.Byte());
        all += chunk;
        for (const Reply &reply : RepliesIn(parser, chunk)) {
            replies.push_back(reply);
            if (IsOver(transaction))
                transaction = open(transaction.LeftOpen());
            Step(transaction, reply, atOnce);
        }
    }
    CompareWithOneRead(all, replies, parser.IsBroken());
    return 0;
}

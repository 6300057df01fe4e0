// Any bytes as a mail message.

#include "core/Literals.h"
#include "core/RuntimeError.h"
#include "core/TextFile.h"
#include "fuzz/FuzzSupport.h"
#include "pop3/ExtractAddress.h"
#include "pop3/Recognition.h"

using namespace varlo;
using fuzz::Require;

namespace {

void CheckValue(const QString &value, const QString &headers) {
    Require(headers.contains(value), "a value is a part of the headers");
    Require(!value.contains(u"\r\n"_s), "a value is one line");
    Require(!value.startsWith(u' ') && !value.endsWith(u' '), "a value has no blanks around it");
}

void CheckAddress(const QString &from) {
    try {
        const QString address = ExtractAddress(from);
        Require(from.contains(address), "an address is a part of the sender");
        const bool isCut = address.size() != from.size();
        Require(!isCut || from.contains(u'<' + address + u'>'), "what is cut out stood in brackets");
        Require(!isCut || !address.contains(u'>'), "the first bracket ends the address");
    } catch (const RuntimeError &error) {
        Require(error.Number() == InvalidProcedureCall, "only a negative length can fail");
        Require(from.indexOf(u'>') < from.indexOf(u'<'),
                "the length is negative when the brackets are turned");
    }
}

void CheckRequest(const clsMessage &message) {
    Requests requests;
    const Recognised kind = Recognise(message, requests);
    const QString subject = message.Subject().toLower();
    Require((kind == Recognised::Subscribe) == (subject == u"subscribe"), "subscribe");
    Require((kind == Recognised::Unsubscribe) == (subject == u"unsubscribe"), "unsubscribe");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    const QString text = DecodeText(fuzz::Input(data, size).Rest());
    const qsizetype emptyLine = text.indexOf(u"\r\n\r\n"_s);
    clsMessage message;
    try {
        Require(message.CreateFromText(text) == (emptyLine >= 0), "a missing empty line is told");
        Require(emptyLine <= 32766, "a long header block is an overflow");
        Require(message.Headers() == text.left(qMax<qsizetype>(0, emptyLine)),
                "the headers end at the empty line");
    } catch (const RuntimeError &error) {
        Require(error.Number() == Overflow && emptyLine > 32766, "only a long header block can fail");
        Require(message.Headers().isEmpty(), "a message that failed is empty");
    }
    for (const QString &value : {message.From(), message.Subject(), message.MessageID()})
        CheckValue(value, message.Headers());
    CheckAddress(message.From());
    CheckAddress(text.left(32767));
    CheckRequest(message);
    return 0;
}

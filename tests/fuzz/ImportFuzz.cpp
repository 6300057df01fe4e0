// Any bytes as a file to import: what is found stands in the text, no slice of time changes it, nothing is found twice.

#include "core/Literals.h"
#include "core/modPublic.h"
#include "fuzz/FuzzSupport.h"
#include "import/AddressFinder.h"
#include "import/AnyText.h"

#include <QSet>

using namespace varlo;
using fuzz::Require;

namespace {

void CheckFound(const QList<FoundAddress> &found, const QString &text) {
    QSet<QString> keys;
    qsizetype times = 0;
    const auto lines = text.count(u'\n') + text.count(u'\r') + 1;
    for (const FoundAddress &each : found) {
        Require(!each.Text.isEmpty(), "a find is not empty");
        Require(each.Text.size() <= text.size() + 1, "a find is no longer than the text");
        Require(each.Line >= 1 && each.Line <= lines, "a find stands on a line of the text");
        Require(each.Times >= 1, "a find is there");
        Require(!keys.contains(LowerCased(each.Text)), "each address is listed once");
        Require((each.Fault == AddressFault::None) == (FaultOf(each.Text) == AddressFault::None) ||
                    each.Text.endsWith(u'\u2026'),
                "the fault is that of the text");
        Require(each.Fault != AddressFault::None || !each.Text.contains(u'\n'), "an address is one line");
        keys.insert(LowerCased(each.Text));
        times += each.Times;
    }
    Require(times <= text.size() + 1, "no more finds than characters");
}

// What was found, written as a list with one address a line, is found again.
void CheckRoundTrip(const QList<FoundAddress> &found) {
    QStringList usable;
    for (const FoundAddress &each : found) {
        const bool hasBlank =
            std::any_of(each.Text.begin(), each.Text.end(), [](QChar c) { return c.isSpace(); });
        if (each.Fault == AddressFault::None && !hasBlank)
            usable << each.Text;
    }
    if (usable.size() < 2)
        return;
    QStringList again;
    for (const FoundAddress &each : FindAddresses(usable.join(u"\r\n"_s)))
        again << each.Text;
    Require(again == usable, "a list of what was found is found again");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    const auto text = DecodeAnyText(fuzz::Input(data, size).Rest());
    if (!text)
        return 0;
    const auto found = FindAddresses(*text);
    CheckFound(found, *text);
    CheckRoundTrip(found);
    AddressFinder slices(*text);
    qsizetype position = 0;
    while (!slices.Step(0)) {
        Require(slices.Position() >= position && slices.Position() <= slices.Size(), "a slice goes on");
        position = slices.Position();
    }
    Require(slices.Found() == found, "slices find the same");
    return 0;
}

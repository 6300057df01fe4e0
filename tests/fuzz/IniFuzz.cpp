// Any bytes as a settings file, and one change to it. The first byte chooses the change; then follow the key by
// name ("SMTP/SMTPPort") up to a line feed, a byte that is the length of the value, the value, and the file.

#include "core/IniText.h"
#include "core/Settings.h"
#include "core/TextFile.h"
#include "fuzz/FuzzSupport.h"

#include <QStringList>

using namespace varlo;
using fuzz::Require;

namespace {

struct Name {
    QString Section;
    QString Key;
    bool operator==(const Name &) const = default;
};

Name NameOf(const Setting &setting) {
    return {QString::fromLatin1(setting.Section), QString::fromLatin1(setting.Key)};
}

// The setting of that name; the first one for a name that is none, so that damaged names are tried on, too.
Name Named(const QByteArray &words) {
    for (const Setting &setting : Settings::Table())
        if (words == QByteArray(setting.Section) + '/' + setting.Key)
            return NameOf(setting);
    return NameOf(Settings::Table().front());
}

// The lines without their ends, which a last line may gain.
QStringList Lines(const QString &text) {
    QStringList lines = text.split(u'\n');
    for (qsizetype i = 0; i + 1 < lines.size(); ++i)
        if (lines[i].endsWith(u'\r'))
            lines[i].chop(1);
    if (lines.last().isEmpty())
        lines.removeLast();
    return lines;
}

// What is left of both after the lines that they have in common at the beginning and at the end.
struct Difference {
    QStringList Gone;
    QStringList New;
};

Difference Compare(QStringList before, QStringList after) {
    while (!before.isEmpty() && !after.isEmpty() && before.first() == after.first()) {
        before.removeFirst();
        after.removeFirst();
    }
    while (!before.isEmpty() && !after.isEmpty() && before.last() == after.last()) {
        before.removeLast();
        after.removeLast();
    }
    return {before, after};
}

QString AsRead(const QString &value) {
    const QString trimmed = value.trimmed();
    const bool quoted = trimmed.size() >= 2 && trimmed.front() == trimmed.back() &&
                        (trimmed.front() == u'"' || trimmed.front() == u'\'');
    return quoted ? trimmed.sliced(1, trimmed.size() - 2) : trimmed;
}

void CheckKept(const QString &text, const Name &name, const QString &value) {
    const QString after = IniText::WithValue(text, name.Section, name.Key, IniText::Kept(value));
    Require(IniText::Find(after, name.Section, name.Key) == value, "what is kept comes back as it is");
}

void CheckOtherKeys(const QString &before, const QString &after, const Name &changed) {
    for (const Setting &key : Settings::Table())
        if (const Name other = NameOf(key); !(other == changed))
            Require(IniText::Find(before, other.Section, other.Key) ==
                        IniText::Find(after, other.Section, other.Key),
                    "other keys keep their values");
}

void CheckSet(const QString &text, const Name &name, const QString &value) {
    const QString after = IniText::WithValue(text, name.Section, name.Key, value);
    Require(IniText::Find(after, name.Section, name.Key) == AsRead(value), "what is set is found");
    CheckOtherKeys(text, after, name);
    const Difference difference = Compare(Lines(text), Lines(after));
    Require(difference.Gone.size() <= 1 && difference.New.size() <= 2, "other lines are kept");
    Require(IniText::WithValue(after, name.Section, name.Key, value) == after,
            "setting twice is setting once");
    CheckKept(text, name, value);
}

void CheckDeleteKey(const QString &text, const Name &name) {
    const QString after = IniText::WithoutKey(text, name.Section, name.Key);
    const bool had = IniText::Find(text, name.Section, name.Key).has_value();
    const Difference difference = Compare(Lines(text), Lines(after));
    Require(difference.Gone.size() == (had ? 1 : 0) && difference.New.isEmpty(), "one line goes");
    CheckOtherKeys(text, after, name);
}

void CheckDeleteSection(const QString &text, const Name &name) {
    const QString after = IniText::WithoutSection(text, name.Section);
    Require(Compare(Lines(text), Lines(after)).New.isEmpty(), "deleting adds nothing");
    for (const Setting &key : Settings::Table())
        if (const Name other = NameOf(key); other.Section != name.Section)
            Require(IniText::Find(text, other.Section, other.Key) ==
                        IniText::Find(after, other.Section, other.Key),
                    "other sections keep their values");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    fuzz::Input input(data, size);
    const int change = input.Byte() % 3;
    const Name name = Named(input.Line());
    QString value = DecodeText(input.Chunk(input.Byte()));
    for (QChar &c : value) // as the settings class does before it writes
        if (c == u'\r' || c == u'\n' || c == u'\0')
            c = u' ';
    const QString text = DecodeText(input.Rest());
    if (change == 0)
        CheckSet(text, name, value);
    else if (change == 1)
        CheckDeleteKey(text, name);
    else
        CheckDeleteSection(text, name);
    return 0;
}

#include "core/Settings.h"

#include "core/Literals.h"
#include "core/Reporting.h"
#include "core/ValueText.h"

#include <array>
#include <utility>

namespace varlo {

namespace {

using P = Preferences;

constexpr bool IsSecret = true;

constexpr std::array kTable = std::to_array<Setting>({
    // Wanted: the preferences window reads and writes the key in "General", the start of the program reads it
    // from "Main". A profile so always starts with status logging on unless "Main" says otherwise.
    {"General", "LogStatus", "1", &P::LogStatus, Use::InWindow},
    {"General", "LogEmails", "1", &P::LogEmails, Use::Fresh},
    {"General", "Notify", "0", &P::Notify, Use::Held},
    {"General", "Keyring", "0", &P::Keyring, Use::Held, Kept::WhenSet},
    {"General", "KeyringName", "", &P::KeyringName, Use::Held, Kept::WhenSet},
    {"SMTP", "SMTPServer", "", &P::SMTPServer, Use::Held},
    {"SMTP", "SMTPPort", "25", &P::SMTPPort, Use::Held},
    {"SMTP", "SMTPFrom", "", &P::SMTPFrom, Use::Held},
    {"SMTP", "SMTPEmail", "", &P::SMTPEmail, Use::Held},
    {"SMTP", "SMTPWrap", "72", &P::SMTPWrap, Use::Held},
    {"SMTP", "SMTPSecurity", "0", &P::SMTPSecurity, Use::Held, Kept::WhenSet},
    {"SMTP", "SMTPUsername", "", &P::SMTPUsername, Use::Held, Kept::WhenSet},
    {"SMTP", "SMTPPassword", "", &P::SMTPPassword, Use::Held, Kept::WhenSet, IsSecret},
    {"SMTP", "SMTPSignIn", "0", &P::SMTPSignIn, Use::Held, Kept::WhenSet},
    {"SMTP", "SMTPTrusted", "", &P::SMTPTrusted, Use::Held, Kept::WhenSet},
    {"SMTP", "SMTPUnencrypted", "", &P::SMTPUnencrypted, Use::Held, Kept::WhenSet},
    {"POP3", "POPServer", "", &P::POPServer, Use::Fresh},
    {"POP3", "POPPort", "110", &P::POPPort, Use::Fresh},
    {"POP3", "POPUsername", "", &P::POPUsername, Use::Fresh},
    {"POP3", "POPPassword", "", &P::POPPassword, Use::Fresh, Kept::Always, IsSecret},
    {"POP3", "POPDeleteAll", "0", &P::POPDeleteAll, Use::Fresh},
    {"POP3", "POPSecurity", "0", &P::POPSecurity, Use::Fresh, Kept::WhenSet},
    {"POP3", "POPTrusted", "", &P::POPTrusted, Use::Held, Kept::WhenSet},
    {"Notify", "SubSubject", "Mailing list subscription notification", &P::SubSubject, Use::Held},
    {"Notify", "SubBody", "Your e-mail address has been subscribed to our mailing list.", &P::SubBody,
     Use::Held},
    {"Notify", "UnsubSubject", "Mailing list unsubscription notification", &P::UnsubSubject, Use::Held},
    {"Notify", "UnsubBody", "Your e-mail address has been unsubscribed from our mailing list.", &P::UnsubBody,
     Use::Held},
    // Wanted: two defaults for one key. A profile that never saved its preferences signs its messages, while
    // the preferences window shows the box unticked until the operator saves.
    {"Signature", "AutoAdd", "0", &P::SignatureAutoAdd, Use::InWindow},
    {"Signature", "AutoAdd", "1", &P::SignatureAutoAdd, Use::Outside},
    {"Signature", "Text", "", &P::SignatureText, Use::Fresh},
    {"Main", "LogStatus", "1", &P::LogStatus, Use::Outside},
    {"Main", "AlwaysOnTop", "False", &P::AlwaysOnTop, Use::Outside},
    {"Main", "BypassPending", "0", &P::BypassPending, Use::Outside},
    {"Main", "ListCurrent", "0", &P::ListCurrent, Use::Outside},
    {"Main", "ListSortBy", "1", &P::ListSortBy, Use::Outside},
    {"General", "History", "1", &P::History, Use::Outside},
    {"General", "Careful", "0", &P::Careful, Use::Outside},
    {"Window", "Geometry", "", &P::WindowGeometry, Use::Outside},
    {"Window", "Splitter", "", &P::WindowSplitter, Use::Outside},
    {"Window", "ComposeGeometry", "", &P::ComposeGeometry, Use::Outside},
});

// ---- Every member has a row: counted when this file is compiled

struct AnyValue {
    template<typename Type> operator Type() const;
};

template<typename Struct, typename... Values> consteval std::size_t CountMembers() {
    if constexpr (requires { Struct{Values{}..., AnyValue{}}; })
        return CountMembers<Struct, Values..., AnyValue>();
    else
        return sizeof...(Values);
}

consteval std::size_t CountMembersWithARow() {
    std::size_t count = 0;
    for (std::size_t row = 0; row < kTable.size(); ++row) {
        bool isFirst = true;
        for (std::size_t other = 0; other < row; ++other)
            isFirst = isFirst && kTable[other].Member != kTable[row].Member;
        count += isFirst ? 1 : 0;
    }
    return count;
}

static_assert(CountMembersWithARow() == CountMembers<Preferences>(),
              "each member of Preferences needs a row");

// The row that the program outside the preferences window goes by.
const Setting &RowOf(const SettingMember &member) {
    return *std::find_if(kTable.begin(), kTable.end(), [&](const Setting &setting) {
        return setting.Member == member && setting.How != Use::InWindow;
    });
}

QString Latin1(const char *text) {
    return QString::fromLatin1(text);
}

// The values of a type, whichever it is, by one function for each.
QString ToText(int value) {
    return QString::number(value);
}
QString ToText(bool value) {
    return value ? u"True"_s : u"False"_s;
}
QString ToText(const QString &value) {
    return value;
}
void FromText(const QString &text, int &value) {
    value = ToWhole32(text);
}
void FromText(const QString &text, qint16 &value) {
    value = ToWhole16(text);
}
void FromText(const QString &text, bool &value) {
    value = ToTruth(text);
}
void FromText(const QString &text, QString &value) {
    value = text;
}

IniEntry Entry(const Preferences &values, const Setting &setting) {
    const bool isElsewhere = setting.IsSecret && values.Keyring == 1;
    return {Latin1(setting.Section), Latin1(setting.Key), isElsewhere ? QString() : TextOf(values, setting)};
}

bool IsStored(const Setting &setting, const char *section) {
    return setting.How != Use::Outside && (!section || Latin1(setting.Section) == Latin1(section));
}

} // namespace

QString TextOf(const Preferences &values, const Setting &setting) {
    return std::visit([&](auto member) { return ToText(values.*member); }, setting.Member);
}

void SetText(Preferences &values, const Setting &setting, const QString &text) {
    std::visit([&](auto member) { FromText(text, values.*member); }, setting.Member);
}

Settings::Settings(clsINIFile &ini) : ini_(ini) {
}

std::span<const Setting> Settings::Table() {
    return kTable;
}

Preferences Settings::Defaults() {
    Preferences defaults;
    for (const Setting &setting : kTable)
        if (setting.How != Use::InWindow)
            SetText(defaults, setting, Latin1(setting.Default));
    return defaults;
}

QString Settings::FileText(const Setting &setting) const {
    ini_.SetSection(Latin1(setting.Section));
    return ini_.GetValue(Latin1(setting.Key), Latin1(setting.Default));
}

QString Settings::StoredText(const Setting &setting) const {
    return setting.IsSecret && Held.Keyring == 1 ? TextOf(Held, setting) : FileText(setting);
}

void Settings::Load(ErrorTrap &trap) {
    for (const Setting &setting : kTable)
        if (setting.How == Use::Held)
            trap([&] { SetText(Held, setting, StoredText(setting)); });
}

void Settings::ReadMember(const SettingMember &member) {
    const Setting &setting = RowOf(member);
    SetText(Held, setting, StoredText(setting));
}

Preferences Settings::ForWindow(ErrorTrap &trap) const {
    Preferences shown = Held;
    for (const Setting &setting : kTable) {
        if (setting.How != Use::Fresh && setting.How != Use::InWindow)
            continue;
        SetText(shown, setting, Latin1(setting.Default));
        trap([&] { SetText(shown, setting, StoredText(setting)); });
    }
    return shown;
}

void Settings::Store(const Preferences &wanted, const char *section) {
    Preferences kept = Held;
    std::vector<IniEntry> entries;
    for (const Setting &setting : kTable) {
        if (!IsStored(setting, section))
            continue;
        SetText(kept, setting, IniLine(TextOf(wanted, setting)));
        const IniEntry entry = Entry(kept, setting);
        if (setting.Stored == Kept::Always || entry.Value != FileText(setting))
            entries.push_back(entry);
    }
    ini_.Write(entries);
    Held = kept;
    Q_EMIT Changed();
}

void Settings::Write(std::initializer_list<SettingMember> members) const {
    std::vector<IniEntry> entries;
    for (const SettingMember &member : members)
        entries.push_back(Entry(Held, RowOf(member)));
    ini_.SetSection(entries.back().Section);
    try {
        ini_.Write(entries);
    } catch (const RuntimeError &) {
        // Where the window stood is not worth a box while the program ends.
    }
}

} // namespace varlo

#include "lists/NaiveLists.h"

#include "core/Literals.h"
#include "lists/AddressRules.h"
#include "lists/ListsFixture.h"

#include <algorithm>

namespace varlo::test {

namespace {

bool IsBefore(const QString &a, const QString &b) {
    return a.toLower() != b.toLower() ? a.toLower() < b.toLower() : a < b;
}

} // namespace

void NaiveBox::Load(const QStringList &texts) {
    Entries.clear();
    for (const QString &text : texts)
        Add(text);
}

void NaiveBox::Add(const QString &text, bool selected) {
    qsizetype row = 0;
    while (row < Entries.size() && (!sorted_ || IsBefore(Entries[row].Text, text)))
        ++row;
    Insert(row, text, selected);
}

void NaiveBox::Insert(qsizetype row, const QString &text, bool selected) {
    Entries.insert(row, {text, selected, nextId_++});
}

QStringList NaiveBox::Texts() const {
    QStringList texts;
    for (const Entry &entry : Entries)
        texts << entry.Text;
    return texts;
}

QStringList NaiveBox::SelectedTexts() const {
    QStringList texts;
    for (const Entry &entry : Entries)
        if (entry.Selected)
            texts << entry.Text;
    return texts;
}

qsizetype NaiveBox::RowOf(int id) const {
    const auto found =
        std::find_if(Entries.begin(), Entries.end(), [&](const Entry &e) { return e.Id == id; });
    return found - Entries.begin();
}

qsizetype NaiveBox::FindFirst(const QString &text) const {
    for (qsizetype row = 0; row < Entries.size(); ++row)
        if (Entries[row].Text.toLower() == text.toLower())
            return row;
    return -1;
}

qsizetype NaiveBox::FindExact(const QString &text) const {
    return Texts().indexOf(text);
}

void NaiveBox::DeleteSelected() {
    Entries.removeIf([](const Entry &entry) { return entry.Selected; });
}

void NaiveBox::SelectTexts(QStringList texts) {
    for (Entry &entry : Entries)
        entry.Selected = texts.removeOne(entry.Text);
}

void NaiveBox::SelectNone() {
    SelectTexts({});
}

void NaiveBox::SelectAll() {
    for (Entry &entry : Entries)
        entry.Selected = true;
}

bool NaiveLists::AnswerYes() {
    const bool yes = RandomBelow(random_, 2) == 0;
    dialogs_.Answers.push_back(yes ? BoxAnswer::Yes : BoxAnswer::No);
    return yes;
}

QString NaiveLists::AnswerText(const QString &text) {
    dialogs_.Inputs.push_back(text);
    return text;
}

QString NaiveLists::RandomAddress() {
    static const QStringList kOthers = Words("jörg@x.test JÖRG@x.test nobody a@b..c <b>@x.test");
    if (RandomBelow(random_, 5) == 0)
        return kOthers[RandomBelow(random_, static_cast<int>(kOthers.size()))];
    const QChar first(u'a' + RandomBelow(random_, 26));
    return (RandomBelow(random_, 2) == 0 ? first : first.toUpper()) + u"b@x.test"_s;
}

QString NaiveLists::RandomName() {
    static const QStringList kNames{u"news"_s, u"Über uns"_s, u"a b"_s, u"other"_s, u"News"_s,
                                    u" x "_s,  u"(b)"_s,      u"z"_s,   QString()};
    return kNames[RandomBelow(random_, static_cast<int>(kNames.size()))];
}

void NaiveLists::Type(const QString &address, QChar sign) {
    if (PassesAddressRules(address) && Pending.FindFirst(address) < 0)
        Pending.Add(sign + address);
}

void NaiveLists::Capture(const QString &text) {
    Type(text, u'+');
}

void NaiveLists::Process() {
    if (Open.isEmpty())
        return;
    for (const QString &entry : Pending.Texts()) {
        if (entry.startsWith(u'+'))
            Subscribe(entry.mid(1));
        else if (entry.startsWith(u'-'))
            Unsubscribe(entry.mid(1));
        Log << entry;
    }
    Pending.Entries.clear();
}

void NaiveLists::Subscribe(const QString &address) {
    if (Chronological.FindFirst(address) >= 0)
        return;
    Chronological.Add(address);
    Alphabetical.Add(address);
    Changed();
}

void NaiveLists::Unsubscribe(const QString &address) {
    if (const qsizetype row = Chronological.FindFirst(address); row >= 0) {
        Chronological.Entries.removeAt(row);
        Changed();
    }
    if (const qsizetype row = Alphabetical.FindFirst(address); row >= 0)
        Alphabetical.Entries.removeAt(row);
}

void NaiveLists::Edit(bool pending) {
    NaiveBox &box = pending ? Pending : Visible();
    for (const NaiveBox::Entry &old : QList<NaiveBox::Entry>(box.Entries)) {
        if (!old.Selected)
            continue;
        const QString answer = AnswerText(RandomBelow(random_, 8) == 0 ? QString() : RandomAddress());
        if (answer.isEmpty())
            return;
        if (box.FindFirst(answer) < 0 && PassesAddressRules(answer))
            Replace(box, old, pending ? old.Text.left(1) + answer : answer);
    }
}

void NaiveLists::Replace(NaiveBox &box, const NaiveBox::Entry &old, const QString &text) {
    const qsizetype row = box.RowOf(old.Id);
    box.Entries.removeAt(row);
    if (&box == &Alphabetical)
        box.Add(text, true);
    else
        box.Insert(row, text, true);
    if (&box == &Pending)
        return;
    if (const qsizetype other = Hidden().FindExact(old.Text); other >= 0) {
        Hidden().Entries.removeAt(other);
        if (AlphabeticalOrder)
            Hidden().Insert(other, text, false);
        else
            Hidden().Add(text);
    }
    Changed();
}

void NaiveLists::Delete(bool pending) {
    NaiveBox &box = pending ? Pending : Visible();
    const QStringList texts = box.SelectedTexts();
    box.DeleteSelected();
    if (pending || texts.isEmpty())
        return;
    Hidden().SelectTexts(texts);
    Hidden().DeleteSelected();
    Changed();
}

void NaiveLists::Search() {
    static const QStringList kTexts = Words("A x.test Ö zz %");
    const QString text = AnswerText(kTexts[RandomBelow(random_, static_cast<int>(kTexts.size()))]);
    for (NaiveBox::Entry &entry : Visible().Entries)
        entry.Selected = entry.Text.toLower().contains(text.toLower());
}

void NaiveLists::ShowOrder(bool alphabetical) {
    if (alphabetical == AlphabeticalOrder)
        return;
    Hidden().SelectTexts(Visible().SelectedTexts());
    Visible().SelectNone();
    AlphabeticalOrder = alphabetical;
}

void NaiveLists::Swap() {
    for (NaiveBox::Entry &entry : Pending.Entries)
        if (entry.Selected)
            entry.Text[0] = entry.Text[0] == u'+' ? u'-' : u'+';
}

void NaiveLists::CurrentToPending(bool move) {
    for (const QString &text : Visible().SelectedTexts())
        Pending.Add(u'+' + text);
    if (move)
        Delete(false);
}

void NaiveLists::PendingToCurrent(bool move) {
    for (const QString &text : Pending.SelectedTexts())
        Visible().Add(text.mid(1));
    if (move)
        Delete(true);
}

void NaiveLists::PromptSave() {
    if (Saved || !AnswerYes())
        return;
    Files[Open] = Chronological.Texts();
    Saved = true;
}

void NaiveLists::Load(const QString &name) {
    PromptSave();
    Saved = true;
    Open = name;
    Chronological.Load(Files[name]);
    Alphabetical.Load(Files[name]);
}

void NaiveLists::Choose(const QString &name) {
    Load(name);
}

void NaiveLists::Save() {
    if (Open.isEmpty())
        return;
    Files[Open] = Chronological.Texts();
    Saved = true;
}

void NaiveLists::New() {
    const QString name = AnswerText(RandomName());
    if (name.isEmpty())
        return;
    Files[name] = {};
    Load(name);
}

void NaiveLists::Rename() {
    if (Open.isEmpty())
        return; // the button is disabled
    PromptSave();
    const QString name = AnswerText(RandomName());
    if (name.isEmpty() || name == Open || Files.contains(name))
        return;
    Files[name] = Files.take(Open);
    Open = name;
    Load(name);
}

void NaiveLists::Remove() {
    if (Open.isEmpty() || !AnswerYes())
        return;
    Files.remove(Open);
    Saved = true;
    if (Files.isEmpty()) {
        Chronological.Entries.clear();
        Open.clear();
        return;
    }
    QStringList names = Files.keys();
    std::sort(names.begin(), names.end(), IsBefore);
    Load(names.first());
}

} // namespace varlo::test

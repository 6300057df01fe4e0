// The lists and what can be done to them, written in the plainest way: what the property test compares with.
#pragma once

#include "support/ScriptedDialogs.h"

#include <QMap>
#include <QStringList>

#include <random>

namespace varlo::test {

// One list box: texts that are selected or not.
class NaiveBox {
public:
    struct Entry {
        QString Text;
        bool Selected = false;
        int Id = 0; // tells equal texts apart
        bool operator==(const Entry &other) const { return Text == other.Text && Selected == other.Selected; }
    };

    explicit NaiveBox(bool sorted) : sorted_(sorted) {}

    void Load(const QStringList &texts);
    void Add(const QString &text, bool selected = false);
    void Insert(qsizetype row, const QString &text, bool selected);
    QStringList Texts() const;
    QStringList SelectedTexts() const;
    qsizetype RowOf(int id) const;
    // The row of the first equal text, letter case aside or not; -1.
    qsizetype FindFirst(const QString &text) const;
    qsizetype FindExact(const QString &text) const;
    void DeleteSelected();
    // Selects, from the top, the texts that stand in `texts`, each as often as it stands there.
    void SelectTexts(QStringList texts);
    void SelectNone();

    void SelectAll();

    QList<Entry> Entries;

private:
    bool sorted_;
    int nextId_ = 0;
};

// Everything that can be asked is answered at random; the answers go to the script of the real dialogs.
class NaiveLists {
public:
    NaiveLists(ScriptedDialogs &dialogs, std::mt19937 &random) : dialogs_(dialogs), random_(random) {}

    NaiveBox &Visible() { return AlphabeticalOrder ? Alphabetical : Chronological; }
    NaiveBox &Hidden() { return AlphabeticalOrder ? Chronological : Alphabetical; }

    void Type(const QString &address, QChar sign);
    void Capture(const QString &text);
    void Process();
    void Edit(bool pending);
    void Delete(bool pending);
    void Search();
    void ShowOrder(bool alphabetical);
    void Swap();
    void CurrentToPending(bool move);
    void PendingToCurrent(bool move);

    void Choose(const QString &name);
    void Save();
    void New();
    void Rename();
    void Remove();

    QString RandomAddress();

    QMap<QString, QStringList> Files;
    QString Open; // the list that is open; empty when none is
    bool Saved = true;
    bool AlphabeticalOrder = true;
    NaiveBox Chronological{false};
    NaiveBox Alphabetical{true};
    NaiveBox Pending{false};
    QStringList Log;

private:
    bool AnswerYes();
    QString AnswerText(const QString &text);
    QString RandomName();
    void PromptSave();
    void Load(const QString &name);
    void Replace(NaiveBox &box, const NaiveBox::Entry &old, const QString &text);
    void Subscribe(const QString &address);
    void Unsubscribe(const QString &address);
    void Changed() { Saved = Open.isEmpty(); }

    ScriptedDialogs &dialogs_;
    std::mt19937 &random_;
};

} // namespace varlo::test

// An open profile with the list store on it, and short words for what the tests of this room say most.
#pragma once

#include "core/Literals.h"
#include "lists/ListEditing.h"
#include "lists/ListStore.h"
#include "support/FakeMailer.h"
#include "support/TestProfile.h"

#include <gtest/gtest.h>

#include <random>

namespace varlo::test {

// "a b c" as three texts.
QStringList Words(const char *text);

// "<prefix>0@x.test", "<prefix>1@x.test", ...
QStringList Addresses(int count, const QString &prefix = u"a"_s);

// A number from 0 to `limit` - 1.
int RandomBelow(std::mt19937 &random, int limit);

// The names of everything in a folder, sorted.
QStringList NamesIn(const QString &folder);

// "53 in Main.cmbMList - File not found": what the error log holds, without the time.
QStringList ErrorsOf(const TestProfile &profile);

// A folder stands where the file was, so that it can neither be read nor written.
void ReplaceByFolder(const QString &path);

// The bytes of a list file with these lines.
QByteArray FileBytes(const QStringList &lines);

// The lists and what works on them, without a window.
struct PlainLists {
    PlainLists(Session &session, FakeMailers &) : lists(session), editing(session, lists) {}
    ListStore &Lists() { return lists; }
    ListEditing &Editing() { return editing; }

    ListStore lists;
    ListEditing editing;
};

// `Owner` holds the lists.
template<typename Owner> class ListsFixtureOf : public testing::Test {
protected:
    // Writes the file of the list `name`.
    void WriteListFile(const QString &name, const QByteArray &bytes) const {
        profile.Write(u"lists/"_s + name + u".vlo"_s, bytes);
    }
    QByteArray ReadListFile(const QString &name) const {
        return profile.Read(u"lists/"_s + name + u".vlo"_s);
    }
    // The names of all files in the lists folder, sorted.
    QStringList ListFolder() const { return NamesIn(session.ProfileFile(u"lists"_s)); }
    // Writes the list file and opens it; what was said meanwhile is forgotten.
    void OpenList(const QString &name, const QStringList &entries) {
        WriteListFile(name, FileBytes(entries));
        ASSERT_TRUE(lists.Open.Load(name));
        ASSERT_EQ(Current(), entries);
        TakeStatus();
    }

    // Puts entries on the Pending list as they stand, without a sign too.
    void AddPending(const QStringList &entries) { lists.Pending.Box().Model().AddAll(entries); }
    QStringList Current() const { return lists.lstEmailList(kChronological).Entries(); }
    QStringList Sorted() const { return lists.lstEmailList(kAlphabetical).Entries(); }
    QStringList Pending() const { return lists.lstEmailList(kPending).Entries(); }

    // What the status bar was told since the last call.
    QStringList TakeStatus() { return std::exchange(profile.StatusTexts, {}); }
    // "53 in Main.cmbMList - File not found": what the error log holds, without the time.
    QStringList Errors() const { return ErrorsOf(profile); }
    // The logs cannot be written any more: a folder stands in the place of the file.
    void BlockLog(const QString &file) const { ReplaceByFolder(session.ProfileFile(u"logs"_s, file)); }

    TestProfile profile;
    Session &session = profile.session;
    FakeMailers mailers;
    Owner owner{session, mailers};
    ListStore &lists = owner.Lists();
    ListEditing &editing = owner.Editing();
};

using ListsFixture = ListsFixtureOf<PlainLists>;

} // namespace varlo::test

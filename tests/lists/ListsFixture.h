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

// The bytes of a list file with these lines.
QByteArray FileBytes(const QStringList &lines);

class ListsFixture : public testing::Test {
protected:
    // Writes the file of the list `name`.
    void WriteListFile(const QString &name, const QByteArray &bytes) const;
    QByteArray ReadListFile(const QString &name) const;
    // The names of all files in the lists folder, sorted.
    QStringList ListFolder() const;
    // Writes the list file and opens it; what was said meanwhile is forgotten.
    void OpenList(const QString &name, const QStringList &entries);

    void AddPending(const QStringList &entries);
    QStringList Current() const { return lists.lstEmailList(kChronological).Entries(); }
    QStringList Sorted() const { return lists.lstEmailList(kAlphabetical).Entries(); }
    QStringList Pending() const { return lists.lstEmailList(kPending).Entries(); }

    // What the status bar was told since the last call.
    QStringList TakeStatus() { return std::exchange(profile.StatusTexts, {}); }
    // "53 in Main.cmbMList - File not found": what the error log holds, without the time.
    QStringList Errors() const;
    // The logs cannot be written any more: a folder stands in the place of the file.
    void BlockLog(const QString &file) const;

    TestProfile profile;
    Session &session = profile.session;
    FakeMailers mailers;
    ListStore lists{session};
    ListEditing editing{session, lists};
};

} // namespace varlo::test

#include "lists/ListLibrary.h"

#include "core/Literals.h"
#include "core/RuntimeError.h"
#include "lists/ListsFixture.h"
#include "support/ErrorOf.h"
#include "support/FullDisk.h"

#include <QDir>
#include <gtest/gtest.h>

namespace varlo {
namespace {

using test::Words;

class ListLibraryTest : public test::ListsFixture {
protected:
    QStringList ReadBytes(const QByteArray &bytes) {
        WriteListFile(u"news"_s, bytes);
        return ListLibrary::Read(session, u"news"_s);
    }
};

TEST_F(ListLibraryTest, LiesInTheListsFolderOfTheProfile) {
    EXPECT_EQ(ListLibrary::Path(session, u"my news"_s), profile.Path(u"lists/my news.vlo"_s));
}

TEST_F(ListLibraryTest, NamesAreSortedWithoutRegardToCaseAndShowNoExtension) {
    for (const char *name : {"beta", "Alpha", "gamma", "Über uns", "<b>bold & more", "two  blanks ", "a.vlo"})
        WriteListFile(QString::fromUtf8(name), {});
    EXPECT_EQ(ListLibrary::Names(session),
              (QStringList{u"<b>bold & more"_s, u"a.vlo"_s, u"Alpha"_s, u"beta"_s, u"gamma"_s,
                           u"two  blanks "_s, u"Über uns"_s}));
}

// A list is remembered by its position.
TEST_F(ListLibraryTest, NamesThatDifferInCaseOrBeginAlikeHaveOneOrder) {
    for (const char *name : {"news", "NEWS", "News", "news-old", "news 2", "neWs"})
        WriteListFile(QString::fromLatin1(name), {});
    EXPECT_EQ(ListLibrary::Names(session),
              (QStringList{u"NEWS"_s, u"News"_s, u"neWs"_s, u"news"_s, u"news 2"_s, u"news-old"_s}));
}

TEST_F(ListLibraryTest, OnlyListFilesAreNamed) {
    for (const char *file :
         {"lists/news.vlo", "lists/news.vlo.bak", "lists/news.txt", "lists/vlo", "lists/.later.vlo"})
        profile.Write(QString::fromLatin1(file), {});
    ASSERT_TRUE(QDir(profile.Path(u"lists"_s)).mkdir(u"folder.vlo"_s));
    EXPECT_EQ(ListLibrary::Names(session), Words(".later news"));
}

// A list that could be seen and not be opened would be worse than one that is not seen.
TEST_F(ListLibraryTest, EveryNameThatIsShownCanBeRead) {
    profile.Write(u"lists/OTHER.VLO"_s, "a@x.test\r\n");
    WriteListFile(u"news"_s, {});
    EXPECT_TRUE(ListLibrary::Names(session).contains(u"news"_s));
    for (const QString &name : ListLibrary::Names(session))
        EXPECT_EQ(test::ErrorOf([&] { ListLibrary::Read(session, name); }), 0);
}

TEST_F(ListLibraryTest, AnEmptyOrMissingFolderHasNoNames) {
    EXPECT_EQ(ListLibrary::Names(session), QStringList());
    ASSERT_TRUE(QDir(profile.Path(u"lists"_s)).removeRecursively());
    EXPECT_EQ(ListLibrary::Names(session), QStringList());
}

TEST_F(ListLibraryTest, AnEmptyFileHasNoEntries) {
    EXPECT_EQ(ReadBytes(""), QStringList());
}

TEST_F(ListLibraryTest, ALineEndAtTheVeryEndIsNoEntryOfItsOwn) {
    EXPECT_EQ(ReadBytes("a@x.test\r\nb@x.test\r\n"), Words("a@x.test b@x.test"));
}

TEST_F(ListLibraryTest, ALastLineWithoutAnEndCounts) {
    EXPECT_EQ(ReadBytes("a@x.test\r\nb@x.test"), Words("a@x.test b@x.test"));
}

TEST_F(ListLibraryTest, LoneLineFeedsEndLines) {
    EXPECT_EQ(ReadBytes("a@x.test\nb@x.test\n"), Words("a@x.test b@x.test"));
}

TEST_F(ListLibraryTest, EmptyLinesAreEmptyEntries) {
    EXPECT_EQ(ReadBytes("\r\na@x.test\r\n\r\n\r\n"),
              (QStringList{QString(), u"a@x.test"_s, QString(), QString()}));
}

TEST_F(ListLibraryTest, LinesAreTakenAsTheyStand) {
    EXPECT_EQ(ReadBytes(" a@x.test \r\nnot an address\r\na\tb\r\na@x.test\r\na@x.test\r\n"),
              (QStringList{u" a@x.test "_s, u"not an address"_s, u"a\tb"_s, u"a@x.test"_s, u"a@x.test"_s}));
}

TEST_F(ListLibraryTest, AByteOrderMarkIsNoPartOfTheFirstEntry) {
    EXPECT_EQ(ReadBytes("\xEF\xBB\xBF"
                        "a@x.test\r\n"),
              Words("a@x.test"));
    EXPECT_EQ(ReadBytes("\xEF\xBB\xBF"), QStringList());
}

TEST_F(ListLibraryTest, WhatIsNotUtf8IsWindows1252) {
    EXPECT_EQ(ReadBytes("j\xF6rg@x.test\r\n\x80uro@x.test\r\n"),
              (QStringList{u"jörg@x.test"_s, u"€uro@x.test"_s}));
}

TEST_F(ListLibraryTest, AMissingFileIsReported) {
    EXPECT_EQ(test::ErrorOf([&] { ListLibrary::Read(session, u"news"_s); }), FileNotFound);
    ASSERT_TRUE(QDir(profile.Path(u"lists"_s)).removeRecursively());
    EXPECT_EQ(test::ErrorOf([&] { ListLibrary::Read(session, u"news"_s); }), PathNotFound);
}

TEST_F(ListLibraryTest, WritesOneLineAnEntry) {
    ListLibrary::Write(session, u"Über uns"_s, {u"a@x.test"_s, QString(), u"jörg@x.test"_s});
    EXPECT_EQ(ReadListFile(u"Über uns"_s), QByteArray("a@x.test\r\n\r\nj\xC3\xB6rg@x.test\r\n"));
}

TEST_F(ListLibraryTest, WritesAnEmptyListAsAnEmptyFile) {
    WriteListFile(u"news"_s, "a@x.test\r\n");
    ListLibrary::Write(session, u"news"_s, {});
    EXPECT_EQ(ReadListFile(u"news"_s), QByteArray());
}

TEST_F(ListLibraryTest, ReadsBackWhatItWrote) {
    const QStringList entries{QString(), u"a\rb"_s, u" "_s, u"日本@x.test"_s, QString(), QString()};
    ListLibrary::Write(session, u"news"_s, entries);
    EXPECT_EQ(ListLibrary::Read(session, u"news"_s), entries);
}

TEST_F(ListLibraryTest, AWriteThatFailsAtEveryByteLeavesTheOldFile) {
    const QByteArray old = "old@x.test\r\n";
    WriteListFile(u"news"_s, old);
    const QStringList entries = test::Addresses(5);
    const auto size = static_cast<rlim_t>(test::FileBytes(entries).size());
    for (rlim_t bytes = 0; bytes < size; ++bytes) {
        int error = 0;
        {
            const test::FullDisk disk(bytes);
            error = test::ErrorOf([&] { ListLibrary::Write(session, u"news"_s, entries); });
        }
        ASSERT_EQ(error, DiskFull) << "after " << bytes << " bytes";
        ASSERT_EQ(ReadListFile(u"news"_s), old) << "after " << bytes << " bytes";
        ASSERT_EQ(ListFolder(), Words("news.vlo")) << "after " << bytes << " bytes";
    }
    const test::FullDisk disk(size);
    EXPECT_EQ(test::ErrorOf([&] { ListLibrary::Write(session, u"news"_s, entries); }), 0);
}

TEST_F(ListLibraryTest, AWriteIntoAMissingFolderIsReported) {
    ASSERT_TRUE(QDir(profile.Path(u"lists"_s)).removeRecursively());
    EXPECT_EQ(test::ErrorOf([&] { ListLibrary::Write(session, u"news"_s, {}); }), PathNotFound);
}

TEST_F(ListLibraryTest, BackupsAreNumberedAndNeverReplaced) {
    const QString news = u"news"_s;
    EXPECT_EQ(ListLibrary::KeepBackup(session, news), QString());
    for (const char *text : {"one\r\n", "two\r\n", "three\r\n"}) {
        WriteListFile(news, text);
        ListLibrary::KeepBackup(session, news);
    }
    EXPECT_EQ(ListFolder(), Words("news.vlo news.vlo.bak news.vlo.bak2 news.vlo.bak3"));
    EXPECT_EQ(profile.Read(u"lists/news.vlo.bak"_s), QByteArray("one\r\n"));
    EXPECT_EQ(profile.Read(u"lists/news.vlo.bak2"_s), QByteArray("two\r\n"));
    EXPECT_EQ(profile.Read(u"lists/news.vlo.bak3"_s), QByteArray("three\r\n"));
    EXPECT_EQ(ReadListFile(news), QByteArray("three\r\n"));
}

TEST_F(ListLibraryTest, EnsureListFileCreatesAFileAndLeavesOneAlone) {
    const QString path = ListLibrary::Path(session, u"news"_s);
    ListLibrary::EnsureListFile(path);
    EXPECT_EQ(ReadListFile(u"news"_s), QByteArray());
    WriteListFile(u"news"_s, "a@x.test\r\n");
    ListLibrary::EnsureListFile(path);
    EXPECT_EQ(ReadListFile(u"news"_s), QByteArray("a@x.test\r\n"));
}

} // namespace
} // namespace varlo

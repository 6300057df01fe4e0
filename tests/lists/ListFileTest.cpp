#include "lists/ListFile.h"

#include "core/RuntimeError.h"
#include "lists/ListsFixture.h"
#include "support/FullDisk.h"

#include <QDir>
#include <gtest/gtest.h>

namespace varlo {
namespace {

using test::Words;

class ListFileTest : public test::ListsFixture {
protected:
    QStringList ReadBytes(const QByteArray &bytes) {
        WriteListFile(QStringLiteral("news"), bytes);
        return ListFile::Read(session, QStringLiteral("news"));
    }

    template<typename Action> int ErrorOf(Action action) {
        try {
            action();
        } catch (const RuntimeError &error) {
            return error.Number();
        }
        return 0;
    }
};

TEST_F(ListFileTest, LiesInTheListsFolderOfTheProfile) {
    EXPECT_EQ(ListFile::Path(session, QStringLiteral("my news")),
              profile.Path(QStringLiteral("lists/my news.vlo")));
}

TEST_F(ListFileTest, NamesAreSortedWithoutRegardToCaseAndShowNoExtension) {
    for (const char *name : {"beta", "Alpha", "gamma", "Über uns", "<b>bold & more", "two  blanks ", "a.vlo"})
        WriteListFile(QString::fromUtf8(name), {});
    EXPECT_EQ(ListFile::Names(session),
              (QStringList{QStringLiteral("<b>bold & more"), QStringLiteral("a.vlo"), QStringLiteral("Alpha"),
                           QStringLiteral("beta"), QStringLiteral("gamma"), QStringLiteral("two  blanks "),
                           QStringLiteral("Über uns")}));
}

// A list is remembered by its position.
TEST_F(ListFileTest, NamesThatDifferInCaseOrBeginAlikeHaveOneOrder) {
    for (const char *name : {"news", "NEWS", "News", "news-old", "news 2", "neWs"})
        WriteListFile(QString::fromLatin1(name), {});
    EXPECT_EQ(ListFile::Names(session),
              (QStringList{QStringLiteral("NEWS"), QStringLiteral("News"), QStringLiteral("neWs"),
                           QStringLiteral("news"), QStringLiteral("news 2"), QStringLiteral("news-old")}));
}

TEST_F(ListFileTest, OnlyListFilesAreNamed) {
    for (const char *file :
         {"lists/news.vlo", "lists/news.vlo.bak", "lists/news.txt", "lists/vlo", "lists/.later.vlo"})
        profile.Write(QString::fromLatin1(file), {});
    ASSERT_TRUE(QDir(profile.Path(QStringLiteral("lists"))).mkdir(QStringLiteral("folder.vlo")));
    EXPECT_EQ(ListFile::Names(session), Words(".later news"));
}

// A list that could be seen and not be opened would be worse than one that is not seen.
TEST_F(ListFileTest, EveryNameThatIsShownCanBeRead) {
    profile.Write(QStringLiteral("lists/OTHER.VLO"), "a@x.test\r\n");
    WriteListFile(QStringLiteral("news"), {});
    EXPECT_TRUE(ListFile::Names(session).contains(QStringLiteral("news")));
    for (const QString &name : ListFile::Names(session))
        EXPECT_EQ(ErrorOf([&] { ListFile::Read(session, name); }), 0);
}

TEST_F(ListFileTest, AnEmptyOrMissingFolderHasNoNames) {
    EXPECT_EQ(ListFile::Names(session), QStringList());
    ASSERT_TRUE(QDir(profile.Path(QStringLiteral("lists"))).removeRecursively());
    EXPECT_EQ(ListFile::Names(session), QStringList());
}

TEST_F(ListFileTest, AnEmptyFileHasNoEntries) {
    EXPECT_EQ(ReadBytes(""), QStringList());
}

TEST_F(ListFileTest, ALineEndAtTheVeryEndIsNoEntryOfItsOwn) {
    EXPECT_EQ(ReadBytes("a@x.test\r\nb@x.test\r\n"), Words("a@x.test b@x.test"));
}

TEST_F(ListFileTest, ALastLineWithoutAnEndCounts) {
    EXPECT_EQ(ReadBytes("a@x.test\r\nb@x.test"), Words("a@x.test b@x.test"));
}

TEST_F(ListFileTest, LoneLineFeedsEndLines) {
    EXPECT_EQ(ReadBytes("a@x.test\nb@x.test\n"), Words("a@x.test b@x.test"));
}

TEST_F(ListFileTest, EmptyLinesAreEmptyEntries) {
    EXPECT_EQ(ReadBytes("\r\na@x.test\r\n\r\n\r\n"),
              (QStringList{QString(), QStringLiteral("a@x.test"), QString(), QString()}));
}

TEST_F(ListFileTest, LinesAreTakenAsTheyStand) {
    EXPECT_EQ(ReadBytes(" a@x.test \r\nnot an address\r\na\tb\r\na@x.test\r\na@x.test\r\n"),
              (QStringList{QStringLiteral(" a@x.test "), QStringLiteral("not an address"),
                           QStringLiteral("a\tb"), QStringLiteral("a@x.test"), QStringLiteral("a@x.test")}));
}

TEST_F(ListFileTest, AByteOrderMarkIsNoPartOfTheFirstEntry) {
    EXPECT_EQ(ReadBytes("\xEF\xBB\xBF"
                        "a@x.test\r\n"),
              Words("a@x.test"));
    EXPECT_EQ(ReadBytes("\xEF\xBB\xBF"), QStringList());
}

TEST_F(ListFileTest, WhatIsNotUtf8IsWindows1252) {
    EXPECT_EQ(ReadBytes("j\xF6rg@x.test\r\n\x80uro@x.test\r\n"),
              (QStringList{QStringLiteral("jörg@x.test"), QStringLiteral("€uro@x.test")}));
}

TEST_F(ListFileTest, AMissingFileIsReported) {
    EXPECT_EQ(ErrorOf([&] { ListFile::Read(session, QStringLiteral("news")); }), FileNotFound);
    ASSERT_TRUE(QDir(profile.Path(QStringLiteral("lists"))).removeRecursively());
    EXPECT_EQ(ErrorOf([&] { ListFile::Read(session, QStringLiteral("news")); }), PathNotFound);
}

TEST_F(ListFileTest, WritesOneLineAnEntry) {
    ListFile::Write(session, QStringLiteral("Über uns"),
                    {QStringLiteral("a@x.test"), QString(), QStringLiteral("jörg@x.test")});
    EXPECT_EQ(ReadListFile(QStringLiteral("Über uns")), QByteArray("a@x.test\r\n\r\nj\xC3\xB6rg@x.test\r\n"));
}

TEST_F(ListFileTest, WritesAnEmptyListAsAnEmptyFile) {
    WriteListFile(QStringLiteral("news"), "a@x.test\r\n");
    ListFile::Write(session, QStringLiteral("news"), {});
    EXPECT_EQ(ReadListFile(QStringLiteral("news")), QByteArray());
}

TEST_F(ListFileTest, ReadsBackWhatItWrote) {
    const QStringList entries{QString(),           QStringLiteral("a\rb"),
                              QStringLiteral(" "), QStringLiteral("日本@x.test"),
                              QString(),           QString()};
    ListFile::Write(session, QStringLiteral("news"), entries);
    EXPECT_EQ(ListFile::Read(session, QStringLiteral("news")), entries);
}

TEST_F(ListFileTest, AWriteThatFailsAtEveryByteLeavesTheOldFile) {
    const QByteArray old = "old@x.test\r\n";
    WriteListFile(QStringLiteral("news"), old);
    const QStringList entries = test::Addresses(5);
    const auto size = static_cast<rlim_t>(test::FileBytes(entries).size());
    for (rlim_t bytes = 0; bytes < size; ++bytes) {
        int error = 0;
        {
            const test::FullDisk disk(bytes);
            error = ErrorOf([&] { ListFile::Write(session, QStringLiteral("news"), entries); });
        }
        ASSERT_EQ(error, DiskFull) << "after " << bytes << " bytes";
        ASSERT_EQ(ReadListFile(QStringLiteral("news")), old) << "after " << bytes << " bytes";
        ASSERT_EQ(ListFolder(), Words("news.vlo")) << "after " << bytes << " bytes";
    }
    const test::FullDisk disk(size);
    EXPECT_EQ(ErrorOf([&] { ListFile::Write(session, QStringLiteral("news"), entries); }), 0);
}

TEST_F(ListFileTest, AWriteIntoAMissingFolderIsReported) {
    ASSERT_TRUE(QDir(profile.Path(QStringLiteral("lists"))).removeRecursively());
    EXPECT_EQ(ErrorOf([&] { ListFile::Write(session, QStringLiteral("news"), {}); }), PathNotFound);
}

TEST_F(ListFileTest, BackupsAreNumberedAndNeverReplaced) {
    const QString news = QStringLiteral("news");
    EXPECT_EQ(ListFile::KeepBackup(session, news), QString());
    for (const char *text : {"one\r\n", "two\r\n", "three\r\n"}) {
        WriteListFile(news, text);
        ListFile::KeepBackup(session, news);
    }
    EXPECT_EQ(ListFolder(), Words("news.vlo news.vlo.bak news.vlo.bak2 news.vlo.bak3"));
    EXPECT_EQ(profile.Read(QStringLiteral("lists/news.vlo.bak")), QByteArray("one\r\n"));
    EXPECT_EQ(profile.Read(QStringLiteral("lists/news.vlo.bak2")), QByteArray("two\r\n"));
    EXPECT_EQ(profile.Read(QStringLiteral("lists/news.vlo.bak3")), QByteArray("three\r\n"));
    EXPECT_EQ(ReadListFile(news), QByteArray("three\r\n"));
}

TEST_F(ListFileTest, EnsureListFileCreatesAFileAndLeavesOneAlone) {
    const QString path = ListFile::Path(session, QStringLiteral("news"));
    ListFile::EnsureListFile(path);
    EXPECT_EQ(ReadListFile(QStringLiteral("news")), QByteArray());
    WriteListFile(QStringLiteral("news"), "a@x.test\r\n");
    ListFile::EnsureListFile(path);
    EXPECT_EQ(ReadListFile(QStringLiteral("news")), QByteArray("a@x.test\r\n"));
}

} // namespace
} // namespace varlo

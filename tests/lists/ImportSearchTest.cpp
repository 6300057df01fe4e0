#include "lists/ImportSearch.h"

#include "core/Literals.h"
#include "support/Printers.h"
#include "support/TestProfile.h"

#include <QDir>
#include <gtest/gtest.h>

namespace varlo::test {
namespace {

// "anna@x.org in b.csv, line 2, x3" for each item.
QStringList Words(const ImportSearch &search) {
    QStringList words;
    for (const ImportItem &item : search.Items())
        words << u"%1 in [%2], line %3, x%4"_s.arg(item.Address, item.Source).arg(item.Line).arg(item.Times);
    return words;
}

void Finish(ImportSearch &search) {
    while (!search.Step(100)) {
    }
    EXPECT_TRUE(search.IsDone());
    EXPECT_EQ(search.Percent(), 100);
}

struct ImportSearchTest : testing::Test {
    void MakeFolders(std::initializer_list<QString> names) const {
        for (const QString &name : names)
            ASSERT_TRUE(QDir().mkpath(profile.Path(name)));
    }

    TestProfile profile;
    ImportSearch search;
};

TEST_F(ImportSearchTest, NothingIsDoneAtOnce) {
    EXPECT_TRUE(search.Step(10));
    Finish(search);
    EXPECT_EQ(Words(search), QStringList());
}

TEST_F(ImportSearchTest, TheSameAddressOfSeveralSourcesCountsOnce) {
    search.SetText(u"bo@x.org, anna@x.org"_s);
    search.AddSource(u"a"_s, u"see anna@x.org\nand anna@x.org"_s);
    search.AddSource(u"b"_s, u"ANNA@x.org"_s);
    Finish(search);
    EXPECT_EQ(Words(search),
              (QStringList{u"anna@x.org in [a], line 1, x4"_s, u"bo@x.org in [], line 1, x1"_s}));
    EXPECT_EQ(search.SourceNames(), (QStringList{u"a"_s, u"b"_s}));
}

TEST_F(ImportSearchTest, ASourceThatIsLeftOutTakesItsAddressesAlong) {
    search.SetText(u"bo@x.org"_s);
    search.AddSource(u"a"_s, u"anna@x.org"_s);
    search.RemoveSource(u"a"_s);
    search.RemoveSource(QString());
    Finish(search);
    EXPECT_EQ(Words(search), QStringList{u"bo@x.org in [], line 1, x1"_s});
}

TEST_F(ImportSearchTest, ReadsFilesOfEveryFormAndThoseOfAFolder) {
    MakeFolders({u"in/deeper"_s});
    profile.Write(u"in/a.csv"_s, "Name;E-mail\r\nAnna;anna@x.org\r\n");
    profile.Write(u"in/b.vcf"_s, "BEGIN:VCARD\r\nEMAIL:bo@x.org\r\nEND:VCARD\r\n");
    profile.Write(u"in/deeper/c.txt"_s, "cy@x.org");
    profile.Write(u"d.vlo"_s, "dan@x.org\r\n");
    EXPECT_EQ(search.AddFiles({profile.Path(u"in"_s), profile.Path(u"d.vlo"_s)}), QString());
    Finish(search);
    EXPECT_EQ(Words(search),
              (QStringList{u"anna@x.org in [a.csv], line 2, x1"_s, u"bo@x.org in [b.vcf], line 2, x1"_s,
                           u"dan@x.org in [d.vlo], line 1, x1"_s}));
}

TEST_F(ImportSearchTest, AFileThatIsGivenAgainIsReadAnewAndAnotherOfItsNameStaysApart) {
    MakeFolders({u"a"_s, u"b"_s});
    profile.Write(u"a/x.txt"_s, "anna@x.org");
    profile.Write(u"b/x.txt"_s, "bo@x.org");
    search.AddFiles({profile.Path(u"a/x.txt"_s), profile.Path(u"b/x.txt"_s)});
    profile.Write(u"a/x.txt"_s, "cy@x.org");
    search.AddFiles({profile.Path(u"a/x.txt"_s)});
    Finish(search);
    EXPECT_EQ(Words(search),
              (QStringList{u"bo@x.org in [x.txt (2)], line 1, x1"_s, u"cy@x.org in [x.txt], line 1, x1"_s}));
}

TEST_F(ImportSearchTest, TellsWhatCannotBeReadAndReadsTheRest) {
    profile.Write(u"a.xlsx"_s, "PK\x03\x04 anna@x.org");
    profile.Write(u"b.txt"_s, "bo@x.org");
    const QStringList paths{profile.Path(u"a.xlsx"_s), profile.Path(u"gone.txt"_s), profile.Path(u"b.txt"_s)};
    EXPECT_EQ(search.AddFiles(paths), u"[a.xlsx] is not text. Save it as CSV or text first. "
                                      "[gone.txt] could not be read: File not found."_s);
    Finish(search);
    EXPECT_EQ(Words(search), QStringList{u"bo@x.org in [b.txt], line 1, x1"_s});
}

TEST_F(ImportSearchTest, AFileTooLargeForTheMemoryIsRefused) {
    QFile large(profile.Path(u"large.txt"_s));
    ASSERT_TRUE(large.open(QIODevice::WriteOnly) && large.resize(qint64(256) * 1024 * 1024 + 1));
    EXPECT_EQ(search.AddFiles({large.fileName()}), u"[large.txt] is larger than 256 MB."_s);
}

TEST_F(ImportSearchTest, TellsHowFarItIs) {
    search.SetText(u"user@example.org "_s.repeated(20000) + u'\n');
    search.AddSource(u"a"_s, u"user@example.org\n"_s.repeated(20000));
    int last = 0;
    while (!search.Step(0)) {
        EXPECT_GE(search.Percent(), last);
        last = search.Percent();
        EXPECT_FALSE(search.IsDone());
    }
    EXPECT_GT(last, 0);
}

} // namespace
} // namespace varlo::test

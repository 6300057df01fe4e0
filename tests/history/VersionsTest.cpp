#include "core/RuntimeError.h"
#include "history/HistoryFixture.h"
#include "support/ErrorOf.h"

namespace varlo::test {
namespace {

class VersionsTest : public HistoryFixture {
protected:
    QStringList Stems() const {
        QStringList stems;
        for (const History::Version &version : Versions())
            stems.append(version.Row.Stem);
        return stems;
    }
};

TEST_F(VersionsTest, AListWithoutAHistoryHasNone) {
    EXPECT_TRUE(Versions().isEmpty());
}

TEST_F(VersionsTest, AFileWithoutALineStandsWhereItsTimeSays) {
    Put("2026-03-01 120000.vlo", "a@x.test\r\n");
    Put("2026-03-02 120000.vlo", "b@x.test\r\n");
    Put("2026-03-03 120000.vlo", "c@x.test\r\n");
    Put("index.csv", "2026-03-01 120000,Save,1,1,1\r\n2026-03-03 120000,\"Edit\",1,2,3\r\n");
    EXPECT_EQ(Stems(), (QStringList{u"2026-03-01 120000"_s, u"2026-03-02 120000"_s, u"2026-03-03 120000"_s}));
    EXPECT_EQ(Versions()[1].Row.Entries, -1);
    EXPECT_EQ(Versions()[2].Row, (History::IndexRow{u"2026-03-03 120000"_s, u"Edit"_s, 1, 2, 3}));
    EXPECT_EQ(Versions()[2].Until, QDateTime(QDate(2026, 3, 3), QTime(12, 0)));
}

TEST_F(VersionsTest, TheOrderIsThatOfTheSavesWhateverTheClockSaid) {
    Put("2026-03-05 120000.vlo", "a@x.test\r\n");
    Put("2026-03-02 120000.vlo", "b@x.test\r\n");
    Put("index.csv", "2026-03-05 120000,Save,1,1,1\r\n2026-03-02 120000,Save,1,1,1\r\n");
    EXPECT_EQ(Kept(), Words("a@x.test b@x.test"));
}

TEST_F(VersionsTest, KnowsWhatStoodInBetween) {
    Put("2026-03-01 120000.vlo", "a@x.test\r\n");
    Put("2026-03-04 120000.vlo", "b@x.test\r\n");
    Put("index.csv", "2026-03-01 120000,Save,1,1,1\r\n2026-03-02 120000,Save,1,1,1\r\n"
                     "2026-03-03 120000,Save,1,1,1\r\n2026-03-04 120000,Save,1,1,1\r\n");
    ASSERT_EQ(Versions().size(), 2);
    EXPECT_EQ(Versions()[0].Next, QDateTime(QDate(2026, 3, 3), QTime(12, 0)));
    EXPECT_EQ(Versions()[1].Next, Versions()[1].Until);
}

TEST_F(VersionsTest, ACompressedVersionReadsAsItWas) {
    const QByteArray bytes = QByteArray("anna@x.test\r\n").repeated(1000);
    Put("2026-03-01 120000.vlo", bytes);
    History::Compress(profile.Path(u"history/news/2026-03-01 120000.vlo"_s));
    EXPECT_EQ(HistoryFiles(), QStringList(u"2026-03-01 120000.vlo.z"_s));
    ASSERT_EQ(Versions().size(), 1);
    EXPECT_EQ(History::ReadVersionBytes(Versions()[0].Path), bytes);
    EXPECT_EQ(History::ReadVersion(Versions()[0]).size(), 1000);
    EXPECT_LT(QFileInfo(Versions()[0].Path).size(), 1000);
}

TEST_F(VersionsTest, AnEmptyVersionCanBeCompressed) {
    Put("2026-03-01 120000.vlo", "");
    History::Compress(profile.Path(u"history/news/2026-03-01 120000.vlo"_s));
    EXPECT_EQ(History::ReadVersion(Versions()[0]), QStringList());
}

// A kill between the two steps of Compress.
TEST_F(VersionsTest, OfAVersionThatIsThereTwiceTheFirstFileCounts) {
    Put("2026-03-01 120000.vlo", "a@x.test\r\n");
    Put("2026-03-01 120000.vlo.z", qCompress("a@x.test\r\n"));
    ASSERT_EQ(Versions().size(), 1);
    EXPECT_TRUE(Versions()[0].Path.endsWith(u".vlo"_s));
}

TEST_F(VersionsTest, ADamagedVersionIsAnError) {
    for (const QByteArray &bytes :
         {QByteArray(), QByteArray("xy"), QByteArray("\0\0\0\5hello", 9),
          QByteArray("\xFF\xFF\xFF\xFF....", 8), qCompress("a@x.test\r\n").chopped(4)}) {
        Put("2026-03-01 120000.vlo.z", bytes);
        EXPECT_EQ(ErrorOf([&] { History::ReadVersion(Versions()[0]); }), DeviceIoError)
            << bytes.toHex().data();
    }
}

TEST_F(VersionsTest, OtherFilesAreNone) {
    for (const char *file :
         {"notes.txt", "2026-13-01 120000.vlo", "2026-03-01.vlo", "2026-03-01 120000.vlo.Ab1234"})
        Put(file, "x");
    EXPECT_TRUE(Versions().isEmpty());
}

} // namespace
} // namespace varlo::test

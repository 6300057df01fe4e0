#include "history/HistoryIndex.h"

#include "core/RuntimeError.h"
#include "history/HistoryFixture.h"
#include "support/ErrorOf.h"

namespace varlo::test {
namespace {

using History::IndexRow;

class HistoryIndexTest : public HistoryFixture {
protected:
    HistoryIndexTest() { QDir().mkpath(Folder()); }
    QString Folder() const { return profile.Path(u"history/news"_s); }
};

TEST_F(HistoryIndexTest, LinesComeBackInTheirOrder) {
    const QList<IndexRow> rows{{u"2026-03-04 050607"_s, u"Edit (2), Delete \"x\", so"_s, 3, 0, 1},
                               {u"2026-03-04 050607-2"_s, u"Jörg's"_s, 32767, 12, 5}};
    for (const IndexRow &row : rows)
        History::AppendToIndex(Folder(), row);
    EXPECT_EQ(History::ReadIndex(Folder()), rows);
    EXPECT_EQ(profile.Read(u"history/news/index.csv"_s),
              QByteArray("Version,Cause,Entries,Added,Removed\r\n"
                         "2026-03-04 050607,\"Edit (2), Delete \"\"x\"\", so\",3,0,1\r\n"
                         "2026-03-04 050607-2,\"Jörg's\",32767,12,5\r\n"));
}

TEST_F(HistoryIndexTest, LineBreaksInACauseDoNotMakeALine) {
    History::AppendToIndex(Folder(), {u"2026-03-04 050607"_s, u"a\r\nb"_s, 1, 1, 1});
    EXPECT_EQ(History::ReadIndex(Folder()).value(0).Cause, u"a  b"_s);
}

TEST_F(HistoryIndexTest, LinesThatCannotBeReadArePassedOver) {
    profile.Write(u"history/news/index.csv"_s,
                  "Version,Cause,Entries,Added,Removed\r\n\r\nhalf,\"a\r\n1,2,three,4,5\r\n"
                  "2026-03-04 050607,Save,1,2,3\r\n2026-03-04 05,\"unfin");
    EXPECT_EQ(History::ReadIndex(Folder()), (QList<IndexRow>{{u"2026-03-04 050607"_s, u"Save"_s, 1, 2, 3}}));
}

TEST_F(HistoryIndexTest, WithoutAFileThereAreNoLines) {
    EXPECT_EQ(History::ReadIndex(Folder()), QList<IndexRow>());
}

TEST_F(HistoryIndexTest, AFileThatCannotBeReadIsAnError) {
    QDir().mkpath(Folder() + u"/index.csv"_s);
    EXPECT_NE(ErrorOf([&] { History::ReadIndex(Folder()); }), 0);
}

} // namespace
} // namespace varlo::test

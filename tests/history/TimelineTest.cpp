#include "history/Timeline.h"

#include "history/HistoryFixture.h"

namespace varlo::test {
namespace {

using Kind = History::TimelineRow::Kind;

class TimelineTest : public HistoryFixture {
protected:
    TimelineTest() { WriteList(Words("a@x.test")); }
    QList<History::TimelineRow> Rows(const QString &name = u"news"_s) const {
        return History::TimelineOf(session, name);
    }
    QStringList Contents() const {
        QStringList contents;
        for (const History::TimelineRow &row : Rows())
            contents.append(History::ReadRow(row).join(u' '));
        return contents;
    }
    QString Time() const { return History::TimeText(profile.Clock); }
};

TEST_F(TimelineTest, HasVersionsTheFileAndWhatElseIsKept) {
    Save(Words("a@x.test b@x.test"), u"Edit"_s);
    profile.Write(u"lists/news.vlo.bak"_s, "long@x.test\r\n");
    profile.Write(u"lists/news.vlo.unsaved"_s, "un@x.test\r\n");
    profile.Write(u"lists/newspaper.vlo.bak"_s, "another list\r\n");
    EXPECT_EQ(Contents(),
              (QStringList{u"long@x.test"_s, u"a@x.test"_s, u"a@x.test b@x.test"_s, u"un@x.test"_s}));
    const auto rows = Rows();
    EXPECT_EQ(rows[0].What, Kind::Backup);
    EXPECT_EQ(rows[1].What, Kind::Version);
    EXPECT_EQ(rows[1].Until, profile.Clock);
    EXPECT_EQ((QList<int>{rows[1].Entries, rows[1].Added, rows[1].Removed}), (QList<int>{1, 1, 0}));
    EXPECT_EQ(rows[1].Cause, u"Edit"_s);
    EXPECT_EQ(rows[2].What, Kind::Now);
    EXPECT_EQ(rows[3].What, Kind::Unsaved);
}

TEST_F(TimelineTest, AListThatNeverWasHasNothing) {
    EXPECT_TRUE(Rows(u"nobody"_s).isEmpty());
}

TEST_F(TimelineTest, TellsWhenAnAddressJoinedAndLeft) {
    Save(Words("a@x.test b@x.test"), u"Process Pending List"_s);
    const QString joined = Time();
    Wait(3600);
    Save(Words("a@x.test"), u"Delete 1 Address"_s);
    EXPECT_EQ(History::TrailTexts(u"B@x.test"_s, Rows()),
              (QStringList{u"Joined on "_s + joined + u" - Process Pending List"_s,
                           u"Left on "_s + Time() + u" - Delete 1 Address"_s, u"Not on the list now."_s}));
    EXPECT_EQ(
        History::TrailTexts(u"a@x.test"_s, Rows()),
        (QStringList{u"In the oldest version, which was replaced on "_s + joined, u"On the list now."_s}));
    EXPECT_EQ(History::TrailTexts(u"c@x.test"_s, Rows()),
              QStringList(u"[c@x.test] is in no version of this list."_s));
}

TEST_F(TimelineTest, WithoutVersionsTheListItselfIsLookedAt) {
    EXPECT_EQ(History::TrailTexts(u"a@x.test"_s, Rows()),
              (QStringList{u"On the list; no earlier version is kept"_s, u"On the list now."_s}));
}

TEST_F(TimelineTest, ADeletedListSaysSo) {
    Save(Words("a@x.test b@x.test"));
    History::ReplaceKeeping(session, u"news"_s, u"Delete List"_s, {},
                            [&] { DeleteFile(profile.Path(u"lists/news.vlo"_s)); });
    EXPECT_EQ(History::TrailTexts(u"b@x.test"_s, Rows()),
              (QStringList{u"Joined on "_s + Time() + u" - Save"_s, u"The list was deleted."_s}));
}

TEST_F(TimelineTest, ATimeIsToldWithItsSeconds) {
    EXPECT_TRUE(Time().contains(u"07"_s)) << Time().toStdString();
}

} // namespace
} // namespace varlo::test

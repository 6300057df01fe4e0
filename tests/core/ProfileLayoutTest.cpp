#include "core/ProfileLayout.h"

#include "support/TestProfile.h"

#include <gtest/gtest.h>

namespace varlo::test {
namespace {

TEST(ProfileLayoutTest, EveryNameLiesInTheOpenProfile) {
    const TestProfile profile;
    const Session &session = profile.session;
    EXPECT_EQ(ProfileLayout::Settings(session), profile.Path(u"prefs.ini"_s));
    EXPECT_EQ(ProfileLayout::Draft(session), profile.Path(u"draft.txt"_s));
    EXPECT_EQ(ProfileLayout::Unsent(session), profile.Path(u"unsent.ini"_s));
    EXPECT_EQ(ProfileLayout::ListsFolder(session), profile.Path(u"lists"_s));
    EXPECT_EQ(ProfileLayout::ListFile(session, u"a b"_s), profile.Path(u"lists/a b.vlo"_s));
    EXPECT_EQ(ProfileLayout::HistoryFolder(session), profile.Path(u"history"_s));
    EXPECT_EQ(ProfileLayout::SentFolder(session), profile.Path(u"sent"_s));
    EXPECT_EQ(ProfileLayout::SentCopy(session, u"a.txt"_s), profile.Path(u"sent/a.txt"_s));
    EXPECT_EQ(ProfileLayout::LogsFolder(session), profile.Path(u"logs"_s));
    EXPECT_EQ(ProfileLayout::Log(session, u"ErrorLog.txt"_s), profile.Path(u"logs/ErrorLog.txt"_s));
}

TEST(ProfileLayoutTest, TheFoldersAreMadeInTheirOrder) {
    const TestProfile profile;
    EXPECT_EQ(ProfileLayout::Folders(profile.session),
              (QStringList{profile.Path(u"lists"_s), profile.Path(u"sent"_s), profile.Path(u"logs"_s)}));
}

} // namespace
} // namespace varlo::test

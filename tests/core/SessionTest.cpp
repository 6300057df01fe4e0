#include "core/Session.h"

#include "support/ScriptedDialogs.h"

#include <gtest/gtest.h>

namespace varlo::test {
namespace {

TEST(Session, PathsLieBelowTheProgramFolder) {
    ScriptedDialogs boxes;
    Session session(QStringLiteral("/opt/varlo"), boxes);
    EXPECT_EQ(session.ProfilesFolder(), QStringLiteral("/opt/varlo/profiles"));
    session.ProfilePath = QStringLiteral("/opt/varlo/profiles/Work");
    EXPECT_EQ(session.ProfileFile(QStringLiteral("draft.txt")),
              QStringLiteral("/opt/varlo/profiles/Work/draft.txt"));
    EXPECT_EQ(session.ProfileFile(QStringLiteral("lists"), QStringLiteral("a b.vlo")),
              QStringLiteral("/opt/varlo/profiles/Work/lists/a b.vlo"));
}

TEST(Session, BeginsWithTheDefaultsAndWithoutAProfile) {
    ScriptedDialogs boxes;
    const Session session(QStringLiteral("/opt/varlo"), boxes);
    EXPECT_EQ(session.ProfilePath, QString());
    EXPECT_FALSE(session.AppExiting);
    EXPECT_EQ(session.Attachments, QStringList{QString()});
    EXPECT_EQ(session.Prefs.LogStatus, 1);
    EXPECT_EQ(session.Prefs.ListSortBy, 1);
    EXPECT_EQ(session.Prefs.SMTPPort, 25);
    EXPECT_EQ(session.Prefs.SMTPWrap, 72);
    EXPECT_LE(qAbs(session.Now().secsTo(QDateTime::currentDateTime())), 60);
}

} // namespace
} // namespace varlo::test

#include "compose/Draft.h"

#include "core/Literals.h"
#include "core/RuntimeError.h"
#include "support/TestProfile.h"

#include <gtest/gtest.h>

namespace varlo {
namespace {

class DraftTest : public testing::Test {
protected:
    // What opening the draft gives when its file holds `bytes`.
    Draft Opened(const QByteArray &bytes) {
        profile.Write("draft.txt", bytes);
        return OpenDraft(profile.session).value_or(Draft{"no draft", "no draft"});
    }
    QByteArray Saved(const Draft &draft) {
        SaveDraft(profile.session, draft);
        return profile.Read("draft.txt");
    }

    test::TestProfile profile;
};

TEST_F(DraftTest, IsSavedAsSubjectLineAndBody) {
    EXPECT_EQ(Saved({"News", "Dear all,\r\n\r\nbye"}), "News\r\nDear all,\r\n\r\nbye\r\n");
}

TEST_F(DraftTest, ReplacesTheOlderOne) {
    Saved({"A long subject", "and a long body"});
    EXPECT_EQ(Saved({"b", "c"}), "b\r\nc\r\n");
}

TEST_F(DraftTest, KeepsEveryLineBreakOfTheBody) {
    for (const char *body : {"", "one", "one\r\n", "one\r\n\r\n", "\r\n", "\r\n\r\none", " \t "}) {
        const Draft draft{"s", QString::fromLatin1(body)};
        EXPECT_EQ(Opened(Saved(draft)), draft);
    }
}

TEST_F(DraftTest, WithAnEmptySubjectKeepsItsFirstLineEmpty) {
    EXPECT_EQ(Saved({"", "body"}), "\r\nbody\r\n");
    EXPECT_EQ(Opened("\r\nbody\r\n"), (Draft{"", "body"}));
}

TEST_F(DraftTest, WithASubjectOnlyHasAnEmptyBody) {
    EXPECT_EQ(Opened("News\r\n"), (Draft{"News", ""}));
    EXPECT_EQ(Opened("News"), (Draft{"News", ""}));
    EXPECT_EQ(Opened("News\r\n\r\n"), (Draft{"News", ""}));
}

TEST_F(DraftTest, ASubjectWithLineBreaksIsSavedAsOneLine) {
    EXPECT_EQ(Saved({"one\r\ntwo\nthree", "body"}), "one two three\r\nbody\r\n");
}

TEST_F(DraftTest, AnEmptyFileIsAnEmptyDraft) {
    EXPECT_EQ(Opened(""), Draft());
}

TEST_F(DraftTest, InWindows1252KeepsEveryByte) {
    EXPECT_EQ(Opened("Gr\xFC\xDF"
                     "e\r\n10 \x80 \x96 \x81\r\n"),
              (Draft{u"Gr\u00FC\u00DFe"_s, u"10 \u20AC \u2013 \u0081"_s}));
}

TEST_F(DraftTest, IsWrittenInUtf8WithoutAByteOrderMark) {
    EXPECT_EQ(Saved({u"\u20AC"_s, u"\u00FC"_s}), "\xE2\x82\xAC\r\n\xC3\xBC\r\n");
}

TEST_F(DraftTest, OfAMegabyteComesBackWhole) {
    const Draft draft{"large", u"0123456789abcd\r\n"_s.repeated(65536)};
    EXPECT_EQ(Opened(Saved(draft)), draft);
}

TEST_F(DraftTest, FromAnEditorThatEndsLinesWithLineFeedsIsRead) {
    EXPECT_EQ(Opened("News\none\n\ntwo\n"), (Draft{"News", "one\r\n\r\ntwo"}));
}

TEST_F(DraftTest, ALoneLineFeedEndsALineToo) {
    EXPECT_EQ(Opened("News\r\none\ntwo\r\n"), (Draft{"News", "one\r\ntwo"}));
}

TEST_F(DraftTest, IsNothingWhenThereIsNoFile) {
    EXPECT_EQ(OpenDraft(profile.session), std::nullopt);
}

TEST_F(DraftTest, ASaveThatFailsSaysWhy) {
    profile.session.ProfilePath = profile.Path("gone");
    EXPECT_THROW(SaveDraft(profile.session, {"a", "b"}), RuntimeError);
}

TEST_F(DraftTest, AFolderOfItsNameCannotBeRead) {
    ASSERT_TRUE(QDir(profile.session.ProfilePath).mkdir("draft.txt"));
    EXPECT_THROW(OpenDraft(profile.session), RuntimeError);
}

} // namespace
} // namespace varlo

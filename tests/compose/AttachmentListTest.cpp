#include "compose/AttachmentList.h"

#include "core/Literals.h"
#include "core/RuntimeError.h"
#include "support/TestProfile.h"

#include <gtest/gtest.h>

namespace varlo {
namespace {

class AttachmentListTest : public testing::Test {
protected:
    QString File(const QString &name, int bytes) {
        profile.Write(name, QByteArray(bytes, 'x'));
        return profile.Path(name);
    }
    // The summary of files of these sizes.
    QString Summary(const QList<int> &sizes) {
        QStringList paths;
        for (int size : sizes)
            paths << File(u"file%1"_s.arg(paths.size()), size);
        return AttachmentSummary(paths);
    }

    test::TestProfile profile;
};

TEST_F(AttachmentListTest, AnEmptyListHasNoFilesAndNoKilobytes) {
    EXPECT_EQ(AttachmentSummary({}), "0 Files (0 KB)");
}

TEST_F(AttachmentListTest, ThreeFilesOfSixHundredBytesAreThreeKilobytes) {
    EXPECT_EQ(Summary({600, 600, 600}), "3 Files (3 KB)");
}

TEST_F(AttachmentListTest, AHalfGoesToTheEvenNeighbourOfTheTotal) {
    EXPECT_EQ(Summary({512}), "1 Files (0 KB)");
    EXPECT_EQ(Summary({1536}), "1 Files (2 KB)");
    EXPECT_EQ(Summary({1024, 512}), "2 Files (2 KB)");
    EXPECT_EQ(Summary({2048, 512}), "2 Files (2 KB)");
}

TEST_F(AttachmentListTest, JustBelowAndAboveAHalf) {
    EXPECT_EQ(Summary({511}), "1 Files (0 KB)");
    EXPECT_EQ(Summary({513}), "1 Files (1 KB)");
    EXPECT_EQ(Summary({0}), "1 Files (0 KB)");
}

TEST_F(AttachmentListTest, FilesPastFourGigabytesCount) {
    QFile large(File("large", 0));
    ASSERT_TRUE(large.resize(5LL * 1024 * 1024 * 1024));
    EXPECT_EQ(AttachmentSummary({large.fileName()}), "1 Files (5242880 KB)");
}

TEST_F(AttachmentListTest, TheSamePathTwiceCountsTwice) {
    const QString path = File("twice", 1024);
    EXPECT_EQ(AttachmentSummary({path, path}), "2 Files (2 KB)");
}

TEST_F(AttachmentListTest, AVanishedFileStopsTheSummary) {
    try {
        AttachmentSummary({File("there", 10), profile.Path("gone")});
        FAIL() << "no error";
    } catch (const RuntimeError &error) {
        EXPECT_EQ(error.Number(), FileNotFound);
    }
}

TEST_F(AttachmentListTest, ASingleEmptyElementMeansNone) {
    EXPECT_EQ(AttachmentPaths({""}), QStringList());
    EXPECT_EQ(AttachmentPaths({}), QStringList());
    EXPECT_EQ(AttachmentArray({}), QStringList({""}));
}

TEST_F(AttachmentListTest, PathsKeepTheirOrderBothWays) {
    const QStringList paths{"/b", "/a", "/b"};
    EXPECT_EQ(AttachmentPaths(AttachmentArray(paths)), paths);
}

TEST_F(AttachmentListTest, ADropGivesItsFilesInOrderWithoutFolders) {
    const QString there = File("there.txt", 1);
    const QString gone = profile.Path("gone.txt");
    const QList<QUrl> urls{QUrl::fromLocalFile(gone), QUrl::fromLocalFile(profile.session.ProfilePath),
                           QUrl("https://www.example.com/a.txt"), QUrl::fromLocalFile(there), QUrl()};
    EXPECT_EQ(DroppedFiles(urls), QStringList({gone, there}));
}

TEST_F(AttachmentListTest, ADroppedNameMayHoldAnyCharacter) {
    const QString odd = File(QString::fromUtf8("100% #1 \xC3\xBC.txt"), 1);
    EXPECT_EQ(DroppedFiles({QUrl::fromLocalFile(odd)}), QStringList(odd));
}

} // namespace
} // namespace varlo

#include "compose/AttachmentBox.h"

#include "compose/WindowHelpers.h"

#include <QSignalSpy>
#include <gtest/gtest.h>

namespace varlo {
namespace {

class AttachmentBoxTest : public testing::Test {
protected:
    AttachmentBox box;
    QMimeData mime;
};

TEST_F(AttachmentBoxTest, RowsAreGivenFromFirstToLast) {
    box.addItems({"b", "a", "b"});
    EXPECT_EQ(box.Rows(), QStringList({"b", "a", "b"}));
}

TEST_F(AttachmentBoxTest, OfALongPathTheMiddleIsLeftOut) {
    box.addItem(QString(1000, u'x'));
    box.resize(200, 100);
    box.show();
    EXPECT_EQ(box.textElideMode(), Qt::ElideMiddle);
    EXPECT_EQ(box.visualItemRect(box.item(0)).width(), box.viewport()->width());
}

TEST_F(AttachmentBoxTest, DroppedFilesAreCopiedNeverMoved) {
    const QList<QUrl> urls{QUrl::fromLocalFile("/b"), QUrl::fromLocalFile("/a")};
    QSignalSpy dropped(&box, &AttachmentBox::FilesDropped);
    mime.setUrls(urls);
    EXPECT_EQ(test::DropOn(box.viewport(), mime), Qt::CopyAction);
    ASSERT_EQ(dropped.size(), 1);
    EXPECT_EQ(dropped[0][0].value<QList<QUrl>>(), urls);
}

TEST_F(AttachmentBoxTest, DroppedTextIsRefused) {
    QSignalSpy dropped(&box, &AttachmentBox::FilesDropped);
    mime.setText("/etc/hostname");
    EXPECT_EQ(test::DropOn(box.viewport(), mime), Qt::IgnoreAction);
    EXPECT_EQ(dropped.size(), 0);
}

} // namespace
} // namespace varlo

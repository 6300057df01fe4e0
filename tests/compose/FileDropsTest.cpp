#include "compose/FileDrops.h"

#include "compose/ComposeFixture.h"
#include "core/NoticeBar.h"

#include <QMimeData>

namespace varlo {
namespace {

class FileDropsTest : public test::ComposeFixture {
protected:
    Qt::DropAction Drop(QWidget *on, const QStringList &paths) const {
        QList<QUrl> urls;
        for (const QString &path : paths)
            urls << QUrl::fromLocalFile(path);
        QMimeData data;
        data.setUrls(urls); // its text is then the addresses of the files
        return test::DropOn(on, data);
    }
    QString File(const QString &name) const {
        profile.Write(name, QByteArray(1024, 'x'));
        return profile.Path(name);
    }
    QString ToolTip() const { return Indicator()->toolTip(); }
};

TEST_F(FileDropsTest, FilesAreAttachedWhereverTheyAreDropped) {
    Open();
    Body()->SetText("Hello.");
    const QList<QWidget *> places{window, Body(), Body()->viewport(), Subject(), Find<QLineEdit>("txtTo")};
    QStringList expected;
    for (QWidget *place : places) {
        expected << File(QString::number(expected.size()));
        EXPECT_EQ(Drop(place, {expected.last()}), Qt::CopyAction) << "a moved file would be deleted";
        EXPECT_EQ(host.Attachments, expected);
        EXPECT_EQ(ToolTip(),
                  QString::number(expected.size()) + " Files (" + QString::number(expected.size()) + " KB)");
    }
    EXPECT_TRUE(Indicator()->isVisible());
    EXPECT_EQ(Body()->Text(), "Hello.");
    EXPECT_EQ(Subject()->text(), "");
    EXPECT_EQ(Find<QLineEdit>("txtTo")->text(), "Mailing List");
    EXPECT_EQ(Label("lblStatus"), "Attached [4]");
}

TEST_F(FileDropsTest, SeveralFilesAreAddedInTheirOrder) {
    host.Attachments = QStringList{File("z")};
    Open();
    Drop(Body()->viewport(), {File("b"), File("a")});
    EXPECT_EQ(host.Attachments, QStringList({profile.Path("z"), profile.Path("b"), profile.Path("a")}));
    EXPECT_EQ(ToolTip(), "3 Files (3 KB)");
    EXPECT_EQ(Label("lblStatus"), "Attached 2 files");
}

TEST_F(FileDropsTest, PlainTextStaysText) {
    Open();
    QMimeData text;
    text.setText("file:///etc/hostname");
    test::DropOn(Body()->viewport(), text);
    test::DropOn(Subject(), text);
    EXPECT_EQ(Body()->Text(), "file:///etc/hostname");
    EXPECT_EQ(Subject()->text(), "file:///etc/hostname");
    QMimeData link;
    link.setUrls({QUrl("https://example.org/")});
    link.setText("https://example.org/");
    Body()->SetText("");
    test::DropOn(Body()->viewport(), link);
    EXPECT_EQ(Body()->Text(), "https://example.org/");
    EXPECT_TRUE(Indicator()->isHidden());
    EXPECT_EQ(host.Attachments, QStringList({""}));
}

TEST_F(FileDropsTest, AFolderIsNeitherAttachedNorTyped) {
    Open();
    Drop(Body()->viewport(), {profile.session.ProfilePath});
    EXPECT_EQ(Body()->Text(), "");
    EXPECT_TRUE(Indicator()->isHidden());
    EXPECT_EQ(Label("lblStatus"), "A folder cannot be attached");
}

TEST_F(FileDropsTest, AFileThatIsGoneIsToldOfByTheBar) {
    Open();
    Drop(window, {profile.Path("gone")});
    EXPECT_TRUE(Indicator()->isVisible());
    EXPECT_EQ(Find<NoticeBar>("barAttachments")->Sentence(),
              "An attached file can no longer be read: [gone]");
    EXPECT_EQ(profile.Boxes.Texts(), QStringList());
}

TEST_F(FileDropsTest, WhatClearAllHidDoesNotComeBackWithADrop) {
    host.Attachments = QStringList{File("old")};
    Open();
    Choose("mnuMessageClearAll");
    Drop(window, {File("new")});
    EXPECT_EQ(host.Attachments, QStringList{profile.Path("new")});
}

TEST_F(FileDropsTest, WhileASendRunsTheWindowTakesNothing) {
    Prepare("a@x.test\r\nb@x.test\r\n");
    bool takes = true;
    mailers.OnSend = [&] {
        takes = window->acceptDrops();
        return Outcome();
    };
    EXPECT_TRUE(window->acceptDrops());
    Choose("mnuMessageSend");
    EXPECT_TRUE(QTest::qWaitFor([this] { return window.isNull(); }));
    EXPECT_FALSE(takes);
}

} // namespace
} // namespace varlo

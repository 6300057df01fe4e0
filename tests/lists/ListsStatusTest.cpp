#include "lists/ListsStatus.h"

#include "lists/FramesFixture.h"
#include "lists/RequestDelegate.h"

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QLabel>
#include <QStatusBar>
#include <QTest>

namespace varlo::test {
namespace {

class ListsStatusTest : public FramesFixture {
protected:
    ListsStatusTest() {
        OpenLists({{u"news"_s, Words("aa@x.test bb@x.test")}});
        new ListsStatus(session, owner.page, status);
        owner.page.UpdateControls();
        status.show();
    }
    QLabel *Label(const char *name) {
        Turn();
        return status.findChild<QLabel *>(QString::fromLatin1(name));
    }

    QStatusBar status;
};

TEST_F(ListsStatusTest, NamesTheOpenProfile) {
    EXPECT_EQ(Label("lblStatusProfile")->text(), u"Test"_s);
}

TEST_F(ListsStatusTest, SaysThatTheListIsNotSavedWhileItIsNot) {
    EXPECT_FALSE(Label("lblStatusSaved")->isVisible());
    lists.Open.Add(u"cc@x.test"_s);
    EXPECT_EQ(Label("lblStatusSaved")->text(), u"Not saved"_s);
    EXPECT_TRUE(Label("lblStatusSaved")->isVisible());
    Click("cmdFileSave");
    EXPECT_FALSE(Label("lblStatusSaved")->isVisible());
}

TEST_F(ListsStatusTest, CountsWhatIsSelectedInWhatIsSeen) {
    AddPending(Words("+pp@x.test"));
    EXPECT_FALSE(Label("lblStatusSelected")->isVisible());
    lists.SelectRows(kAlphabetical, {0, 1});
    lists.SelectRows(kPending, {0});
    EXPECT_EQ(Label("lblStatusSelected")->text(), u"3 Selected"_s);
    EXPECT_TRUE(Label("lblStatusSelected")->isVisible());
    EXPECT_EQ(Label("lblStatusCurrent")->text(), u"2 Current"_s);
    EXPECT_EQ(Label("lblStatusPending")->text(), u"1 Pending"_s);
}

TEST_F(ListsStatusTest, ADoubleClickEdits) {
    profile.Boxes.Inputs = {u"zz@x.test"_s};
    ClickRow(kAlphabetical, 1);
    Turn();
    QAbstractItemView *view = View(kAlphabetical);
    const QPoint place = view->visualRect(view->model()->index(1, 0)).center();
    QTest::mouseDClick(view->viewport(), Qt::LeftButton, {}, place);
    EXPECT_EQ(profile.Boxes.Asked.size(), 1);
    EXPECT_EQ(Sorted(), Words("aa@x.test zz@x.test"));
    QTest::mouseDClick(view->viewport(), Qt::LeftButton, Qt::ControlModifier, place);
    QTest::mouseDClick(view->viewport(), Qt::LeftButton, {}, view->viewport()->rect().bottomLeft());
    EXPECT_EQ(profile.Boxes.Asked.size(), 1) << "not with a key held, nor beside the entries";
}

TEST_F(ListsStatusTest, TheContextMenusWorkOnTheirOwnList) {
    AddPending(Words("+pp@x.test -p.p@x.test"));
    lists.SelectRows(kPending, {0});
    lists.SelectRows(kAlphabetical, {1});
    Turn();
    Find<QAction>("mnuListsPendingCopyText")->trigger();
    EXPECT_EQ(QGuiApplication::clipboard()->text(), u"+pp@x.test"_s);
    Find<QAction>("mnuListsCurrentCopyText")->trigger();
    EXPECT_EQ(QGuiApplication::clipboard()->text(), u"bb@x.test"_s);
    Find<QAction>("mnuListsPendingSimilar")->trigger();
    EXPECT_EQ(lists.SelectedRows(kPending), (QList<int>{0, 1}));
    profile.Boxes.Inputs = {u"zz@x.test"_s};
    Find<QAction>("mnuListsCurrentEdit")->trigger();
    EXPECT_EQ(Sorted(), Words("aa@x.test zz@x.test"));
    Find<QAction>("mnuListsCurrentDelete")->trigger();
    EXPECT_EQ(Current(), Words("aa@x.test"));
    EXPECT_EQ(Pending(), Words("+pp@x.test -p.p@x.test"));
    Turn();
    for (const char *entry : {"mnuListsCurrentEdit", "mnuListsCurrentDelete", "mnuListsCurrentCopyText",
                              "mnuListsCurrentSimilar"})
        EXPECT_EQ(IsEnabled(entry), lists.SelectedCount(kAlphabetical) > 0) << entry;
}

// The contrast that readers with weak eyes need: 4.5 to 1.
double Contrast(const QColor &a, const QColor &b) {
    const auto light = [](const QColor &color) {
        const auto part = [](double c) {
            return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * part(color.redF()) + 0.7152 * part(color.greenF()) + 0.0722 * part(color.blueF());
    };
    const double first = light(a) + 0.05;
    const double second = light(b) + 0.05;
    return std::max(first, second) / std::min(first, second);
}

TEST(RequestDelegateTest, BothSignsCanBeReadOnLightAndDark) {
    for (const QColor &background : {QColor(Qt::white), QColor(0x1E, 0x1E, 0x1E), QColor(0x31, 0x36, 0x3B)}) {
        const QColor add = RequestDelegate::ColorOf(u"+a@x.test"_s, background);
        const QColor remove = RequestDelegate::ColorOf(u"-a@x.test"_s, background);
        EXPECT_GE(Contrast(add, background), 4.5) << background.name().toStdString();
        EXPECT_GE(Contrast(remove, background), 4.5) << background.name().toStdString();
        EXPECT_NE(add, remove);
        EXPECT_FALSE(RequestDelegate::ColorOf(u"a@x.test"_s, background).isValid());
    }
}

} // namespace
} // namespace varlo::test

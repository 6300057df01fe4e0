#include "lists/CurrentListFrame.h"

#include "core/Literals.h"
#include "core/Preferences.h"
#include "lists/FramesFixture.h"
#include "support/FullDisk.h"

#include <QDir>
#include <QLabel>
#include <QPushButton>
#include <QWheelEvent>
#include <gtest/gtest.h>

namespace varlo {
namespace {

using test::FileBytes;
using test::Words;

const QString kNews = u"news"_s;
const QString kOther = u"other"_s;

class CurrentListFrameTest : public test::FramesFixture {
protected:
    // "news" is open with a change that is not in its file, beside it "other".
    void OpenUnsaved() {
        OpenLists({{kNews, Words("aa@x.test bb@x.test")}, {kOther, Words("oo@x.test")}});
        lists.SelectRows(lists.VisibleBox(), {0});
        Click("cmdListDelete_0");
        ASSERT_FALSE(lists.Open.IsSaved());
        TakeStatus();
    }
    void RemoveListsFolder() { ASSERT_TRUE(QDir(session.ProfileFile(u"lists"_s)).removeRecursively()); }
    void Answer(std::initializer_list<BoxAnswer> answers) { profile.Boxes.Answers = answers; }
    void TurnWheelOverChooser() {
        QWheelEvent up(QPointF(5, 5), Chooser()->mapToGlobal(QPointF(5, 5)), QPoint(), QPoint(0, 120),
                       Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(Chooser(), &up);
    }
    void Input(const QString &text) { profile.Boxes.Inputs.push_back(text); }
    // The open list, its chooser and its entries.
    void ExpectOpen(const QString &name, const QStringList &entries) {
        EXPECT_EQ(lists.Open.Name(), name);
        EXPECT_EQ(Chosen(), name);
        EXPECT_EQ(Current(), entries);
    }
};

TEST_F(CurrentListFrameTest, ItsControlsHaveTheirNamesCaptionsAndToolTips) {
    const std::vector<std::pair<const char *, std::pair<QString, QString>>> buttons{
        {"cmdFileNew", {u"New"_s, u"Create new mailing list"_s}},
        {"cmdFileRename", {u"Rename"_s, u"Rename current list"_s}},
        {"cmdFileDelete", {u"Delete"_s, u"Delete current list"_s}},
        {"cmdFileSave", {u"Save"_s, u"Save current list"_s}},
        {"cmdListEdit_0", {u"Edit"_s, u"Edit selected items"_s}},
        {"cmdListDelete_0", {u"Delete"_s, u"Delete selected items"_s}},
        {"cmdListFind", {u"Search"_s, u"Search through list"_s}},
        {"cmdListSort", {u"Sort"_s, u"Change sort order"_s}}};
    for (const auto &[name, wording] : buttons)
        EXPECT_EQ(Wording(name), wording) << name;
    EXPECT_EQ(current.objectName(), u"fraCurrent"_s);
    EXPECT_EQ(current.title(), u"Current List"_s);
    EXPECT_EQ(Find<QLabel>("lblCurrentList")->text().remove(u'&'), u"Current List"_s);
}

TEST_F(CurrentListFrameTest, ItsButtonsStandInTheirRowsAboveAndBelowTheList) {
    OpenLists({{kNews, Words("aa@x.test")}});
    QCoreApplication::processEvents();
    const QRect list = View(lists.VisibleBox())->geometry();
    const auto expectRow = [this](std::initializer_list<const char *> names, int top, int bottom) {
        int right = 0;
        for (const char *name : names) {
            const QRect button = Find<QPushButton>(name)->geometry();
            EXPECT_GT(button.top(), top) << name;
            EXPECT_LT(button.bottom(), bottom) << name;
            EXPECT_GT(button.left(), right) << name;
            right = button.right();
        }
    };
    expectRow({"cmdFileNew", "cmdFileRename", "cmdFileDelete", "cmdFileSave"}, Chooser()->geometry().bottom(),
              list.top());
    expectRow({"cmdListEdit_0", "cmdListDelete_0", "cmdListFind", "cmdListSort"}, list.bottom(),
              current.height());
}

TEST_F(CurrentListFrameTest, TheChooserOffersTheListsAndChoosesNone) {
    WriteListFile(u"Beta"_s, {});
    WriteListFile(u"<b>Über & uns"_s, {});
    WriteListFile(u"alpha"_s, {});
    current.RefreshListNames();
    EXPECT_EQ(Names(), (QStringList{u"<b>Über & uns"_s, u"alpha"_s, u"Beta"_s}));
    EXPECT_EQ(current.ChosenIndex(), -1);
    EXPECT_EQ(current.ChosenName(), QString());
    EXPECT_EQ(TakeStatus(), QStringList());
}

TEST_F(CurrentListFrameTest, WithoutListsTheChooserIsEmptyAndDisabled) {
    OpenLists({});
    EXPECT_EQ(Names(), QStringList());
    EXPECT_FALSE(IsEnabled("cmbMList"));
    EXPECT_FALSE(IsEnabled("cmdFileRename"));
    EXPECT_FALSE(IsEnabled("lstEmailList_1"));
    EXPECT_TRUE(IsEnabled("cmdFileNew"));
}

TEST_F(CurrentListFrameTest, ChoosingAListLoadsItOnce) {
    OpenLists({{kNews, Words("aa@x.test")}, {kOther, Words("oo@x.test")}});
    Choose(kOther);
    ExpectOpen(kOther, Words("oo@x.test"));
    EXPECT_EQ(TakeStatus(), (QStringList{u"Loading [other]..."_s, u"Loaded [other]"_s}));
}

TEST_F(CurrentListFrameTest, KeysAndTheWheelChooseAndLoadToo) {
    OpenLists({{kNews, Words("aa@x.test")}, {kOther, Words("oo@x.test")}});
    QTest::keyClick(Chooser(), Qt::Key_Down);
    ExpectOpen(kOther, Words("oo@x.test"));
    QApplication::setActiveWindow(&host);
    Chooser()->setFocus();
    TurnWheelOverChooser();
    ExpectOpen(kNews, Words("aa@x.test"));
    EXPECT_EQ(TakeStatus().size(), 4);
}

TEST_F(CurrentListFrameTest, TheWheelInPassingNeitherChoosesNorTakesTheFocus) {
    OpenLists({{kNews, Words("aa@x.test")}, {kOther, Words("oo@x.test")}});
    QApplication::setActiveWindow(&host);
    current.ChooseList(1);
    AddressBox()->setFocus();
    TurnWheelOverChooser();
    ExpectOpen(kOther, Words("oo@x.test"));
    EXPECT_EQ(QApplication::focusWidget(), AddressBox());
    EXPECT_EQ(Chooser()->focusPolicy(), Qt::StrongFocus);
}

TEST_F(CurrentListFrameTest, ALongNameIsCutAndStandsWholeInTheToolTip) {
    const QString name = u"subscribers "_s.repeated(12).trimmed();
    OpenLists({{u"short"_s, {}}, {name, {}}});
    EXPECT_EQ(Chooser()->toolTip(), u"The mailing list that is open"_s);
    current.ChooseList(1);
    EXPECT_EQ(Chooser()->toolTip(), u"<html>"_s + name);
    EXPECT_EQ(host.width(), 760);
}

TEST_F(CurrentListFrameTest, ChoosingTheOpenListLoadsItAgain) {
    OpenLists({{kNews, Words("aa@x.test")}});
    QCoreApplication::processEvents();
    WriteListFile(kNews, FileBytes(Words("changed@x.test")));
    Choose(kNews);
    ExpectOpen(kNews, Words("changed@x.test"));
    EXPECT_EQ(TakeStatus().size(), 2);
    current.ChooseList(0);
    EXPECT_EQ(TakeStatus().size(), 2);
}

TEST_F(CurrentListFrameTest, SwitchingKeepsThePendingList) {
    OpenLists({{kNews, Words("aa@x.test")}, {kOther, Words("oo@x.test")}});
    AddPending(Words("+pp@x.test -qq@x.test"));
    Choose(kOther);
    EXPECT_EQ(Pending(), Words("+pp@x.test -qq@x.test"));
}

TEST_F(CurrentListFrameTest, SwitchingAwayFromChangesAsks) {
    OpenUnsaved();
    Answer({BoxAnswer::Yes});
    Choose(kOther);
    ExpectOpen(kOther, Words("oo@x.test"));
    EXPECT_EQ(ReadListFile(kNews), FileBytes(Words("bb@x.test")));
}

TEST_F(CurrentListFrameTest, AWantedSaveThatFailsKeepsTheOldListChosen) {
    OpenUnsaved();
    session.Prefs.LogStatus = 0;
    Answer({BoxAnswer::Yes});
    {
        const test::FullDisk disk(2);
        Choose(kOther);
    }
    ExpectOpen(kNews, Words("bb@x.test"));
    EXPECT_FALSE(lists.Open.IsSaved());
    QCoreApplication::processEvents();
    Click("cmdFileSave");
    EXPECT_EQ(ReadListFile(kNews), FileBytes(Words("bb@x.test")));
    EXPECT_EQ(ReadListFile(kOther), FileBytes(Words("oo@x.test")));
    EXPECT_EQ(profile.Boxes.Shown.size(), 2U); // the question and the error
}

TEST_F(CurrentListFrameTest, SaveWritesTheListAndTellsIt) {
    OpenUnsaved();
    Click("cmdFileSave");
    EXPECT_EQ(ReadListFile(kNews), FileBytes(Words("bb@x.test")));
    EXPECT_TRUE(lists.Open.IsSaved());
    EXPECT_EQ(TakeStatus(), QStringList(u"Saved [news]"_s));
}

TEST_F(CurrentListFrameTest, ASaveThatFailsAtEveryByteStaysUnsaved) {
    OpenUnsaved();
    session.Prefs.LogStatus = 0;
    const auto size = static_cast<rlim_t>(FileBytes(Current()).size());
    for (rlim_t bytes = 0; bytes < size; ++bytes) {
        {
            const test::FullDisk disk(bytes);
            EXPECT_FALSE(current.Save());
        }
        ASSERT_EQ(ReadListFile(kNews), FileBytes(Words("aa@x.test bb@x.test")))
            << "after " << bytes << " bytes";
    }
    EXPECT_FALSE(lists.Open.IsSaved());
    EXPECT_EQ(TakeStatus(), QStringList());
    EXPECT_EQ(ListFolder(), Words("news.vlo other.vlo"));
}

TEST_F(CurrentListFrameTest, SaveIntoAVanishedFolderIsReported) {
    OpenUnsaved();
    RemoveListsFolder();
    Click("cmdFileSave");
    EXPECT_EQ(Errors(), QStringList(u"76 in Main.WriteList - Path not found"_s));
    EXPECT_FALSE(lists.Open.IsSaved());
    EXPECT_EQ(TakeStatus(), QStringList());
}

TEST_F(CurrentListFrameTest, ASavedListStaysSavedThoughTheStatusLogIsFull) {
    OpenUnsaved();
    BlockLog(u"StatusLog.txt"_s);
    EXPECT_TRUE(current.Save());
    EXPECT_TRUE(lists.Open.IsSaved());
    EXPECT_EQ(Errors(), QStringList(u"70 in Main.cmdFileSave - Permission denied"_s));
}

TEST_F(CurrentListFrameTest, WithoutAListSaveAndDeleteAskForOne) {
    OpenLists({});
    Click("cmdFileSave");
    Click("cmdFileDelete");
    const QString message = u"Please create or choose a mailing list first."_s;
    EXPECT_EQ(profile.Boxes.Texts(), (QStringList{message, message}));
    EXPECT_EQ(ListFolder(), QStringList());
}

TEST_F(CurrentListFrameTest, NewCreatesAnEmptyListAndOpensIt) {
    OpenLists({{kNews, Words("aa@x.test")}});
    Input(u"a/b"_s);
    Click("cmdFileNew");
    ExpectOpen(u"a b"_s, {});
    EXPECT_EQ(Names(), (QStringList{u"a b"_s, kNews}));
    EXPECT_EQ(TakeStatus(),
              (QStringList{u"Loading [a b]..."_s, u"Loaded [a b]"_s, u"Created mailing list [a b]"_s}));
    EXPECT_EQ(ReadListFile(kNews), FileBytes(Words("aa@x.test")));
}

TEST_F(CurrentListFrameTest, NewCancelledChangesNothing) {
    OpenLists({{kNews, Words("aa@x.test")}});
    Input(QString());
    Click("cmdFileNew");
    ExpectOpen(kNews, Words("aa@x.test"));
    EXPECT_EQ(TakeStatus(), QStringList());
}

TEST_F(CurrentListFrameTest, NewAsksAboutTheListThatIsLeft) {
    OpenUnsaved();
    Input(u"third"_s);
    Answer({BoxAnswer::Yes});
    Click("cmdFileNew");
    ExpectOpen(u"third"_s, {});
    EXPECT_EQ(ReadListFile(kNews), FileBytes(Words("bb@x.test")));
}

TEST_F(CurrentListFrameTest, NewWhoseWantedSaveFailsKeepsTheOldListOpen) {
    OpenUnsaved();
    session.Prefs.LogStatus = 0;
    Input(u"third"_s);
    Answer({BoxAnswer::Yes});
    {
        const test::FullDisk disk(2);
        Click("cmdFileNew");
    }
    ExpectOpen(kNews, Words("bb@x.test"));
    EXPECT_FALSE(lists.Open.IsSaved());
    EXPECT_EQ(Names(), Words("news other third"));
}

TEST_F(CurrentListFrameTest, NewWithTheNameOfTheOpenListEmptiesIt) {
    OpenLists({{kNews, Words("aa@x.test")}});
    Input(kNews);
    Click("cmdFileNew");
    ExpectOpen(kNews, {});
    EXPECT_EQ(ReadListFile(kNews), QByteArray());
    EXPECT_EQ(TakeStatus().last(), u"Created mailing list [news]"_s);
}

TEST_F(CurrentListFrameTest, ANewListThatCannotBeCreatedKeepsTheOpenOne) {
    OpenUnsaved();
    Input(QString(300, u'x'));
    Click("cmdFileNew");
    EXPECT_EQ(Errors().size(), 1);
    ExpectOpen(kNews, Words("bb@x.test"));
    EXPECT_FALSE(lists.Open.IsSaved());
    EXPECT_EQ(TakeStatus(), QStringList());
}

TEST_F(CurrentListFrameTest, NewInAVanishedFolderKeepsTheOpenListForALaterSave) {
    OpenUnsaved();
    RemoveListsFolder();
    Input(u"third"_s);
    Click("cmdFileNew");
    EXPECT_EQ(Errors(), QStringList(u"76 in Main.cmdFileNew - Path not found"_s));
    EXPECT_EQ(Current(), Words("bb@x.test"));
    EXPECT_FALSE(lists.Open.IsSaved());
    ASSERT_TRUE(QDir().mkpath(session.ProfileFile(u"lists"_s)));
    Click("cmdFileSave");
    EXPECT_EQ(ReadListFile(kNews), FileBytes(Words("bb@x.test")));
    EXPECT_TRUE(lists.Open.IsSaved());
}

TEST_F(CurrentListFrameTest, RenameRenamesAndLoadsWithoutALineOfItsOwn) {
    OpenLists({{kNews, Words("aa@x.test")}, {kOther, Words("oo@x.test")}});
    AddPending(Words("+pp@x.test"));
    Input(u"zz"_s);
    Click("cmdFileRename");
    ExpectOpen(u"zz"_s, Words("aa@x.test"));
    EXPECT_EQ(Names(), Words("other zz"));
    EXPECT_EQ(TakeStatus(), (QStringList{u"Loading [zz]..."_s, u"Loaded [zz]"_s}));
    EXPECT_TRUE(lists.Open.IsSaved());
    EXPECT_EQ(Pending(), Words("+pp@x.test"));
}

TEST_F(CurrentListFrameTest, RenameToTheSameNameOnlyAsksAboutChanges) {
    OpenUnsaved();
    Answer({BoxAnswer::No});
    Input(kNews);
    Click("cmdFileRename");
    ExpectOpen(kNews, Words("bb@x.test"));
    EXPECT_FALSE(lists.Open.IsSaved());
    EXPECT_EQ(TakeStatus(), QStringList());
}

TEST_F(CurrentListFrameTest, RenameWithChangesThatAreNotWantedLoadsTheFile) {
    OpenUnsaved();
    Answer({BoxAnswer::No, BoxAnswer::No});
    Input(u"zz"_s);
    Click("cmdFileRename");
    ExpectOpen(u"zz"_s, Words("aa@x.test bb@x.test"));
    EXPECT_TRUE(lists.Open.IsSaved());
    EXPECT_EQ(ListFolder(), Words("other.vlo zz.vlo"));
}

TEST_F(CurrentListFrameTest, ARenameWhoseWantedSaveFailsStaysUnsaved) {
    OpenUnsaved();
    session.Prefs.LogStatus = 0;
    Answer({BoxAnswer::No, BoxAnswer::Yes});
    Input(u"zz"_s);
    {
        const test::FullDisk disk(2);
        Click("cmdFileRename");
    }
    ExpectOpen(u"zz"_s, Words("bb@x.test"));
    EXPECT_FALSE(lists.Open.IsSaved());
    EXPECT_EQ(ReadListFile(u"zz"_s), FileBytes(Words("aa@x.test bb@x.test")));
}

TEST_F(CurrentListFrameTest, ARenameThatFailsLeavesTheNamesAsTheyWere) {
    OpenLists({{kNews, Words("aa@x.test")}, {kOther, Words("oo@x.test")}});
    WriteListFile(u"unseen"_s, {});
    Input(kOther);
    Click("cmdFileRename");
    EXPECT_EQ(Errors(), QStringList(u"58 in Main.cmdFileRename - File already exists"_s));
    ExpectOpen(kNews, Words("aa@x.test"));
    EXPECT_EQ(Names(), Words("news other"));
}

TEST_F(CurrentListFrameTest, DeleteOpensTheFirstOfTheOthersWithoutASaveQuestion) {
    OpenUnsaved();
    AddPending(Words("+pp@x.test"));
    Answer({BoxAnswer::Yes});
    Click("cmdFileDelete");
    ExpectOpen(kOther, Words("oo@x.test"));
    EXPECT_EQ(Names(), Words("other"));
    EXPECT_EQ(ListFolder(), Words("other.vlo"));
    EXPECT_TRUE(lists.Open.IsSaved());
    EXPECT_EQ(profile.Boxes.Texts(), QStringList(u"Are you sure you want to delete mailing list [news]?"_s));
    EXPECT_EQ(TakeStatus(),
              (QStringList{u"Loading [other]..."_s, u"Loaded [other]"_s, u"Deleted mailing list [news]"_s}));
    EXPECT_EQ(Pending(), Words("+pp@x.test"));
}

TEST_F(CurrentListFrameTest, DeletingTheLastListLeavesTheAlphabeticalBoxAsItWas) {
    OpenLists({{kNews, Words("bb@x.test aa@x.test")}});
    Answer({BoxAnswer::Yes});
    Click("cmdFileDelete");
    EXPECT_EQ(Names(), QStringList());
    EXPECT_EQ(Chosen(), QString());
    EXPECT_EQ(lists.Open.Name(), QString());
    EXPECT_EQ(Current(), QStringList());
    EXPECT_EQ(Sorted(), Words("aa@x.test bb@x.test"));
    EXPECT_TRUE(lists.Open.IsSaved());
    EXPECT_EQ(TakeStatus(), QStringList(u"Deleted mailing list [news]"_s));
    for (const char *control :
         {"cmbMList", "cmdFileRename", "lstEmailList_0", "lstEmailList_1", "cmdListFind"})
        EXPECT_FALSE(IsEnabled(control)) << control;
}

TEST_F(CurrentListFrameTest, AfterTheLastListANewOneStartsEmpty) {
    OpenLists({{kNews, Words("aa@x.test")}});
    Answer({BoxAnswer::Yes});
    Click("cmdFileDelete");
    Input(u"fresh"_s);
    Click("cmdFileNew");
    ExpectOpen(u"fresh"_s, {});
    EXPECT_EQ(Sorted(), QStringList());
}

TEST_F(CurrentListFrameTest, NoDeletesNothing) {
    OpenUnsaved();
    Answer({BoxAnswer::No});
    Click("cmdFileDelete");
    ExpectOpen(kNews, Words("bb@x.test"));
    EXPECT_FALSE(lists.Open.IsSaved());
}

TEST_F(CurrentListFrameTest, ADeleteThatFailsLeavesEverythingAsItWas) {
    OpenUnsaved();
    RemoveListsFolder();
    Answer({BoxAnswer::Yes});
    Click("cmdFileDelete");
    EXPECT_EQ(Errors(), QStringList(u"53 in Main.cmdFileDelete - File not found"_s));
    ExpectOpen(kNews, Words("bb@x.test"));
    EXPECT_FALSE(lists.Open.IsSaved());
    EXPECT_EQ(Names(), Words("news other"));
}

} // namespace
} // namespace varlo

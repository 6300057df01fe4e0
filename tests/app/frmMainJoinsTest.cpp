// What the main window joins: menus, compose window, mail check, clipboard capture.

#include "app/HelpTargets.h"
#include "app/MainWindowFixture.h"
#include "core/Literals.h"
#include "core/Preferences.h"
#include "core/Product.h"
#include "support/FakePop3Server.h"
#include "support/WaitUntil.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QLineEdit>
#include <QMenu>
#include <QTimer>
#include <QtTest>

namespace varlo::test {
namespace {

// Tells when a window is hidden.
class WhenHidden : public QObject {
public:
    WhenHidden(QWidget *window, std::function<void()> tell) : tell_(std::move(tell)) {
        window->installEventFilter(this);
    }
    bool eventFilter(QObject *, QEvent *event) override {
        if (event->type() == QEvent::Hide)
            tell_();
        return false;
    }

private:
    const std::function<void()> tell_;
};

class frmMainJoinsTest : public frmMainTest {
protected:
    frmMainJoinsTest() {
        profile.Write(u"lists/news.vlo"_s, "b@x.test\r\na@x.test\r\n");
        Load();
    }
    static QWidget *Window(const char *name) {
        const QWidgetList windows = QApplication::topLevelWidgets();
        const auto found = std::find_if(windows.begin(), windows.end(), [name](const QWidget *window) {
            return window->objectName() == QString::fromLatin1(name) && window->isVisible();
        });
        return found == windows.end() ? nullptr : *found;
    }
    void Select(const char *view, int row) const {
        auto *list = Find<QListView>(view);
        list->selectionModel()->select(list->model()->index(row, 0), QItemSelectionModel::Select);
    }
};

class frmMainFirstListTest : public frmMainTest {
protected:
    void ExpectOneOrder(int order);
};

TEST_F(frmMainJoinsTest, EveryMenuEntryLeadsSomewhere) {
    for (const char *name : {"mnuCompose", "mnuMainPreferences", "mnuMainConsole", "mnuMainOnTop",
                             "mnuMainExit", "mnuHelpContents", "mnuHelpReadMe", "mnuHelpUpdate",
                             "mnuHelpWebsite", "mnuHelpForums", "mnuHelpEmail", "mnuHelpAbout"}) {
        EXPECT_TRUE(Find<QAction>(name)->isEnabled()) << name;
        EXPECT_TRUE(Find<QAction>(name)->isVisible()) << name;
    }
    Find<QAction>("mnuHelpForums")->trigger();
    ASSERT_EQ(profile.Boxes.Opened.size(), 1U);
    EXPECT_EQ(profile.Boxes.Opened[0], QUrl(Product::kWebsite + u"/forums"_s));
}

TEST_F(frmMainJoinsTest, EveryEntryOfTheHelpMenuOpensItsOwnTarget) {
    const QDir folder(profile.Folder.path());
    ASSERT_TRUE(folder.mkpath(u"help"_s));
    for (const char *name : {"Read Me.html", "help/index.html"})
        ASSERT_TRUE(QFile(folder.filePath(QString::fromLatin1(name))).open(QIODevice::WriteOnly));
    for (const char *name : {"mnuHelpContents", "mnuHelpReadMe", "mnuHelpUpdate", "mnuHelpWebsite",
                             "mnuHelpForums", "mnuHelpEmail"})
        Find<QAction>(name)->trigger();
    const std::vector<QUrl> expected{QUrl::fromLocalFile(folder.filePath(u"help/index.html"_s)),
                                     QUrl::fromLocalFile(folder.filePath(u"Read Me.html"_s)),
                                     HelpTargets::UpdateCheck(),
                                     HelpTargets::Website(),
                                     HelpTargets::Forums(),
                                     HelpTargets::SupportMail()};
    EXPECT_EQ(profile.Boxes.Opened, expected);
}

TEST_F(frmMainJoinsTest, TheMenusHaveTheirCaptions) {
    const std::pair<const char *, const char *> captions[] = {{"mnuCompose", "Compose..."},
                                                              {"mnuMainPreferences", "Preferences..."},
                                                              {"mnuMainConsole", "Console..."},
                                                              {"mnuMainOnTop", "Always On Top"},
                                                              {"mnuMainExit", "Exit"},
                                                              {"mnuHelpContents", "Contents..."},
                                                              {"mnuHelpReadMe", "Read Me..."},
                                                              {"mnuHelpUpdate", "Check for Update"},
                                                              {"mnuHelpWebsite", "Thornbeck Website"},
                                                              {"mnuHelpForums", "Thornbeck Forums"},
                                                              {"mnuHelpEmail", "E-mail Thornbeck"},
                                                              {"mnuHelpAbout", "About..."},
                                                              {"mnuSortOrder_0", "Chronological"},
                                                              {"mnuSortOrder_1", "Alphabetical"}};
    const auto bare = [](QString text) { return text.remove(u'&'); };
    for (const auto &[name, caption] : captions)
        EXPECT_EQ(bare(Find<QAction>(name)->text()), QString::fromLatin1(caption)) << name;
    const std::pair<const char *, const char *> menus[] = {{"mnuMain", "Varlo"},
                                                           {"mnuLists", "Lists"},
                                                           {"mnuHelp", "Help"},
                                                           {"mnuHelpWeb", "Thornbeck on the Web"}};
    for (const auto &[name, caption] : menus)
        EXPECT_EQ(bare(Find<QMenu>(name)->title()), QString::fromLatin1(caption)) << name;
}

TEST_F(frmMainJoinsTest, ExitRunsTheClosingSequence) {
    TypeAddress(u"c@x.test"_s);
    profile.Boxes.Answers = {BoxAnswer::No, BoxAnswer::Yes};
    Find<QAction>("mnuMainExit")->trigger();
    EXPECT_TRUE(window_->isVisible());
    Find<QAction>("mnuMainExit")->trigger();
    EXPECT_FALSE(window_->isVisible());
    EXPECT_TRUE(profile.session.AppExiting);
}

TEST_F(frmMainJoinsTest, PreferencesOpensThePreferences) {
    bool shown = false;
    QTimer::singleShot(0, window_.get(), [&] {
        QWidget *preferences = Window("frmOptions");
        shown = preferences != nullptr;
        if (preferences)
            preferences->close();
    });
    Find<QAction>("mnuMainPreferences")->trigger();
    EXPECT_TRUE(shown);
}

TEST_F(frmMainJoinsTest, TheConsoleComesByItsEntryAndGoesWithTheMainWindow) {
    EXPECT_EQ(Window("frmConsole"), nullptr);
    Find<QAction>("mnuMainConsole")->trigger();
    EXPECT_NE(Window("frmConsole"), nullptr);
    EXPECT_TRUE(window_->close());
    EXPECT_EQ(Window("frmConsole"), nullptr);
}

TEST_F(frmMainJoinsTest, ComposingAsksForUnsavedChangesFirstAndAsksAgainAfterNo) {
    TypeAddress(u"c@x.test"_s);
    Click("cmdCapturesAdd");
    for (int i = 0; i < 2; ++i) {
        profile.Boxes.Answers = {BoxAnswer::No};
        Find<QAction>("mnuCompose")->trigger();
        EXPECT_TRUE(profile.Boxes.Answers.empty()) << "asked each time";
    }
    EXPECT_NE(Window("frmCompose"), nullptr);
    profile.Boxes.Answers = {BoxAnswer::Yes};
    Find<QAction>("mnuCompose")->trigger();
    EXPECT_EQ(profile.Read(u"lists/news.vlo"_s), QByteArray("b@x.test\r\na@x.test\r\nc@x.test\r\n"));
    EXPECT_EQ(profile.StatusTexts.last(), u"Saved [news]"_s);
}

TEST_F(frmMainJoinsTest, TheComposeWindowOffersTheSelectionOfTheVisibleList) {
    Select("lstEmailList_1", 0);
    Find<QAction>("mnuCompose")->trigger();
    auto *window = Window("frmCompose");
    ASSERT_NE(window, nullptr);
    auto *cmbTo = window->findChild<QComboBox *>(u"cmbTo"_s);
    EXPECT_EQ(cmbTo->itemText(cmbTo->count() - 1), u"Current Selection"_s);
    EXPECT_EQ(cmbTo->currentText(), u"news"_s);
}

TEST_F(frmMainJoinsTest, ThereIsOneComposeWindow) {
    Find<QAction>("mnuCompose")->trigger();
    QWidget *first = Window("frmCompose");
    Find<QAction>("mnuCompose")->trigger();
    EXPECT_EQ(Window("frmCompose"), first);
    EXPECT_TRUE(window_->close());
    EXPECT_EQ(Window("frmCompose"), nullptr) << "it goes with the main window";
}

// What is true at the moment when a window goes.
struct Unloading {
    bool exiting = false;
    bool consoleStands = false;
    bool footersWritten = false;
    bool operator==(const Unloading &) const = default;
};

TEST_F(frmMainJoinsTest, TheWindowsGoOneAfterTheOtherBeforeTheFooters) {
    Find<QAction>("mnuCompose")->trigger();
    Find<QAction>("mnuMainConsole")->trigger();
    QWidget *console = Window("frmConsole");
    ASSERT_NE(console, nullptr);
    const auto now = [&] {
        return Unloading{profile.session.AppExiting, console->isVisible(),
                         profile.Log(u"ErrorLog.txt"_s).join(u' ').contains(u"SESSION ENDED"_s)};
    };
    std::vector<Unloading> seen;
    QObject::connect(Window("frmCompose"), &QObject::destroyed, [&] { seen.push_back(now()); });
    WhenHidden watch(console, [&] { seen.push_back(now()); });
    EXPECT_TRUE(window_->close());
    EXPECT_EQ(seen, (std::vector<Unloading>{{true, true, false}, {true, false, false}}));
    EXPECT_TRUE(now().footersWritten);
}

TEST_F(frmMainJoinsTest, ARequestThatWaitsForItsMailIsLoggedBeforeTheFooter) {
    profile.session.Prefs.Notify = 1;
    mailers.OnSend = [] { return std::nullopt; };
    TypeAddress(u"new@x.test"_s);
    Click("cmdCapturesAdd");
    ASSERT_TRUE(WaitUntil([this] { return mailers.IsBusy(); }));
    profile.Boxes.Answers = {BoxAnswer::No, BoxAnswer::Yes};
    EXPECT_TRUE(window_->close());
    const QStringList log = profile.Log(u"PendingLog.txt"_s).mid(2); // behind the header
    ASSERT_EQ(log.size(), 3);
    EXPECT_EQ(log[0], u"+new@x.test"_s);
    EXPECT_TRUE(log[1].endsWith(u" SESSION ENDED"_s));
    EXPECT_EQ(mailers.Alive, 0);
}

TEST_F(frmMainJoinsTest, AMailCheckWithoutAnAccountOpensThePreferences) {
    bool shown = false;
    QTimer::singleShot(0, window_.get(), [&] {
        QWidget *preferences = Window("frmOptions");
        shown = preferences != nullptr;
        if (preferences)
            preferences->close();
    });
    Find<QPushButton>("cmdAutoAdd")->click();
    EXPECT_TRUE(shown);
    ASSERT_EQ(profile.Boxes.Shown.size(), 1U);
    EXPECT_EQ(profile.Boxes.Shown[0].Icon, BoxIcon::Exclamation);
}

TEST_F(frmMainJoinsTest, AMailCheckUsesItsFixedPortWhateverTheSettingsSay) {
    FakePop3Server server;
    profile.Write(u"prefs.ini"_s,
                  "[POP3]\r\nPOPServer=127.0.0.1\r\nPOPUsername=joe\r\nPOPPassword=x\r\nPOPPort=" +
                      QByteArray::number(server.serverPort()) + "\r\n");
    Click("cmdAutoAdd");
    const auto connecting = profile.ConsoleLines.size();
    // Refused at once; a mail server on this machine would answer with another line.
    EXPECT_TRUE(
        WaitUntil([&] { return !profile.Boxes.Shown.empty() || profile.ConsoleLines.size() > connecting; }));
    EXPECT_EQ(server.Connections, 0);
}

TEST_F(frmMainJoinsTest, CaptureShowsItsCountInTheCaption) {
    Click("cmdCapture");
    EXPECT_EQ(window_->windowTitle(), u"0 e-mail addresses captured"_s);
    QGuiApplication::clipboard()->setText(u"mailto:new@x.test"_s);
    QTRY_COMPARE(window_->windowTitle(), u"1 e-mail addresses captured"_s);
    EXPECT_EQ(Rows("lstEmailList_2"), QStringList(u"+new@x.test"_s));
    Click("cmdCapture");
    EXPECT_EQ(window_->windowTitle(), u"Thornbeck Varlo Pro"_s);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), QString());
}

TEST_F(frmMainJoinsTest, TheSortMenuChangesTheVisibleList) {
    Select("lstEmailList_1", 1);
    Find<QAction>("mnuSortOrder_0")->trigger();
    EXPECT_TRUE(Find<QListView>("lstEmailList_0")->isVisible());
    EXPECT_FALSE(Find<QListView>("lstEmailList_1")->isVisible());
    EXPECT_EQ(Find<QListView>("lstEmailList_0")->selectionModel()->selectedRows().value(0).row(), 0)
        << "b@x.test is carried over";
    EXPECT_EQ(profile.session.Prefs.ListSortBy, 0);
}

TEST_F(frmMainJoinsTest, TheRightButtonOpensTheListsMenu) {
    auto *list = Find<QListView>("lstEmailList_1");
    QMenu *menu = Find<QMenu>("mnuListsCurrent");
    QContextMenuEvent press(QContextMenuEvent::Mouse, QPoint(5, 5),
                            list->viewport()->mapToGlobal(QPoint(5, 5)));
    QApplication::sendEvent(list->viewport(), &press);
    EXPECT_TRUE(menu->isVisible());
    menu->close();
}

// The box that is seen is the one that every operation works on.
void frmMainFirstListTest::ExpectOneOrder(int order) {
    profile.Write(u"prefs.ini"_s, "[Main]\r\nBypassPending=1\r\nListSortBy=" + QByteArray::number(order));
    Load();
    profile.Boxes.Inputs = {u"news"_s};
    Click("cmdFileNew");
    TypeAddress(u"bb@x.test"_s);
    TypeAddress(u"aa@x.test"_s);
    const char *const views[] = {"lstEmailList_0", "lstEmailList_1"};
    EXPECT_TRUE(Find<QListView>(views[order])->isVisible());
    EXPECT_FALSE(Find<QListView>(views[1 - order])->isVisible());
    EXPECT_TRUE(Find<QAction>(order == 1 ? "mnuSortOrder_1" : "mnuSortOrder_0")->isChecked());
    auto *seen = Find<QListView>(views[order]);
    const QString first = Rows(views[order]).first();
    seen->setCurrentIndex(seen->model()->index(0, 0));
    Click("cmdListDelete_0");
    EXPECT_EQ(profile.StatusTexts.last(), u"Deleted ["_s + first + u"]"_s);
    EXPECT_FALSE(Rows("lstEmailList_0").contains(first));
}

TEST_F(frmMainFirstListTest, TheChronologicalOrderIsShownFromTheFirstListOn) {
    ExpectOneOrder(0);
}

TEST_F(frmMainFirstListTest, TheAlphabeticalOrderIsShownFromTheFirstListOn) {
    ExpectOneOrder(1);
}

} // namespace
} // namespace varlo::test

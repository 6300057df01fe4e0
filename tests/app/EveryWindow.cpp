#include "app/EveryWindow.h"

#include "app/frmAbout.h"
#include "app/frmConsole.h"
#include "app/frmMain.h"
#include "app/frmProfile.h"
#include "compose/frmAttach.h"
#include "compose/frmCompRecip.h"
#include "compose/frmCompose.h"
#include "core/Literals.h"
#include "history/KeepVersion.h"
#include "history/frmHistory.h"
#include "lists/ImportText.h"
#include "lists/frmCompare.h"
#include "lists/frmExport.h"
#include "lists/frmImport.h"
#include "net/FakeServerTest.h"
#include "net/frmServerTest.h"
#include "net/frmTrust.h"
#include "prefs/frmOptions.h"

#include <QLineEdit>
#include <QListView>
#include <QListWidget>
#include <QPushButton>
#include <QTreeWidget>
#include <QtTest>
#include <gtest/gtest.h>

namespace varlo::test {

OpenWindow::OpenWindow(const std::string &name) {
    profile_.Write(u"lists/Members.vlo"_s, "jo@example.org\r\n");
    profile_.Write(u"lists/News.vlo"_s, "ann@example.org\r\nbob@example.org\r\n");
    profile_.Write(u"prefs.ini"_s, "[Main]\r\nListCurrent=1\r\n");
    window_ = Make(name);
}

OpenWindow::~OpenWindow() {
    profile_.session.AppExiting = true; // nothing is asked any more
    window_.reset();
}

void OpenWindow::Show() const {
    window_->show();
    EXPECT_TRUE(QTest::qWaitForWindowActive(window_.get()));
}

std::unique_ptr<QWidget> OpenWindow::Make(const std::string &name) {
    if (name == "frmMain")
        return MakeMain();
    if (name == "frmMain_offer") {
        profile_.Write(u"lists/News.vlo.unsaved"_s, "cy@example.org\r\n");
        return MakeMain();
    }
    if (name == "frmMain_several") {
        auto window = MakeMain();
        window->findChild<QLineEdit *>(u"txtAddEmail"_s)->setText(u"new@example.org, next@example.org"_s);
        return window;
    }
    if (name == "frmExport" || name == "frmCompare")
        return MakeBulk(name);
    if (name == "frmImport")
        return MakeImport();
    if (name == "frmProfile")
        return std::make_unique<frmProfile>(profile_.session, QStringList());
    if (name == "frmConsole")
        return std::make_unique<frmConsole>(profile_.session);
    if (name == "frmAbout")
        return std::make_unique<frmAbout>(profile_.session);
    if (name == "frmCompose")
        return MakeCompose();
    if (name == "frmCompose_offer") {
        profile_.Write(u"unsent.ini"_s, "[Message]\r\nSubject=News of the week\r\n");
        host_.Attachments = QStringList{profile_.Path(u"gone.pdf"_s)};
        return MakeCompose();
    }
    if (name == "frmCompRecip")
        return std::make_unique<frmCompRecip>(host_.ListNames());
    if (name == "frmAttach")
        return MakeAttach();
    if (name == "frmTrust")
        return std::make_unique<frmTrust>(
            net::DistrustedServer{u"mail.example.org"_s, SomeCertificate(), u"It is self-signed."_s, false});
    if (name == "frmServerTest")
        return MakeServerTest();
    if (name == "frmHistory")
        return MakeHistory();
    return MakeOptions(name.back() - '0');
}

std::unique_ptr<QWidget> OpenWindow::MakeMain() {
    auto window = std::make_unique<frmMain>(profile_.session, mailers_.Maker());
    window->Form_Load();
    auto *typed = window->findChild<QLineEdit *>(u"txtAddEmail"_s);
    typed->setText(u"new@example.org"_s);
    window->findChild<QPushButton *>(u"cmdEmailAdd_0"_s)->click();
    typed->setText(u"next@example.org"_s);
    for (const char *list : {"lstEmailList_1", "lstEmailList_2"}) {
        auto *view = window->findChild<QListView *>(QString::fromLatin1(list));
        QTest::mouseClick(view->viewport(), Qt::LeftButton, {},
                          view->visualRect(view->model()->index(0, 0)).center());
    }
    return window;
}

std::unique_ptr<QWidget> OpenWindow::MakeOptions(int page) {
    auto window = std::make_unique<frmOptions>(profile_.session);
    window->findChild<QListWidget *>(u"lstOptions"_s)->setCurrentRow(page);
    return window;
}

std::unique_ptr<QWidget> OpenWindow::MakeBulk(const std::string &name) {
    lists_.Open.Load(u"News"_s);
    if (name == "frmExport")
        return std::make_unique<frmExport>(profile_.session, lists_);
    auto window = std::make_unique<frmCompare>(profile_.session, lists_);
    window->findChild<QPushButton *>(u"cmdCompareSelect"_s)->click(); // a notice
    window->findChild<QLineEdit *>(u"txtCompareName"_s)->setText(u"Both"_s);
    return window;
}

// With a file, a notice, and something to correct.
std::unique_ptr<QWidget> OpenWindow::MakeImport() {
    lists_.Open.Load(u"News"_s);
    profile_.Write(u"picture.png"_s, QByteArray(10, '\0'));
    auto window = std::make_unique<frmImport>(profile_.session, lists_);
    window->Take(
        {.Files = {profile_.Path(u"picture.png"_s), profile_.Path(u"lists/Members.vlo"_s)}, .Text = {}});
    window->Take({.Files = {}, .Text = u"cy@example.org, d+e@example.org"_s});
    EXPECT_TRUE(QTest::qWaitFor([&] { return window->findChild<QPushButton *>(u"cmdOK"_s)->isEnabled(); }));
    return window;
}

std::unique_ptr<QWidget> OpenWindow::MakeCompose() {
    auto window = std::make_unique<frmCompose>(profile_.session, host_, mailers_.Maker());
    window->findChild<QWidget *>(u"picAttachments"_s)->show();
    window->findChild<QWidget *>(u"prgSending"_s)->show();
    return window;
}

// With a failed test, so that every button is there.
std::unique_ptr<QWidget> OpenWindow::MakeServerTest() {
    FakeServerTest *made = nullptr;
    const auto make = [&made] {
        auto test = std::make_unique<FakeServerTest>();
        made = test.get();
        return test;
    };
    auto window =
        std::make_unique<frmServerTest>(u"Test of [mail.example.org]"_s, ServerTestDoor{make, {}, {}});
    made->Connect();
    made->End({u"The certificate is self-signed."_s, SomeCertificate(), true});
    return window;
}

std::unique_ptr<QWidget> OpenWindow::MakeAttach() {
    host_.Attachments = QStringList{profile_.Path(u"prefs.ini"_s)};
    auto window = std::make_unique<frmAttach>(profile_.session, host_.Attachments);
    window->findChild<QListWidget *>(u"lstAttachments"_s)->setCurrentRow(0);
    return window;
}

// A list with two versions, one of them selected.
std::unique_ptr<QWidget> OpenWindow::MakeHistory() {
    for (const char *address : {"cy@example.org", "di@example.org"}) {
        const QStringList entries{QString::fromLatin1(address)};
        History::ReplaceKeeping(profile_.session, u"News"_s, u"Process Pending List"_s, entries,
                                [&] { profile_.Write(u"lists/News.vlo"_s, QByteArray(address) + "\r\n"); });
    }
    auto window = std::make_unique<frmHistory>(profile_.session, host_.ListNames(), u"News"_s);
    auto *versions = window->findChild<QTreeWidget *>(u"tblHistory"_s);
    versions->setCurrentItem(versions->topLevelItem(1));
    return window;
}

std::vector<std::string> WindowNames() {
    std::vector<std::string> names{"frmMain",       "frmMain_offer", "frmMain_several", "frmProfile",
                                   "frmConsole",    "frmAbout",      "frmCompose",      "frmCompose_offer",
                                   "frmCompRecip",  "frmAttach",     "frmImport",       "frmTrust",
                                   "frmServerTest", "frmExport",     "frmCompare",      "frmHistory"};
    for (int page = 0; page < 5; ++page)
        names.push_back("frmOptions_" + std::to_string(page));
    return names;
}

} // namespace varlo::test

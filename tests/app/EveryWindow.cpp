#include "app/EveryWindow.h"

#include "app/frmAbout.h"
#include "app/frmConsole.h"
#include "app/frmMain.h"
#include "app/frmProfile.h"
#include "compose/frmAttach.h"
#include "compose/frmCompRecip.h"
#include "compose/frmCompose.h"
#include "core/Literals.h"
#include "prefs/frmOptions.h"

#include <QLineEdit>
#include <QListView>
#include <QListWidget>
#include <QPushButton>
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

std::unique_ptr<QWidget> OpenWindow::MakeCompose() {
    auto window = std::make_unique<frmCompose>(profile_.session, host_, mailers_.Maker());
    window->findChild<QWidget *>(u"picAttachments"_s)->show();
    window->findChild<QWidget *>(u"prgSending"_s)->show();
    return window;
}

std::unique_ptr<QWidget> OpenWindow::MakeAttach() {
    host_.Attachments = QStringList{profile_.Path(u"prefs.ini"_s)};
    auto window = std::make_unique<frmAttach>(profile_.session, host_.Attachments);
    window->findChild<QListWidget *>(u"lstAttachments"_s)->setCurrentRow(0);
    return window;
}

std::vector<std::string> WindowNames() {
    std::vector<std::string> names{"frmMain",    "frmMain_offer", "frmProfile", "frmConsole",      "frmAbout",
                                   "frmCompose", "frmCompRecip",  "frmAttach",  "frmCompose_offer"};
    for (int page = 0; page < 5; ++page)
        names.push_back("frmOptions_" + std::to_string(page));
    return names;
}

} // namespace varlo::test

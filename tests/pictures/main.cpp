// A tool of the developers: takes pictures of the program's windows. scripts/pictures runs it.
//
//     varlo_pictures FOLDER               the pictures of README and help
//     varlo_pictures --all FOLDER [dark]  every window in its states, and every menu

#include "app/frmAbout.h"
#include "app/frmMain.h"
#include "app/frmProfile.h"
#include "compose/frmAttach.h"
#include "compose/frmCompRecip.h"
#include "compose/frmCompose.h"
#include "core/Literals.h"
#include "pictures/SampleProfile.h"
#include "pictures/Snapshot.h"
#include "prefs/frmOptions.h"
#include "support/FakeMailer.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QListWidget>
#include <QMenu>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QStyleFactory>

#include <memory>

namespace varlo::test {
namespace {

const QString kMessage = u"Dear friends,\n\n"
                         "the spring programme is ready: five walks, two lectures and the plant market on "
                         "Saturday, 25 April. You find it attached.\n\n"
                         "Bring gloves on the 11th: we plant the new hedge behind the greenhouse.\n\n"
                         "-- \nThe Garden Society\nnews@example.org\n"_s;

template<typename Control> Control *Find(QWidget &window, const char *name) {
    auto *control = window.findChild<Control *>(QString::fromLatin1(name));
    if (!control)
        qFatal("there is no control %s", name);
    return control;
}

QWidget &TopLevel(const char *name) {
    for (QWidget *window : QApplication::topLevelWidgets())
        if (window->objectName() == QString::fromLatin1(name))
            return *window;
    qFatal("there is no window %s", name);
}

class Photographer {
public:
    Photographer(QString folder, bool all) : folder_(std::move(folder)), all_(all) {}

    void TakeEverything() {
        TakeProfile();
        TakeMain();
        TakeCompose();
        TakeOptions();
        frmAbout about(sample_.session);
        Take(about, "about");
        if (all_)
            TakeEmptyStates();
    }

private:
    QString Path(const QString &name) const { return QDir(folder_).filePath(name + u".png"_s); }
    void Take(QWidget &window, const QString &name) const { TakeWindow(window, Path(name)); }
    void Take(QWidget &window, const char *name) const { Take(window, QString::fromLatin1(name)); }

    void TakeMenus(QWidget &window, const QString &prefix) const {
        for (QMenu *menu : window.findChildren<QMenu *>())
            if (!menu->objectName().isEmpty())
                TakeMenu(*menu, Path(prefix + menu->objectName()));
    }

    void TakeProfile() {
        frmProfile profiles(sample_.session, {});
        Take(profiles, "profile");
    }

    void TakeMain() {
        main_ = std::make_unique<frmMain>(sample_.session, mailers_.Maker());
        main_->Form_Load();
        AddRequests();
        auto *list = Find<QListView>(*main_, "lstEmailList_1");
        list->setCurrentIndex(list->model()->index(3, 0));
        Take(*main_, "main");
        if (!all_)
            return;
        TakeMenus(*main_, u"main-"_s);
        Find<QAction>(*main_, "mnuMainConsole")->trigger();
        Find<QPushButton>(*main_, "cmdCapture")->click();
        Take(*main_, "main-capturing");
        Find<QPushButton>(*main_, "cmdCapture")->click();
        TakeSmallest();
    }

    void AddRequests() {
        const QStringList found = sample_.CheckMailbox();
        Find<QAction>(*main_, "mnuMainConsole")->trigger();
        Take(TopLevel("frmConsole"), "console");
        TopLevel("frmConsole").hide();
        for (const QString &entry : found + QStringList{u"+noah.fischer@example.net"_s}) {
            Find<QLineEdit>(*main_, "txtAddEmail")->setText(entry.mid(1));
            Find<QPushButton>(*main_, entry.startsWith(u'+') ? "cmdEmailAdd_0" : "cmdEmailAdd_1")->click();
        }
    }

    void TakeSmallest() {
        const QSize usual = main_->size();
        main_->resize(main_->minimumSizeHint());
        Take(*main_, "main-smallest");
        main_->resize(usual);
    }

    void TakeCompose() {
        Find<QAction>(*main_, "mnuCompose")->trigger();
        auto &compose = dynamic_cast<frmCompose &>(TopLevel("frmCompose"));
        Find<QComboBox>(compose, "cmbTo")->setFocus();
        Find<QLineEdit>(compose, "txtTo")->setText(u"Friends of the Garden"_s);
        Find<QLineEdit>(compose, "txtSubject")->setText(u"The spring programme"_s);
        Find<QPlainTextEdit>(compose, "txtMessage")->setPlainText(kMessage);
        Find<QWidget>(compose, "picAttachments")->show();
        Take(compose, "compose");
        if (all_) {
            TakeMenus(compose, u"compose-"_s);
            Find<QProgressBar>(compose, "prgSending")->setValue(42);
            Find<QProgressBar>(compose, "prgSending")->show();
            Take(compose, "compose-sending");
        }
        TakeAttach(compose);
        frmCompRecip recipients({"Announcements", "Members", "Newsletter"}, &compose);
        for (int row : {1, 2})
            Find<QListWidget>(recipients, "lstRecipients")->item(row)->setSelected(true);
        Take(recipients, "recipients");
        if (all_)
            TakeMenus(recipients, u"recipients-"_s);
    }

    void TakeAttach(QWidget &compose) {
        const QDir folder(sample_.session.ProgramFolder);
        const QStringList names{u"Spring programme.pdf"_s, u"Plant market.jpg"_s};
        QStringList attachments;
        for (int bytes = 214'000; const QString &name : names) {
            sample_.WriteAttachment(folder.filePath(name), bytes);
            attachments << folder.filePath(name);
            bytes += 71'000;
        }
        frmAttach attach(sample_.session, attachments, &compose);
        auto *list = Find<QListWidget>(attach, "lstAttachments");
        for (int row = 0; row < list->count(); ++row) // where the operator's files would lie
            list->item(row)->setText(u"/home/anna/Documents/"_s + names[row]);
        Take(attach, "attach");
    }

    void TakeOptions() {
        frmOptions options(sample_.session, main_.get());
        const char *pages[] = {"options-general", "options-sending", "options-receiving",
                               "options-notification", "options-compose"};
        for (int page = 0; page < 5; ++page) {
            Find<QListWidget>(options, "lstOptions")->setCurrentRow(page);
            Take(options, pages[page]);
        }
    }

    // A new profile, as everybody sees it first.
    void TakeEmptyStates() {
        SampleProfile fresh;
        fresh.RemoveLists();
        frmMain empty(fresh.session, mailers_.Maker());
        empty.Form_Load();
        Take(empty, "main-empty");
        frmAttach attach(fresh.session);
        Take(attach, "attach-empty");
        fresh.session.AppExiting = true;
        sample_.session.AppExiting = true;
    }

    const QString folder_;
    const bool all_;
    SampleProfile sample_;
    FakeMailers mailers_;
    std::unique_ptr<frmMain> main_;
};

} // namespace
} // namespace varlo::test

int main(int argc, char **argv) {
    QApplication application(argc, argv);
    QStringList arguments = QCoreApplication::arguments().mid(1);
    const bool all = arguments.removeAll(u"--all"_s) > 0;
    if (arguments.isEmpty() || !QDir().mkpath(arguments.first()))
        qFatal("usage: varlo_pictures [--all] FOLDER [dark]");
    QApplication::setStyle(QStyleFactory::create(u"Fusion"_s));
    QApplication::setQuitOnLastWindowClosed(false);
    if (arguments.contains(u"dark"_s))
        varlo::test::UseDarkColours();
    varlo::test::Photographer(arguments.first(), all).TakeEverything();
    return 0;
}

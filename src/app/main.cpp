// Starts the program: one copy for each program folder, the profile manager, then the main window.

#include "app/ActionStart.h"
#include "app/CommandLine.h"
#include "app/EndSignals.h"
#include "app/Ending.h"
#include "app/HelpKey.h"
#include "app/SingleInstance.h"
#include "app/StartUp.h"
#include "app/frmMain.h"
#include "app/frmProfile.h"
#include "core/Icons.h"
#include "core/Product.h"
#include "core/Reporting.h"
#include "core/SendingAccount.h"
#include "core/WidgetDialogs.h"
#include "net/SystemKeyring.h"
#include "net/frmTrust.h"
#include "pop3/MailboxTest.h"
#include "smtp/SMTP.h"
#include "smtp/SendingTest.h"

#include <QApplication>
#include <QSessionManager>

namespace {

// The last resort around the delivery of every event.
class Application : public QApplication {
public:
    Application(int &argc, char **argv) : QApplication(argc, argv) {}

    void Protect(varlo::Session &session) { session_ = &session; }

    bool notify(QObject *receiver, QEvent *event) override {
        if (!session_)
            return QApplication::notify(receiver, event);
        bool handled = true; // an event whose handling failed is over
        varlo::LastResort(*session_, [&] { handled = QApplication::notify(receiver, event); });
        return handled;
    }

private:
    varlo::Session *session_ = nullptr;
};

std::unique_ptr<varlo::Mailer> MakeSmtpMailer(const varlo::MailAccount &account) {
    return std::make_unique<OSSMTP::SMTP>(account);
}

varlo::OptionsDoor MakeOptionsDoor(varlo::net::Passwords &passwords) {
    return {.SendingTest =
                [](const varlo::Preferences &typed) {
                    return std::make_unique<OSSMTP::SendingTest>(varlo::SendingAccount(typed));
                },
            .MailboxTest =
                [](const varlo::Preferences &typed) {
                    return std::make_unique<varlo::MailboxTest>(varlo::MailboxAccount(typed),
                                                                varlo::MailboxEndpoint(typed));
                },
            .AskTrust = varlo::AskTrustInWindow,
            .Passwords = &passwords};
}

// The program from the choice of a profile to the end of the main window.
class Program {
public:
    explicit Program(varlo::Session &session)
        : session_(session), profiles_(session, QCoreApplication::arguments().mid(1)) {
        QObject::connect(&profiles_, &varlo::frmProfile::ProfileOpened, &profiles_, [this] { LoadMain(); });
        QObject::connect(&signals_, &varlo::EndSignals::Received, &profiles_, [this] { Terminate(); });
        QObject::connect(qApp, &QGuiApplication::commitDataRequest, &profiles_,
                         [this](QSessionManager &manager) { LogOff(manager); });
        // Inside the event loop, so that a signal can end what is asked meanwhile.
        QMetaObject::invokeMethod(
            &profiles_, [this] { profiles_.CheckAutoStart(); }, Qt::QueuedConnection);
    }

private:
    void LoadMain() {
        main_ = std::make_unique<varlo::frmMain>(session_, MakeSmtpMailer, MakeOptionsDoor(passwords_));
        ending_ = std::make_unique<varlo::Ending>(session_, *main_);
        QObject::connect(ending_.get(), &varlo::Ending::Ended, qApp, &QCoreApplication::quit);
        main_->Form_Load();
    }
    void Terminate() {
        if (ending_)
            ending_->Terminate();
        else
            QCoreApplication::quit();
    }
    void LogOff(QSessionManager &manager) {
        if (ending_ && !ending_->LogOff(manager.allowsInteraction()))
            manager.cancel();
        manager.release();
    }

    varlo::Session &session_;
    varlo::net::Passwords passwords_{session_, std::make_unique<varlo::net::SystemKeyring>()};
    varlo::frmProfile profiles_;
    varlo::EndSignals signals_;
    std::unique_ptr<varlo::frmMain> main_;
    std::unique_ptr<varlo::Ending> ending_;
};

int Run(Application &application) {
    varlo::WidgetDialogs boxes;
    const QString executableFolder = QCoreApplication::applicationDirPath();
    if (varlo::HasReadOnlyProfiles(executableFolder)) {
        varlo::ShowReadOnlyProfiles(boxes, executableFolder);
        return 1;
    }
    varlo::Session session(varlo::FindProgramFolder(executableFolder), boxes);
    session.DocumentFolders = varlo::FindDocumentFolders(executableFolder);
    bool asked = false;
    const varlo::SingleInstance instance(session.ProgramFolder, [&](const varlo::DoubtfulLock &lock) {
        asked = true;
        return varlo::AsksToTakeOver(boxes, lock);
    });
    if (!instance.IsFirst()) {
        if (!asked)
            varlo::ShowAlreadyRunning(boxes);
        return 1;
    }
    application.Protect(session);
    varlo::ActionStart actions(session);
    varlo::HelpKey help(session);
    application.installEventFilter(&actions);
    application.installEventFilter(&help);
    const Program program(session);
    return QApplication::exec();
}

} // namespace

int main(int argc, char **argv) {
    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments << QString::fromLocal8Bit(argv[i]);
    const varlo::CommandLine line = varlo::ReadCommandLine(arguments);
    if (line.Wanted != varlo::CommandLine::Wish::Start)
        return varlo::Answer(line); // needs no display
    Application application(argc, argv);
    QApplication::setApplicationName(varlo::kApplicationTitle);
    QApplication::setApplicationDisplayName(QString());
    QApplication::setDesktopFileName(varlo::Product::kExecutableName);
    QApplication::setWindowIcon(varlo::Icon(u"varlo-pro"));
    return Run(application);
}

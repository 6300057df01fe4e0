// Starts the program: one copy for each program folder, the profile manager, then the main window.

#include "app/SingleInstance.h"
#include "app/StartUp.h"
#include "app/frmMain.h"
#include "app/frmProfile.h"
#include "core/Icons.h"
#include "core/Product.h"
#include "core/Reporting.h"
#include "core/WidgetDialogs.h"
#include "smtp/BlockingMailer.h"

#include <QApplication>

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
    return std::make_unique<OSSMTP::BlockingMailer>(account);
}

int Run(Application &application) {
    varlo::WidgetDialogs boxes;
    const QString executableFolder = QCoreApplication::applicationDirPath();
    varlo::Session session(varlo::FindProgramFolder(executableFolder), boxes);
    session.DocumentFolders = varlo::FindDocumentFolders(executableFolder);
    const varlo::SingleInstance instance(session.ProgramFolder);
    if (!instance.IsFirst()) {
        varlo::ShowAlreadyRunning(boxes);
        return 1;
    }
    application.Protect(session);
    std::unique_ptr<varlo::frmMain> mainWindow;
    varlo::frmProfile profiles(session, QCoreApplication::arguments().mid(1));
    QObject::connect(&profiles, &varlo::frmProfile::ProfileOpened, &profiles, [&] {
        mainWindow = std::make_unique<varlo::frmMain>(session, MakeSmtpMailer);
        mainWindow->Form_Load();
    });
    profiles.CheckAutoStart();
    return QApplication::exec();
}

} // namespace

int main(int argc, char **argv) {
    Application application(argc, argv);
    QApplication::setApplicationName(varlo::kApplicationTitle);
    QApplication::setApplicationDisplayName(QString());
    QApplication::setDesktopFileName(varlo::Product::kExecutableName);
    QApplication::setWindowIcon(varlo::Icon(u"varlo-pro"));
    return Run(application);
}

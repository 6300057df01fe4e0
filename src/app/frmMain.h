// The main window: the frame that joins the two lists, the mail check, the compose window and the menus.
#pragma once

#include "compose/ComposeHost.h"
#include "core/Mailer.h"
#include "core/Reporting.h"
#include "core/Session.h"
#include "pop3/Pop3Check.h"

#include <QMainWindow>
#include <QPointer>

class QLabel;

namespace varlo {

class ListsPage;
class StatusLabel;
class frmCompose;
class frmConsole;

class frmMain : public QMainWindow, private ComposeHost {
    Q_OBJECT

public:
    // `makeMailer` makes what messages and notifications are sent with.
    frmMain(Session &session, MakeMailer makeMailer, QWidget *parent = nullptr);
    ~frmMain() override;

    // Prepares the open profile, loads its settings, shows the window and opens the list last used. Each
    // failing step is reported as "Main.Load" and the load carries on.
    void Form_Load();

    // The next close asks nothing, nor does the one that is asking now: what is not saved is kept beside its
    // list. The caller closes the boxes.
    void EndUnasked();

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    void CreateControls();
    void CreateVarloMenu();
    void CreateStatusBar();
    void LayOutControls();
    void ConnectControls();
    void ConnectPage();

    // What the compose window asks for.
    QStringList ListNames() const override;
    QString CurrentListName() const override;
    QStringList SelectedAddresses() const override;
    void Offer(const PendingRequest &request) override;

    PendingDoor MakePendingDoor();
    void LoadMainSettings(ErrorTrap &trap);
    void OpenLastList(ErrorTrap &trap);
    void RestoreLayout();

    void Form_Unload();

    void mnuCompose_Click();
    void mnuMainPreferences_Click();
    void mnuMainConsole_Click();
    void mnuMainOnTop_Click();

    Session &session_;
    const MakeMailer makeMailer_;
    ListsPage *page_;
    Pop3Check check_;

    QAction *mnuCompose = nullptr;
    QAction *mnuMainPreferences = nullptr;
    QAction *mnuMainConsole = nullptr;
    QAction *mnuMainOnTop = nullptr;
    QAction *mnuMainExit = nullptr;
    StatusLabel *lblStatus = nullptr;
    QLabel *lblStatusCurrent = nullptr;
    QLabel *lblStatusPending = nullptr;
    bool endsUnasked_ = false;
    std::unique_ptr<frmConsole> console_;
    QPointer<frmCompose> compose_; // deletes itself once it is closed
};

} // namespace varlo

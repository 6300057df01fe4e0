// The profile manager: chooses, creates, renames and deletes profiles before the main window is loaded.
#pragma once

#include <QDialog>
#include <QStringList>

class QCheckBox;
class QComboBox;
class QGroupBox;
class QLabel;
class QPushButton;

namespace varlo {

struct Session;

// Points `session.INI` at "global.ini" when it is made. It is shown, or not, by CheckAutoStart.
class frmProfile : public QDialog {
    Q_OBJECT

public:
    // `arguments` is the command line without the program's own name.
    frmProfile(Session &session, const QStringList &arguments, QWidget *parent = nullptr);

    // Opens the remembered profile at once when the operator asked for that; else shows the window.
    // "/profile" anywhere on the command line always shows it.
    void CheckAutoStart();

Q_SIGNALS:
    // `session.ProfilePath` is set and "global.ini" written: the main window is to be loaded now. The profile
    // manager closes itself afterwards.
    void ProfileOpened();

private:
    void CreateControls();
    void LayOut();
    void ConnectControls();

    void Form_Load();
    void cmdGo_Click();
    void cmdProfileNew_Click();
    void cmdProfileRename_Click();
    void cmdProfileDelete_Click();

    void ShowManager();
    void OpenProfile();
    void ProfileNotFound();
    void CreateProfile();
    void RenameProfile();
    void DeleteProfile();
    bool ConfirmsDelete(const QString &name);
    void RefreshList();
    void UpdateButtons();
    void SelectName(const QString &name);
    void SelectFirst();

    Session &session_;
    const QString commandLine_;

    QGroupBox *Frame1 = nullptr;
    QComboBox *cmbProfiles = nullptr;
    QLabel *lblNoProfile = nullptr;
    QPushButton *cmdProfileNew = nullptr;
    QPushButton *cmdProfileRename = nullptr;
    QPushButton *cmdProfileDelete = nullptr;
    QCheckBox *chkAutoStart = nullptr;
    QPushButton *cmdGo = nullptr;
};

} // namespace varlo

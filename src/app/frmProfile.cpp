#include "app/frmProfile.h"

#include "core/Buttons.h"
#include "core/GlobalKeys.h"
#include "core/Literals.h"
#include "core/NameChooser.h"
#include "core/Profiles.h"
#include "core/Reporting.h"
#include "core/modPublic.h"

#include <QCheckBox>
#include <QDir>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include <initializer_list>

namespace varlo {

frmProfile::frmProfile(Session &session, const QStringList &arguments, QWidget *parent)
    : QDialog(parent), session_(session), commandLine_(arguments.join(u' ')) {
    CreateControls();
    LayOut();
    ConnectControls();
    Form_Load();
}

void frmProfile::CreateControls() {
    setObjectName(u"frmProfile"_s);
    setWindowTitle(u"Profile Manager"_s);
    Frame1 = new QGroupBox(u"Profiles"_s, this);
    Frame1->setObjectName(u"Frame1"_s);
    cmbProfiles = new NameChooser(32); // a name can have 255 characters
    cmbProfiles->setObjectName(u"cmbProfiles"_s);
    cmbProfiles->setAccessibleName(u"Profiles"_s);
    lblNoProfile = new QLabel(u"There is no profile yet. Press New to create one."_s);
    lblNoProfile->setObjectName(u"lblNoProfile"_s);
    cmdProfileNew = NewButton(nullptr, "cmdProfileNew", u"&New"_s, u"Create new profile"_s);
    cmdProfileRename = NewButton(nullptr, "cmdProfileRename", u"&Rename"_s, u"Rename profile"_s);
    cmdProfileDelete = NewButton(nullptr, "cmdProfileDelete", u"&Delete"_s, u"Delete profile"_s);
    chkAutoStart = new QCheckBox(u"Don't &ask at startup"_s);
    chkAutoStart->setObjectName(u"chkAutoStart"_s);
    chkAutoStart->setToolTip(u"Check this box to skip the profile manager at startup"_s);
    cmdGo = NewButton(nullptr, "cmdGo", u"&Start Varlo Pro"_s);
    cmdGo->setDefault(true);
}

void frmProfile::LayOut() {
    auto *buttons = new QHBoxLayout;
    for (QPushButton *button : {cmdProfileNew, cmdProfileRename, cmdProfileDelete})
        buttons->addWidget(button);
    auto *inFrame = new QVBoxLayout(Frame1);
    inFrame->addWidget(cmbProfiles);
    inFrame->addWidget(lblNoProfile);
    inFrame->addLayout(buttons);
    auto *below = new QHBoxLayout;
    below->addWidget(chkAutoStart, 1);
    below->addWidget(cmdGo);
    auto *all = new QVBoxLayout(this);
    all->addWidget(Frame1);
    all->addLayout(below);
    all->setSizeConstraint(QLayout::SetFixedSize);
    cmbProfiles->setFocus();
}

void frmProfile::ConnectControls() {
    connect(cmdGo, &QPushButton::clicked, this, &frmProfile::cmdGo_Click);
    connect(cmdProfileNew, &QPushButton::clicked, this, &frmProfile::cmdProfileNew_Click);
    connect(cmdProfileRename, &QPushButton::clicked, this, &frmProfile::cmdProfileRename_Click);
    connect(cmdProfileDelete, &QPushButton::clicked, this, &frmProfile::cmdProfileDelete_Click);
}

void frmProfile::Form_Load() {
    Trapped(session_, u"Profile.Load"_s, [this] {
        session_.INI.SetFile(QDir(session_.ProgramFolder).filePath(u"global.ini"_s));
        session_.INI.SetSection(u"Profiles"_s);
        if (!PathExists(session_.ProfilesFolder()))
            Profiles::Create(session_.ProgramFolder, u"profiles"_s);
        RefreshList();
        chkAutoStart->setChecked(ReadNumber(session_.INI, GlobalKeys::AutoStart) == 1);
        const int remembered = ReadNumber(session_.INI, GlobalKeys::ProfileCurrent);
        if (remembered >= 0 && remembered < cmbProfiles->count())
            cmbProfiles->setCurrentIndex(remembered);
        else
            SelectFirst();
    });
}

void frmProfile::CheckAutoStart() {
    if (chkAutoStart->isChecked() && !commandLine_.contains(u"/profile"_s, Qt::CaseSensitive))
        cmdGo_Click();
    else
        ShowManager();
}

// A remembered position that could not be read has selected nothing.
void frmProfile::ShowManager() {
    if (cmbProfiles->currentIndex() < 0)
        SelectFirst();
    show();
}

void frmProfile::cmdGo_Click() {
    Trapped(session_, u"Profile.Go"_s, [this] { OpenProfile(); });
}

void frmProfile::cmdProfileNew_Click() {
    Trapped(session_, u"Profile.New"_s, [this] { CreateProfile(); });
}

void frmProfile::cmdProfileRename_Click() {
    Trapped(session_, u"Profile.Rename"_s, [this] { RenameProfile(); });
}

void frmProfile::cmdProfileDelete_Click() {
    Trapped(session_, u"Profile.Delete"_s, [this] { DeleteProfile(); });
}

void frmProfile::OpenProfile() {
    const QString name = cmbProfiles->currentText();
    session_.ProfilePath = QDir(session_.ProfilesFolder()).filePath(name);
    // Without a selection (the settings could not be read) the path is that of the profiles folder itself.
    if (name.isEmpty() || !PathExists(session_.ProfilePath)) {
        ProfileNotFound();
        return;
    }
    WriteValue(session_.INI, GlobalKeys::AutoStart, chkAutoStart->isChecked() ? 1 : 0);
    WriteValue(session_.INI, GlobalKeys::ProfileCurrent, cmbProfiles->currentIndex());
    Q_EMIT ProfileOpened();
    close();
}

void frmProfile::ProfileNotFound() {
    const QString folder = QDir::toNativeSeparators(session_.ProfilePath);
    session_.ProfilePath.clear(); // none is open: what is logged from now on belongs to the profiles folder
    LogError(session_, u"Profile.Go"_s, RuntimeError(PathNotFound, u"Profile not found: "_s + folder));
    show();
    session_.Boxes.MsgBox(u"The selected profile could not be found. It may have been renamed, "
                          "moved or deleted."_s,
                          BoxButtons::Ok, BoxIcon::Critical, kErrorTitle);
    RefreshList();
    SelectFirst();
}

void frmProfile::CreateProfile() {
    const QString answer =
        session_.Boxes.InputBox(u"Please enter a name for the new profile:"_s, u"Create New Profile"_s);
    const QString name = StripChars(answer, kForbiddenInNames);
    if (name.isEmpty())
        return;
    Profiles::Create(session_.ProfilesFolder(), name);
    RefreshList();
    SelectName(name);
}

void frmProfile::RenameProfile() {
    const QString oldName = cmbProfiles->currentText();
    const QString answer = session_.Boxes.InputBox(u"Please enter the new name for ["_s + oldName + u"]:"_s,
                                                   u"Rename Profile"_s, oldName);
    const QString name = StripChars(answer, kForbiddenInNames);
    if (name.isEmpty() || name == oldName)
        return;
    Profiles::Rename(session_.ProfilesFolder(), oldName, name);
    RefreshList();
    SelectName(name);
}

bool frmProfile::ConfirmsDelete(const QString &name) {
    const auto saysYes = [this](const QString &question) {
        return session_.Boxes.AskToDestroy(question, BoxIcon::Exclamation, u"Confirm Delete"_s) ==
               BoxAnswer::Yes;
    };
    return saysYes(u"Warning: Deleting a profile will remove ALL files and folders relating to "
                   "that profile.\r\n\r\nAre you sure you want to delete profile ["_s +
                   name + u"]?"_s) &&
           saysYes(u"About to delete profile ["_s + name + u"]. Are you completely sure?"_s);
}

void frmProfile::DeleteProfile() {
    const QString name = cmbProfiles->currentText();
    if (!ConfirmsDelete(name))
        return;
    Profiles::Delete(session_.ProfilesFolder(), name);
    RefreshList();
    SelectFirst();
}

void frmProfile::RefreshList() {
    cmbProfiles->clear();
    cmbProfiles->addItems(Profiles::Names(session_.ProfilesFolder()));
    cmbProfiles->setCurrentIndex(-1); // the caller selects; a failure before that must not choose a profile
    UpdateButtons();
}

void frmProfile::UpdateButtons() {
    const bool hasProfiles = cmbProfiles->count() > 0;
    for (QWidget *control :
         std::initializer_list<QWidget *>{cmbProfiles, cmdProfileRename, cmdProfileDelete, cmdGo})
        control->setEnabled(hasProfiles);
    lblNoProfile->setVisible(!hasProfiles);
}

void frmProfile::SelectName(const QString &name) {
    cmbProfiles->setCurrentIndex(cmbProfiles->findText(name, Qt::MatchExactly | Qt::MatchCaseSensitive));
    if (cmbProfiles->currentIndex() < 0) // the file system spelled the name its own way
        SelectFirst();
}

void frmProfile::SelectFirst() {
    if (cmbProfiles->count() > 0)
        cmbProfiles->setCurrentIndex(0);
}

} // namespace varlo

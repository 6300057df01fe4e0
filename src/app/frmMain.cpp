#include "app/frmMain.h"

#include "app/HelpMenu.h"
#include "app/StartUp.h"
#include "app/frmConsole.h"
#include "compose/frmCompose.h"
#include "core/Literals.h"
#include "core/MenuEntries.h"
#include "core/Product.h"
#include "core/Settings.h"
#include "core/StatusLabel.h"
#include "lists/CurrentListFrame.h"
#include "lists/ListsMenu.h"
#include "lists/ListsPage.h"
#include "lists/ListsStatus.h"
#include "lists/PendingListFrame.h"
#include "lists/UnsavedList.h"
#include "prefs/frmOptions.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QLabel>
#include <QMenuBar>
#include <QSplitter>
#include <QStatusBar>

namespace varlo {

frmMain::frmMain(Session &session, MakeMailer makeMailer, QWidget *parent)
    : QMainWindow(parent), session_(session), makeMailer_(std::move(makeMailer)),
      page_(new ListsPage(session, makeMailer_, this)),
      check_(session, MakePendingDoor(), [this] { mnuMainPreferences_Click(); }),
      console_(std::make_unique<frmConsole>(session)) {
    setObjectName(u"frmMain"_s);
    setWindowTitle(Product::kMainCaption);
    CreateControls();
    LayOutControls();
    ConnectControls();
}

frmMain::~frmMain() {
    page_->Processing().Abort(); // its end reaches back to this window, and so does the compose window
    delete compose_;
}

void frmMain::CreateControls() {
    CreateVarloMenu();
    menuBar()->addMenu(&page_->Menu());
    menuBar()->addMenu(new HelpMenu(session_, this));
    CreateStatusBar();
}

void frmMain::CreateVarloMenu() {
    QMenu *mnuMain = menuBar()->addMenu(u"&Varlo"_s);
    mnuMain->setObjectName(u"mnuMain"_s);
    mnuCompose = AddEntry(mnuMain, "mnuCompose", u"&Compose..."_s);
    mnuCompose->setShortcut(QKeySequence::New);
    AddLine(mnuMain, "mnuMainLine1");
    mnuMainPreferences = AddEntry(mnuMain, "mnuMainPreferences", u"&Preferences..."_s);
    mnuMainConsole = AddEntry(mnuMain, "mnuMainConsole", u"Co&nsole..."_s);
    AddLine(mnuMain, "mnuMainLine2");
    mnuMainOnTop = AddEntry(mnuMain, "mnuMainOnTop", u"Always On &Top"_s);
    mnuMainOnTop->setCheckable(true);
    AddLine(mnuMain, "mnuMainLine3");
    mnuMainExit = AddEntry(mnuMain, "mnuMainExit", u"E&xit"_s);
    mnuMainExit->setShortcut(QKeySequence::Quit);
    mnuMainExit->setMenuRole(QAction::QuitRole);
}

void frmMain::CreateStatusBar() {
    statusBar()->setObjectName(u"picStatusbar"_s);
    auto *lblCaption = new QLabel(u"Status:"_s, this);
    lblCaption->setObjectName(u"lblCaption"_s);
    lblStatus = new StatusLabel(u"Idle"_s, this);
    lblStatus->setObjectName(u"lblStatus"_s);
    // As tall as the labels beside it, so that their texts stand on one line.
    lblStatus->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    lblStatus->setCursor(Qt::PointingHandCursor);
    statusBar()->addWidget(lblCaption);
    statusBar()->addWidget(lblStatus, 1);
    new ListsStatus(session_, *page_, *statusBar());
}

void frmMain::LayOutControls() {
    setCentralWidget(page_);
    resize(760, 520);
}

void frmMain::ConnectControls() {
    connect(mnuCompose, &QAction::triggered, this, &frmMain::mnuCompose_Click);
    connect(mnuMainPreferences, &QAction::triggered, this, &frmMain::mnuMainPreferences_Click);
    connect(mnuMainConsole, &QAction::triggered, this, &frmMain::mnuMainConsole_Click);
    connect(mnuMainOnTop, &QAction::triggered, this, &frmMain::mnuMainOnTop_Click);
    connect(mnuMainExit, &QAction::triggered, this, &frmMain::close);
    connect(lblStatus, &StatusLabel::Clicked, this, &frmMain::mnuMainConsole_Click);
    connect(&session_.Status, &StatusFeed::StatusText, lblStatus, &StatusLabel::setText);
    ConnectPage();
}

void frmMain::ConnectPage() {
    connect(page_, &ListsPage::MailCheckWanted, this, [this] { check_.Start(); });
    connect(page_, &ListsPage::LockedChanged, mnuCompose, &QAction::setDisabled);
    connect(page_, &ListsPage::CaptionWanted, this, [this](const QString &caption) {
        setWindowTitle(caption.isEmpty() ? Product::kMainCaption : caption);
    });
}

void frmMain::Form_Load() {
    ErrorTrap trap(session_, u"Main.Load"_s);
    PrepareProfile(session_, trap);
    WriteSessionMarkers(session_, u" SESSION STARTED"_s, trap);
    session_.AllSettings.Load(trap);
    LoadMainSettings(trap);
    trap([&] { page_->Current().RefreshListNames(); });
    page_->UpdateControls();
    RestoreLayout();
    show();
    OpenLastList(trap);
}

void frmMain::LoadMainSettings(ErrorTrap &trap) {
    Settings &settings = session_.AllSettings;
    trap([&] {
        if (settings.Read(&Preferences::AlwaysOnTop))
            mnuMainOnTop->trigger();
    });
    trap([&] { settings.Read(&Preferences::LogStatus); });
    trap([&] { page_->Pending().SetBypass(settings.Read(&Preferences::BypassPending) == 1); });
}

void frmMain::OpenLastList(ErrorTrap &trap) {
    int last = 0;
    Settings &settings = session_.AllSettings;
    trap([&] { last = settings.Read(&Preferences::ListCurrent); });
    const auto count = page_->Current().ListNames().size();
    if (count > 0)
        page_->Current().ChooseList(last >= 0 && last < count ? last : 0);
    // Without a list too: the first one that is made is shown in this order.
    trap([&] { page_->Lists().Open.SetSortOrder(settings.Read(&Preferences::ListSortBy)); });
    page_->UpdateControls();
}

QStringList frmMain::ListNames() const {
    return page_->Current().ListNames();
}

QString frmMain::CurrentListName() const {
    return page_->Lists().Open.Name();
}

QStringList frmMain::SelectedAddresses() const {
    return page_->Lists().SelectedEntries(page_->Lists().VisibleBox());
}

void frmMain::Offer(const PendingRequest &request) {
    page_->Lists().Pending.Offer(request);
}

// The mail check reaches the Pending list through this door and nothing else of the window.
PendingDoor frmMain::MakePendingDoor() {
    return {
        .Offer =
            [this](const PendingRequest &request) {
                return page_->Lists().Pending.Offer(request) == PendingList::Answer::Added;
            },
        .SelectLast = [this] { page_->Lists().Pending.SelectLast(); },
        .Bypass = [this] { return page_->Pending().Bypass(); },
        .ProcessPending = [this] { page_->ProcessWhenFree(); },
    };
}

void frmMain::mnuCompose_Click() {
    // So that saved lists are composed to; a failed save has been reported.
    if (!page_->Lists().Open.PromptSaveList())
        return;
    if (!compose_)
        compose_ = new frmCompose(session_, *this, makeMailer_);
    compose_->show();
    compose_->raise();
    compose_->activateWindow();
}

void frmMain::mnuMainPreferences_Click() {
    frmOptions(session_, this).exec();
}

void frmMain::mnuMainConsole_Click() {
    console_->ShowAtEnd();
}

void frmMain::mnuMainOnTop_Click() {
    const bool wasVisible = isVisible();
    setWindowFlag(Qt::WindowStaysOnTopHint, mnuMainOnTop->isChecked());
    if (wasVisible)
        show(); // a changed flag hides the window
    session_.Prefs.AlwaysOnTop = mnuMainOnTop->isChecked();
    session_.AllSettings.Write({&Preferences::AlwaysOnTop});
}

void frmMain::RestoreLayout() {
    const auto stored = [&](QString Preferences::*member) {
        return QByteArray::fromBase64(session_.AllSettings.Read(member).toLatin1());
    };
    restoreGeometry(stored(&Preferences::WindowGeometry));
    page_->Splitter().restoreState(stored(&Preferences::WindowSplitter));
}

void frmMain::Form_Unload() {
    ErrorTrap trap(session_, u"Main.Unload"_s);
    session_.AppExiting = true;
    page_->Processing().Abort();
    delete compose_;
    console_->close();
    WriteSessionMarkers(session_, u" SESSION ENDED"_s, trap);
    trap([&] { session_.Prefs.ListCurrent = To16Bit(page_->Current().ChosenIndex()); });
    session_.Prefs.BypassPending = page_->Pending().Bypass() ? 1 : 0;
    session_.Prefs.WindowGeometry = QString::fromLatin1(saveGeometry().toBase64());
    session_.Prefs.WindowSplitter = QString::fromLatin1(page_->Splitter().saveState().toBase64());
    session_.AllSettings.Write({&Preferences::ListCurrent, &Preferences::ListSortBy,
                                &Preferences::BypassPending, &Preferences::WindowGeometry,
                                &Preferences::WindowSplitter});
}

void frmMain::EndUnasked() {
    UnsavedList::Keep(session_, page_->Lists().Open);
    endsUnasked_ = true;
}

void frmMain::closeEvent(QCloseEvent *event) {
    if (session_.AppExiting)
        return;
    const bool agreed = endsUnasked_ || page_->MayClose();
    event->setAccepted(agreed || endsUnasked_); // nobody may have answered, and the time ran out
    if (event->isAccepted())
        Form_Unload();
}

} // namespace varlo

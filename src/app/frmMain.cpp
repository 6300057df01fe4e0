#include "app/frmMain.h"

#include "app/HelpMenu.h"
#include "app/StartUp.h"
#include "app/frmConsole.h"
#include "compose/frmCompose.h"
#include "core/Literals.h"
#include "core/Product.h"
#include "core/Settings.h"
#include "core/StatusLabel.h"
#include "lists/AddressRules.h"
#include "lists/CurrentListFrame.h"
#include "lists/ListFile.h"
#include "lists/ListsMenu.h"
#include "lists/PendingListFrame.h"
#include "lists/UnsavedList.h"
#include "lists/UnsavedOffer.h"
#include "prefs/frmOptions.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QLabel>
#include <QMenuBar>
#include <QSplitter>
#include <QStatusBar>
#include <QVBoxLayout>

namespace varlo {

frmMain::frmMain(Session &session, MakeMailer makeMailer, QWidget *parent)
    : QMainWindow(parent), session_(session), makeMailer_(std::move(makeMailer)), lists_(session),
      editing_(session, lists_), processing_(session, lists_, makeMailer_),
      check_(session, MakePendingDoor(), [this] { mnuMainPreferences_Click(); }),
      console_(std::make_unique<frmConsole>(session)) {
    setObjectName(u"frmMain"_s);
    setWindowTitle(Product::kMainCaption);
    CreateControls();
    LayOutControls();
    ConnectControls();
}

frmMain::~frmMain() {
    processing_.Abort(); // its end reaches back to this window, and so does the compose window
    delete compose_;
}

void frmMain::CreateControls() {
    splitter_ = new QSplitter(this);
    splitter_->setObjectName(u"splitter"_s);
    fraCurrent = new CurrentListFrame(session_, lists_, editing_, splitter_);
    Frame3 = new PendingListFrame(session_, lists_, editing_, processing_, splitter_);
    CreateVarloMenu();
    mnuLists = new ListsMenu(session_, lists_, editing_, this);
    menuBar()->addMenu(mnuLists);
    menuBar()->addMenu(new HelpMenu(session_, this));
    CreateStatusBar();
}

void frmMain::CreateVarloMenu() {
    QMenu *mnuMain = menuBar()->addMenu(u"&Varlo"_s);
    mnuMain->setObjectName(u"mnuMain"_s);
    const auto entry = [&](const char *name, const QString &caption) {
        QAction *action = mnuMain->addAction(caption);
        action->setObjectName(QString::fromLatin1(name));
        return action;
    };
    const auto separator = [&](const char *name) {
        mnuMain->addSeparator()->setObjectName(QString::fromLatin1(name));
    };
    mnuCompose = entry("mnuCompose", u"&Compose..."_s);
    mnuCompose->setShortcut(QKeySequence::New);
    separator("mnuMainLine1");
    mnuMainPreferences = entry("mnuMainPreferences", u"&Preferences..."_s);
    mnuMainConsole = entry("mnuMainConsole", u"Co&nsole..."_s);
    separator("mnuMainLine2");
    mnuMainOnTop = entry("mnuMainOnTop", u"Always On &Top"_s);
    mnuMainOnTop->setCheckable(true);
    separator("mnuMainLine3");
    mnuMainExit = entry("mnuMainExit", u"E&xit"_s);
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
    lblStatusCurrent = new QLabel(u"0 Current"_s, this);
    lblStatusCurrent->setObjectName(u"lblStatusCurrent"_s);
    lblStatusPending = new QLabel(u"0 Pending"_s, this);
    lblStatusPending->setObjectName(u"lblStatusPending"_s);
    statusBar()->addWidget(lblCaption);
    statusBar()->addWidget(lblStatus, 1);
    statusBar()->addPermanentWidget(lblStatusCurrent);
    statusBar()->addPermanentWidget(lblStatusPending);
}

void frmMain::LayOutControls() {
    splitter_->addWidget(fraCurrent);
    splitter_->addWidget(Frame3);
    splitter_->setChildrenCollapsible(false);
    splitter_->setStretchFactor(0, 1);
    splitter_->setStretchFactor(1, 1);
    auto *content = new QWidget(this); // a splitter would forget margins of its own in its least size
    auto *around = new QVBoxLayout(content);
    around->setContentsMargins(8, 6, 8, 2);
    auto *barUnsaved = new UnsavedOffer(session_, lists_, content);
    connect(&processing_, &PendingProcessing::RunningChanged, barUnsaved, &QWidget::setDisabled);
    around->addWidget(barUnsaved);
    around->addWidget(splitter_);
    setCentralWidget(content);
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
    connect(&lists_, &ListStore::ControlsOutdated, this, &frmMain::UpdateControls);
    connect(&processing_, &PendingProcessing::RunningChanged, this, &frmMain::SetLocked);
    connect(mnuLists, &ListsMenu::SortOrderChanged, this, &frmMain::ShowSortOrder);
    ConnectFrames();
}

void frmMain::ConnectFrames() {
    connect(fraCurrent, &CurrentListFrame::SortMenuWanted, mnuLists->SortMenu(),
            [this](const QPoint &position) { mnuLists->SortMenu()->popup(position); });
    connect(fraCurrent, &CurrentListFrame::ContextMenuWanted, mnuLists->CurrentMenu(),
            [this](const QPoint &position) { mnuLists->CurrentMenu()->popup(position); });
    connect(Frame3, &PendingListFrame::ContextMenuWanted, mnuLists->PendingMenu(),
            [this](const QPoint &position) { mnuLists->PendingMenu()->popup(position); });
    connect(Frame3, &PendingListFrame::MailCheckWanted, this, [this] { check_.Start(); });
    connect(Frame3, &PendingListFrame::CaptionWanted, this, [this](const QString &caption) {
        setWindowTitle(caption.isEmpty() ? Product::kMainCaption : caption);
    });
}

void frmMain::Form_Load() {
    ErrorTrap trap(session_, u"Main.Load"_s);
    PrepareProfile(session_, trap);
    WriteSessionMarkers(session_, u" SESSION STARTED"_s, trap);
    session_.AllSettings.Load(trap);
    lists_.ListSaved = true;
    LoadMainSettings(trap);
    trap([&] { fraCurrent->RefreshListNames(); });
    RestoreLayout();
    UpdateControls();
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
    trap([&] { Frame3->SetBypass(settings.Read(&Preferences::BypassPending) == 1); });
}

void frmMain::OpenLastList(ErrorTrap &trap) {
    int last = 0;
    trap([&] { last = session_.AllSettings.Read(&Preferences::ListCurrent); });
    const auto count = fraCurrent->ListNames().size();
    if (count > 0)
        fraCurrent->ChooseList(last >= 0 && last < count ? last : 0);
    trap([&] { session_.AllSettings.Read(&Preferences::ListSortBy); });
    if (count > 0)
        ShowSortOrder();
    UpdateControls();
}

void frmMain::ShowSortOrder() {
    mnuLists->ShowSortOrder();
    fraCurrent->ShowSortOrder();
}

void frmMain::UpdateControls() {
    const int current = lists_.lstEmailList(kChronological).Count();
    const int pending = lists_.lstEmailList(kPending).Count();
    lblStatusCurrent->setText(QString::number(current) + u" Current"_s);
    lblStatusPending->setText(QString::number(pending) + u" Pending"_s);
    const ControlStates states = ComputeControlStates({
        .HasLists = !fraCurrent->ListNames().isEmpty(),
        .HasOpenList = !fraCurrent->ChosenName().isEmpty(),
        .HasTypedAddress = Frame3->HasTypedAddress(),
        .HasCurrent = current > 0,
        .HasCurrentSelection = lists_.SelectedCount(lists_.VisibleBox()) > 0,
        .HasPending = pending > 0,
        .HasPendingSelection = lists_.SelectedCount(kPending) > 0,
    });
    fraCurrent->Apply(states);
    Frame3->Apply(states);
    mnuLists->Apply(states);
}

// While a notification is sent the window is alive, but the lists are not for editing.
void frmMain::SetLocked(bool locked) {
    if (locked)
        focusBeforeLock_ = QApplication::focusWidget();
    splitter_->setEnabled(!locked);
    mnuLists->setEnabled(!locked);
    mnuCompose->setEnabled(!locked);
    if (!locked && focusBeforeLock_)
        focusBeforeLock_->setFocus();
}

QStringList frmMain::ListNames() const {
    return fraCurrent->ListNames();
}

QString frmMain::CurrentListName() const {
    return lists_.CurrentListName;
}

QStringList frmMain::SelectedAddresses() const {
    return lists_.SelectedEntries(lists_.VisibleBox());
}

void frmMain::AddPending(const QString &entry) {
    lists_.AddPending(entry);
    lists_.UpdateControls();
}

// The mail check reaches the Pending list through this door and nothing else of the window.
PendingDoor frmMain::MakePendingDoor() {
    return {
        .IsValid = [this](const QString &address) { return IsValidAddress(session_, address, true); },
        .IsNew =
            [this](const QString &entry) {
                return IsNewAddress(session_, entry, lists_.lstEmailList(kPending));
            },
        .AddPending = [this](const QString &entry) { lists_.lstEmailList(kPending).Add(entry); },
        .SelectLast = [this] { lists_.SelectLastPending(); },
        .UpdateControls = [this] { lists_.UpdateControls(); },
        .Bypass = [this] { return Frame3->Bypass(); },
        .ProcessPending = [this] { processing_.Run(); },
    };
}

void frmMain::mnuCompose_Click() {
    if (!lists_.PromptSaveList()) // so that saved lists are composed to; a failed save has been reported
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
    splitter_->restoreState(stored(&Preferences::WindowSplitter));
}

bool frmMain::Form_QueryUnload() {
    if (!lists_.ListSaved) {
        const QString question =
            u"The changes to list ["_s + fraCurrent->ChosenName() + u"] have not been saved, save now?"_s;
        const BoxAnswer answer = session_.Boxes.MsgBox(question, BoxButtons::YesNoCancel, BoxIcon::Question);
        const bool saved = answer == BoxAnswer::Yes && fraCurrent->Save();
        if (answer == BoxAnswer::Cancel || (answer == BoxAnswer::Yes && !saved))
            return false; // a failed save keeps the window, so that the operator is asked again
    }
    const QString question = u"There are unprocessed e-mail addresses on the pending list, exit anyway?"_s;
    return lists_.lstEmailList(kPending).Count() == 0 ||
           session_.Boxes.AskToDestroy(question) == BoxAnswer::Yes;
}

void frmMain::Form_Unload() {
    ErrorTrap trap(session_, u"Main.Unload"_s);
    session_.AppExiting = true;
    processing_.Abort();
    delete compose_;
    console_->close();
    WriteSessionMarkers(session_, u" SESSION ENDED"_s, trap);
    trap([&] { session_.Prefs.ListCurrent = To16Bit(fraCurrent->ChosenIndex()); });
    session_.Prefs.BypassPending = Frame3->Bypass() ? 1 : 0;
    session_.Prefs.WindowGeometry = QString::fromLatin1(saveGeometry().toBase64());
    session_.Prefs.WindowSplitter = QString::fromLatin1(splitter_->saveState().toBase64());
    session_.AllSettings.Write({&Preferences::ListCurrent, &Preferences::ListSortBy,
                                &Preferences::BypassPending, &Preferences::WindowGeometry,
                                &Preferences::WindowSplitter});
}

void frmMain::EndUnasked() {
    UnsavedList::Keep(session_, lists_);
    endsUnasked_ = true;
}

void frmMain::closeEvent(QCloseEvent *event) {
    if (session_.AppExiting)
        return;
    const bool agreed = endsUnasked_ || Form_QueryUnload();
    event->setAccepted(agreed || endsUnasked_); // nobody may have answered, and the time ran out
    if (event->isAccepted())
        Form_Unload();
}

} // namespace varlo

// The controls of the compose window: what they are, where they stand, what they are joined to.

#include "compose/FileDrops.h"
#include "compose/MessageEdit.h"
#include "compose/frmCompose.h"
#include "core/Icons.h"
#include "core/Literals.h"
#include "core/MenuEntries.h"
#include "core/NameChooser.h"
#include "core/NoticeBar.h"
#include "core/PlainToolTip.h"
#include "core/Reporting.h"
#include "core/StatusLabel.h"

#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QProgressBar>
#include <QPushButton>
#include <QScreen>
#include <QStyle>
#include <QToolButton>
#include <QVBoxLayout>

namespace varlo {

namespace {

template<typename Control> Control *Named(Control *control, const QString &name) {
    control->setObjectName(name);
    return control;
}

QLabel *BuddyLabel(const QString &caption, QWidget *control) {
    auto *label = new QLabel(caption);
    label->setBuddy(control);
    return label;
}

QMenu *AddMenu(QMainWindow *window, const QString &name, const QString &caption) {
    return Named(window->menuBar()->addMenu(caption), name);
}

template<typename Window>
QAction *AddEntry(QMenu *menu, const QString &name, const QString &caption, Window *window,
                  void (Window::*handler)(), const QKeySequence &key = {}) {
    QAction *entry = varlo::AddEntry(menu, name, caption);
    entry->setShortcut(key);
    QObject::connect(entry, &QAction::triggered, window, handler);
    return entry;
}

} // namespace

void frmCompose::CreateControls() {
    setObjectName(u"frmCompose"_s);
    ShowIdleCaption();
    CreateBars();
    CreateFields();
    CreateIndicators();
    CreateMessageMenu();
    CreateEditMenu();
    CreateInsertMenu();
}

void frmCompose::CreateBars() {
    barUnsent = new NoticeBar("barUnsent");
    const QPushButton *restore = barUnsent->AddButton("cmdUnsentRestore", u"Bring Bac&k"_s,
                                                      u"Put the unsent message into this window"_s);
    const QPushButton *discard =
        barUnsent->AddButton("cmdUnsentDiscard", u"&Forget"_s, u"Delete the unsent message"_s);
    connect(restore, &QPushButton::clicked, this, &frmCompose::cmdUnsentRestore_Click);
    connect(discard, &QPushButton::clicked, this, &frmCompose::cmdUnsentDiscard_Click);
    barAttachments = new NoticeBar("barAttachments");
}

void frmCompose::CreateFields() {
    cmbTo = Named(new NameChooser(20, nullptr, std::nullopt), u"cmbTo"_s);
    cmbTo->setMaxVisibleItems(20);
    lblStatusRecipients = Named(new QLabel(u"0 Recipients"_s), u"lblStatusRecipients"_s);
    txtTo = Named(new QLineEdit(u"Mailing List"_s), u"txtTo"_s);
    txtTo->setToolTip(u"\"To:\" name as it will appear to recipients"_s);
    txtSubject = Named(new QLineEdit, u"txtSubject"_s);
    txtMessage = Named(new MessageEdit, u"txtMessage"_s);
    txtMessage->setAccessibleName(u"Message"_s);
    // Three lines where the screen is small and bars take their room.
    txtMessage->setMinimumHeight(3 * txtMessage->fontMetrics().lineSpacing() + 12);
}

void frmCompose::CreateIndicators() {
    picAttachments = Named(new QToolButton, u"picAttachments"_s);
    picAttachments->setAccessibleName(u"Attachments"_s);
    picAttachments->setIcon(Icon(u"attach"));
    picAttachments->setIconSize(QSize(20, 20));
    picAttachments->setAutoRaise(true);
    picAttachments->setFocusPolicy(Qt::TabFocus);
    picAttachments->hide();
    lblCaption = Named(new QLabel(u"Status:"_s), u"lblCaption"_s);
    lblStatus = Named(new StatusLabel(u"Idle"_s), u"lblStatus"_s);
    prgSending = Named(new QProgressBar, u"prgSending"_s);
    prgSending->setAccessibleName(u"Sending"_s);
    prgSending->setRange(0, 100);
    prgSending->hide();
}

void frmCompose::CreateMessageMenu() {
    mnuMessage = AddMenu(this, u"mnuMessage"_s, u"M&essage"_s);
    AddEntry(mnuMessage, u"mnuMessageSend"_s, u"&Send Message"_s, this, &frmCompose::mnuMessageSend_Click,
             QKeySequence(Qt::CTRL | Qt::Key_Return))
        ->setIcon(Icon(u"send"));
    AddLine(mnuMessage, u"mnuMessageLine1"_s);
    AddEntry(mnuMessage, u"mnuMessageOpen"_s, u"&Open Draft"_s, this, &frmCompose::mnuMessageOpen_Click,
             QKeySequence(Qt::CTRL | Qt::Key_O))
        ->setIcon(Icon(u"draft-open"));
    AddEntry(mnuMessage, u"mnuMessageSave"_s, u"Sa&ve Draft"_s, this, &frmCompose::mnuMessageSave_Click,
             QKeySequence(Qt::CTRL | Qt::Key_S))
        ->setIcon(Icon(u"draft-save"));
    AddLine(mnuMessage, u"mnuMessageLine2"_s);
    AddEntry(mnuMessage, u"mnuMessageAttach"_s, u"&Attachments..."_s, this,
             &frmCompose::mnuMessageAttach_Click, QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_A))
        ->setIcon(Icon(u"attach"));
    AddLine(mnuMessage, u"mnuMessageLine3"_s);
    AddEntry(mnuMessage, u"mnuMessageClearAll"_s, u"&Clear All"_s, this,
             &frmCompose::mnuMessageClearAll_Click);
}

// The keys of this menu belong to the message: in the other fields they keep the meaning they have
// everywhere. So the menu only shows them; txtMessage_KeyDown hears them.
void frmCompose::CreateEditMenu() {
    mnuEdit = AddMenu(this, u"mnuEdit"_s, u"&Edit"_s);
    const auto add = [this](const char *name, const char *caption, int key, void (frmCompose::*handler)()) {
        QAction *entry =
            AddEntry(mnuEdit, QString::fromLatin1(name), QString::fromLatin1(caption), this, handler);
        entry->setShortcutContext(Qt::WidgetShortcut);
        entry->setShortcut(QKeySequence(Qt::CTRL | static_cast<Qt::Key>(key)));
    };
    add("mnuEditUndo", "&Undo", Qt::Key_Z, &frmCompose::mnuEditUndo_Click);
    add("mnuEditRedo", "&Redo", Qt::Key_Y, &frmCompose::mnuEditRedo_Click);
    AddLine(mnuEdit, u"mnuEditLine1"_s);
    add("mnuEditCut", "Cu&t", Qt::Key_X, &frmCompose::mnuEditCut_Click);
    add("mnuEditCopy", "&Copy", Qt::Key_C, &frmCompose::mnuEditCopy_Click);
    add("mnuEditPaste", "&Paste", Qt::Key_V, &frmCompose::mnuEditPaste_Click);
    AddLine(mnuEdit, u"mnuEditLine2"_s);
    add("mnuEditSelectAll", "Select &All", Qt::Key_A, &frmCompose::mnuEditSelectAll_Click);
}

void frmCompose::CreateInsertMenu() {
    mnuInsert = AddMenu(this, u"mnuInsert"_s, u"&Insert"_s);
    AddEntry(mnuInsert, u"mnuInsSignature"_s, u"&Signature"_s, this, &frmCompose::mnuInsSignature_Click,
             QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_S))
        ->setIcon(Icon(u"signature"));
}

void frmCompose::LayOut() {
    auto *fields = new QGridLayout;
    fields->setVerticalSpacing(3);
    fields->addWidget(BuddyLabel(u"Reci&pients:"_s, cmbTo), 0, 0);
    fields->addWidget(cmbTo, 0, 1);
    fields->addWidget(picAttachments, 0, 2);
    fields->addWidget(lblStatusRecipients, 1, 1);
    fields->addWidget(BuddyLabel(u"&To:"_s, txtTo), 2, 0);
    fields->addWidget(txtTo, 2, 1, 1, 2);
    fields->addWidget(BuddyLabel(u"&Subject:"_s, txtSubject), 3, 0);
    fields->addWidget(txtSubject, 3, 1, 1, 2);
    fields->setColumnStretch(1, 1);
    auto *status = new QHBoxLayout;
    status->addWidget(lblCaption);
    status->addWidget(lblStatus, 1);
    status->addWidget(prgSending);
    // The window must not change its shape when one of them comes and goes.
    for (QWidget *indicator : {static_cast<QWidget *>(picAttachments), static_cast<QWidget *>(prgSending)}) {
        QSizePolicy policy = indicator->sizePolicy();
        policy.setRetainSizeWhenHidden(true);
        indicator->setSizePolicy(policy);
    }
    prgSending->setFixedWidth(160);
    auto *content = new QWidget;
    auto *all = new QVBoxLayout(content);
    all->setContentsMargins(9, 4, 9, 4);
    all->setSpacing(3);
    all->addWidget(barUnsent);
    all->addWidget(barAttachments);
    all->addLayout(fields);
    all->addWidget(txtMessage, 1);
    all->addLayout(status);
    setCentralWidget(content);
    SetTabOrder();
    const QSize frame(0, style()->pixelMetric(QStyle::PM_TitleBarHeight));
    resize(QSize(720, 540).boundedTo(screen()->availableSize() - frame));
}

// From the recipients downwards; the indicator, which is not always there, comes last.
void frmCompose::SetTabOrder() {
    setTabOrder(cmbTo, txtTo);
    setTabOrder(txtTo, txtSubject);
    setTabOrder(txtSubject, txtMessage);
    setTabOrder(txtMessage, picAttachments);
    txtSubject->setFocus(); // the recipients are chosen already, in most cases
}

void frmCompose::ConnectControls() {
    cmbTo->installEventFilter(this);
    connect(cmbTo, &QComboBox::activated, this, &frmCompose::cmbTo_Click);
    connect(txtMessage, &MessageEdit::textChanged, this, &frmCompose::txtMessage_Change);
    connect(txtMessage, &MessageEdit::ControlKey, this, &frmCompose::txtMessage_KeyDown);
    connect(txtMessage, &MessageEdit::MenuWanted, mnuEdit, [this](const QPoint &at) { mnuEdit->popup(at); });
    connect(picAttachments, &QToolButton::clicked, this, &frmCompose::mnuMessageAttach_Click);
    connect(new FileDrops(this), &FileDrops::Dropped, this, &frmCompose::AttachDropped);
    connect(&recipients_, &Recipients::StatusChanged, lblStatus, &StatusLabel::setText);
    connect(&recipients_, &Recipients::ToolTipChanged, this, &frmCompose::ShowSources);
    connect(&recipients_, &Recipients::CountChanged, lblStatusRecipients, &QLabel::setText);
    ConnectEngine();
    ConnectUnsent();
}

void frmCompose::ConnectEngine() {
    connect(&engine_, &SendEngine::StatusChanged, lblStatus, &StatusLabel::setText);
    connect(&engine_, &SendEngine::CaptionChanged, this, &frmCompose::setWindowTitle);
    connect(&engine_, &SendEngine::ProgressChanged, prgSending, &QProgressBar::setValue);
    connect(&engine_, &SendEngine::SendingChanged, this, &frmCompose::SetSending);
    connect(&engine_, &SendEngine::Sent, this, [this] {
        isSent_ = true;
        KeepUnsent(false);
    });
    connect(&engine_, &SendEngine::Completed, this, &frmCompose::close);
}

void frmCompose::ConnectUnsent() {
    constexpr int kSeconds = 10;
    tmrUnsent_.setObjectName(u"tmrUnsent"_s);
    tmrUnsent_.setSingleShot(true);
    tmrUnsent_.setInterval(kSeconds * 1000);
    connect(&tmrUnsent_, &QTimer::timeout, this, [this] { KeepUnsent(false); });
    connect(txtMessage, &MessageEdit::textChanged, this, &frmCompose::WillKeep);
    connect(txtSubject, &QLineEdit::textChanged, this, &frmCompose::WillKeep);
    connect(txtTo, &QLineEdit::textChanged, this, &frmCompose::WillKeep);
    connect(&recipients_, &Recipients::CountChanged, this, &frmCompose::WillKeep);
}

} // namespace varlo

// The compose window: one plain-text message, its recipients and its sending.
#pragma once

#include "compose/Recipients.h"
#include "compose/SendEngine.h"
#include "compose/UndoHistory.h"
#include "compose/Unsent.h"
#include "core/Session.h"

#include <QMainWindow>
#include <QTimer>
#include <QUrl>

class QComboBox;
class QLabel;
class QLineEdit;
class QProgressBar;
class QToolButton;

namespace varlo {

struct ComposeHost;
class MessageEdit;
class NoticeBar;
class StatusLabel;

// Made with `new`; it deletes itself once it is closed. Closing during a send cancels it. However the window goes,
// what was written and not sent is kept, and offered by the next one. `session` and `host` must live as long as
// the window.
class frmCompose : public QMainWindow {
    Q_OBJECT

public:
    // `makeMailer` makes what the messages are sent with.
    frmCompose(Session &session, ComposeHost &host, MakeMailer makeMailer, QWidget *parent = nullptr);
    ~frmCompose() override;

protected:
    void closeEvent(QCloseEvent *event) override;
    // Keeps the mouse wheel from cmbTo: turned in passing, it would send a message to other people.
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void CreateControls();
    void CreateFields();
    void CreateIndicators();
    void CreateBars();
    void CreateMessageMenu();
    void CreateEditMenu();
    void CreateInsertMenu();
    void LayOut();
    void SetTabOrder();
    void ConnectControls();
    void ConnectEngine();
    void ConnectUnsent();

    void Form_Load();
    void Form_Unload();
    void cmbTo_Click(int index);
    void txtMessage_Change();
    void txtMessage_KeyDown(int key, bool *taken);
    void mnuMessageSend_Click();
    void mnuMessageOpen_Click();
    void mnuMessageSave_Click();
    void mnuMessageAttach_Click();
    void mnuMessageClearAll_Click();
    void mnuEditUndo_Click();
    void mnuEditRedo_Click();
    void mnuEditCut_Click();
    void mnuEditCopy_Click();
    void mnuEditPaste_Click();
    void mnuEditSelectAll_Click();
    void mnuInsSignature_Click();
    void cmdUnsentRestore_Click();
    void cmdUnsentDiscard_Click();

    void FillSources();
    void ReadCurrentList();
    void ChooseRecipients(int index, std::function<QStringList()> pickLists);
    QStringList PickLists();
    QStringList UsePickedLists(const QStringList &names);
    void ShowSources(const QString &names);
    void ShowUndoState();
    void ShowAttachments(const QString &sizeText);
    void ShowAttachmentsOfBefore();
    void AttachDropped(const QList<QUrl> &urls);
    UnsentMessage Written() const;
    std::optional<UnsentMessage> OwnMessage() const; // nothing when it is sent or only the signature
    void WillKeep();                                 // within ten seconds
    void KeepUnsent(bool isLast);
    void OfferUnsent();
    void Restore(const UnsentMessage &message);
    QString RestoreRecipients(const UnsentMessage &message);
    ComposedMessage Composed() const;
    void SetSending(bool sending);
    void ShowIdleCaption();

    Session &session_;
    ComposeHost &host_;
    SendEngine engine_;
    UndoHistory history_;
    QString recordedText_; // the body as it was when it last changed
    QString signature_;
    Recipients recipients_;
    QStringList listNames_;   // as cmbTo shows them
    QStringList pickedLists_; // by "Select Lists..."
    UnsentFile unsent_;
    QTimer tmrUnsent_{this}; // runs while something is written that is not kept
    bool isKeepingInVain_ = false;
    bool isSent_ = false;
    bool isUnloaded_ = false;

    QMenu *mnuMessage = nullptr;
    QMenu *mnuEdit = nullptr;
    QMenu *mnuInsert = nullptr;
    NoticeBar *barUnsent = nullptr;
    NoticeBar *barAttachments = nullptr;
    QComboBox *cmbTo = nullptr;
    QLabel *lblStatusRecipients = nullptr;
    QLineEdit *txtTo = nullptr;
    QLineEdit *txtSubject = nullptr;
    MessageEdit *txtMessage = nullptr;
    QToolButton *picAttachments = nullptr;
    QLabel *lblCaption = nullptr;
    StatusLabel *lblStatus = nullptr;
    QProgressBar *prgSending = nullptr;
};

} // namespace varlo

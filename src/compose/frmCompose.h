// The compose window: one plain-text message, its recipients and its sending.
#pragma once

#include "compose/Recipients.h"
#include "compose/SendEngine.h"
#include "compose/UndoHistory.h"
#include "core/Session.h"

#include <QMainWindow>

class QComboBox;
class QLabel;
class QLineEdit;
class QProgressBar;
class QToolButton;

namespace varlo {

struct ComposeHost;
class MessageEdit;
class StatusLabel;

// Made with `new`; it deletes itself once it is closed. Closing during a send cancels it. `session` and
// `host` must live as long as the window.
class frmCompose : public QMainWindow {
    Q_OBJECT

public:
    // `makeMailer` makes what the messages are sent with.
    frmCompose(Session &session, ComposeHost &host, MakeMailer makeMailer, QWidget *parent = nullptr);

protected:
    void closeEvent(QCloseEvent *event) override;
    // Keeps the mouse wheel from cmbTo: turned in passing, it would send a message to other people.
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void CreateControls();
    void CreateFields();
    void CreateIndicators();
    void CreateMessageMenu();
    void CreateEditMenu();
    void CreateInsertMenu();
    void LayOut();
    void SetTabOrder();
    void ConnectControls();

    void Form_Load();
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

    void FillSources();
    void ReadCurrentList();
    QStringList PickLists();
    void ShowSources(const QString &names);
    void ShowUndoState();
    void ShowAttachments(const QString &sizeText);
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
    QStringList listNames_; // as cmbTo shows them

    QMenu *mnuMessage = nullptr;
    QMenu *mnuEdit = nullptr;
    QMenu *mnuInsert = nullptr;
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

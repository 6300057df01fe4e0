// The frame "Pending List": the requests, the ways in which they arrive, and the button that applies them.
#pragma once

#include "core/Session.h"
#include "lists/ClipboardCapture.h"

#include <QGroupBox>

class QCheckBox;
class QPushButton;
class QTimer;

namespace varlo {

class AddressBox;
class EntryListView;
class HyperlinkLabel;
class ListEditing;
class ListStore;
class PendingProcessing;

class PendingListFrame : public QGroupBox {
    Q_OBJECT

public:
    PendingListFrame(Session &session, ListStore &lists, ListEditing &editing, PendingProcessing &processing,
                     QWidget *parent = nullptr);

    void UpdateControls(bool hasOpenList);
    bool Bypass() const; // chkInstantAdd
    void SetBypass(bool on);
    bool IsCapturing() const;
    void FocusAddressBox();
    void ClearAddressBox();
    EntryListView *ListBox() const;

    // The click of cmdCapturesAdd: processes the Pending list.
    void ProcessPendingList();

Q_SIGNALS:
    // The caption that the main window is to show while addresses are captured; empty: its own again.
    void CaptionWanted(const QString &caption);
    void MailCheckWanted(); // cmdAutoAdd
    void ContextMenuWanted(const QPoint &position);
    // Several addresses stand in the address box, and the operator wants them imported.
    void ImportWanted(const QString &text);

private:
    void CreateControls();
    void CreateButtons();
    void LayOutControls();
    void ConnectControls();

    void cmdEmailAdd_Click(int index);
    void UpdateTypedAddress();
    void UpdateImportHint();
    void lblImportHint_Click();
    void cmdCapture_Click();
    void EndCapture();
    void tmrCaptureEmail_Timer();

    Session &session_;
    ListStore &lists_;
    ListEditing &editing_;
    PendingProcessing &processing_;
    ClipboardCapture capture_;
    EntryListView *pending_ = nullptr; // lstEmailList_2
    AddressBox *txtAddEmail = nullptr;
    HyperlinkLabel *lblImportHint = nullptr;
    QPushButton *cmdEmailAdd[2] = {};
    QPushButton *cmdEmailValidate = nullptr;
    QPushButton *cmdCapture = nullptr;
    QPushButton *cmdAutoAdd = nullptr;
    QPushButton *cmdCapturesAdd = nullptr;
    QPushButton *cmdListEdit = nullptr;
    QPushButton *cmdListDelete = nullptr;
    QPushButton *cmdListSwap = nullptr;
    QCheckBox *chkInstantAdd = nullptr;
    QTimer *tmrCaptureEmail = nullptr;
};

} // namespace varlo

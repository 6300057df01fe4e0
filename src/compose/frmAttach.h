// The dialog that chooses the files to send with a message.
#pragma once

#include "core/Session.h"

#include <QDialog>

class QLabel;
class QPushButton;

namespace varlo {

class AttachmentBox;

// Works on a list of its own; `attachments` changes with "OK" only.
class frmAttach : public QDialog {
    Q_OBJECT

public:
    frmAttach(Session &session, QStringList &attachments, QWidget *parent = nullptr);

    // The count and total size as the dialog shows them, such as "3 Files (3 KB)".
    QString SizeText() const;

private:
    void CreateControls();
    void LayOut();
    void ConnectControls();

    void Form_Load();
    void cmdAddFile_Click();
    void cmdRemoveFile_Click();
    void cmdOK_Click();
    void lstAttachments_Click();
    void lstAttachments_OLEDragDrop(const QList<QUrl> &urls);

    void RefreshFiles();

    Session &session_;
    QStringList &attachments_;

    AttachmentBox *lstAttachments = nullptr;
    QPushButton *cmdAddFile = nullptr;
    QPushButton *cmdRemoveFile = nullptr;
    QLabel *lblFilesize = nullptr;
    QPushButton *cmdOK = nullptr;
    QPushButton *cmdCancel = nullptr;
};

} // namespace varlo

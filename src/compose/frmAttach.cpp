#include "compose/frmAttach.h"

#include "compose/AttachmentBox.h"
#include "compose/AttachmentList.h"
#include "compose/modDialogs.h"
#include "core/Buttons.h"
#include "core/Literals.h"
#include "core/PlainToolTip.h"
#include "core/Reporting.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QShortcut>
#include <QVBoxLayout>

namespace varlo {

namespace {

const QString kToolTip = u"Add and remove files to be sent as attachments with your e-mail"_s;

} // namespace

frmAttach::frmAttach(Session &session, QStringList &attachments, QWidget *parent)
    : QDialog(parent), session_(session), attachments_(attachments) {
    CreateControls();
    LayOut();
    ConnectControls();
    Form_Load();
}

QString frmAttach::SizeText() const {
    return lblFilesize->text();
}

void frmAttach::CreateControls() {
    setObjectName(u"frmAttach"_s);
    setWindowTitle(u"Attachments"_s);
    lstAttachments = new AttachmentBox;
    lstAttachments->setObjectName(u"lstAttachments"_s);
    lstAttachments->setAccessibleName(u"Attachments"_s);
    lstAttachments->setToolTip(kToolTip);
    cmdAddFile = NewButton(nullptr, "cmdAddFile", u"&Add File..."_s);
    cmdRemoveFile = NewButton(nullptr, "cmdRemoveFile", u"&Remove File"_s);
    lblFilesize = new QLabel;
    lblFilesize->setObjectName(u"lblFilesize"_s);
    lblFilesize->setTextFormat(Qt::PlainText);
    cmdOK = NewButton(nullptr, "cmdOK", u"OK"_s);
    cmdOK->setDefault(true);
    cmdCancel = NewButton(nullptr, "cmdCancel", u"Cancel"_s);
}

void frmAttach::LayOut() {
    auto *fileButtons = new QHBoxLayout;
    fileButtons->addWidget(cmdAddFile);
    fileButtons->addWidget(cmdRemoveFile);
    fileButtons->addStretch(1);
    fileButtons->addWidget(lblFilesize);
    auto *endButtons = new QHBoxLayout;
    endButtons->addStretch(1);
    endButtons->addWidget(cmdOK);
    endButtons->addWidget(cmdCancel);
    auto *all = new QVBoxLayout(this);
    all->addWidget(lstAttachments, 1);
    all->addLayout(fileButtons);
    all->addLayout(endButtons);
    lstAttachments->setMinimumHeight(4 * lstAttachments->fontMetrics().lineSpacing());
    resize(520, 320);
    cmdAddFile->setFocus();
}

void frmAttach::ConnectControls() {
    connect(cmdAddFile, &QPushButton::clicked, this, &frmAttach::cmdAddFile_Click);
    connect(cmdRemoveFile, &QPushButton::clicked, this, &frmAttach::cmdRemoveFile_Click);
    connect(cmdOK, &QPushButton::clicked, this, &frmAttach::cmdOK_Click);
    connect(cmdCancel, &QPushButton::clicked, this, &frmAttach::reject);
    connect(lstAttachments, &AttachmentBox::itemSelectionChanged, this, &frmAttach::lstAttachments_Click);
    connect(lstAttachments, &AttachmentBox::FilesDropped, this, &frmAttach::lstAttachments_OLEDragDrop);
    auto *deleteKey = new QShortcut(QKeySequence(Qt::Key_Delete), lstAttachments);
    deleteKey->setContext(Qt::WidgetShortcut);
    connect(deleteKey, &QShortcut::activated, this, &frmAttach::cmdRemoveFile_Click);
}

void frmAttach::Form_Load() {
    lstAttachments->addItems(AttachmentPaths(attachments_));
    RefreshFiles();
}

void frmAttach::cmdAddFile_Click() {
    const QString path =
        OpenFile(session_, AllFilesFilter(), session_.ProgramFolder, u"Select file to attach"_s);
    if (path.isEmpty())
        return;
    lstAttachments->addItem(path);
    RefreshFiles();
}

// The row that takes the removed one's place is selected, or the new last one, so that repeated clicks keep
// removing.
void frmAttach::cmdRemoveFile_Click() {
    const QList<QListWidgetItem *> selected = lstAttachments->selectedItems();
    if (selected.isEmpty())
        return;
    const int row = lstAttachments->row(selected.first());
    delete lstAttachments->takeItem(row);
    lstAttachments->setCurrentRow(qMin(row, lstAttachments->count() - 1));
    RefreshFiles();
}

void frmAttach::cmdOK_Click() {
    attachments_ = AttachmentArray(lstAttachments->Rows());
    accept();
}

void frmAttach::lstAttachments_Click() {
    const QList<QListWidgetItem *> selected = lstAttachments->selectedItems();
    cmdRemoveFile->setEnabled(!selected.isEmpty());
    if (!selected.isEmpty() && !selected.first()->text().isEmpty())
        lstAttachments->setToolTip(PlainToolTip(u"Current selection ["_s + selected.first()->text() + u']'));
}

// Wanted: a drop leaves the size as it was, so that hundreds of files on a slow share appear at once; the
// next add, remove or opening of the dialog counts them.
void frmAttach::lstAttachments_OLEDragDrop(const QList<QUrl> &urls) {
    lstAttachments->addItems(DroppedFiles(urls));
}

void frmAttach::RefreshFiles() {
    cmdRemoveFile->setEnabled(!lstAttachments->selectedItems().isEmpty());
    Trapped(session_, u"Attach.RefreshFiles"_s,
            [this] { lblFilesize->setText(AttachmentSummary(lstAttachments->Rows())); });
}

} // namespace varlo

#include "compose/AttachmentBox.h"

#include "compose/ElidedRows.h"

#include <QDropEvent>
#include <QMimeData>

namespace varlo {

namespace {

// Always a copy: a desktop that was told "move" would delete the operator's file.
void AcceptFiles(QDropEvent *event) {
    event->setDropAction(Qt::CopyAction);
    event->setAccepted(event->mimeData()->hasUrls());
}

} // namespace

AttachmentBox::AttachmentBox(QWidget *parent) : QListWidget(parent) {
    setDragDropMode(QAbstractItemView::DropOnly);
    setDropIndicatorShown(false); // files go to the end, wherever they are dropped
    setUniformItemSizes(true);
    new ElidedRows(this, Qt::ElideMiddle); // of a path, the end says which file it is
}

QStringList AttachmentBox::Rows() const {
    QStringList rows;
    for (int i = 0; i < count(); ++i)
        rows << item(i)->text();
    return rows;
}

void AttachmentBox::dragEnterEvent(QDragEnterEvent *event) {
    AcceptFiles(event);
}

void AttachmentBox::dragMoveEvent(QDragMoveEvent *event) {
    AcceptFiles(event);
}

void AttachmentBox::dropEvent(QDropEvent *event) {
    AcceptFiles(event);
    if (event->isAccepted())
        Q_EMIT FilesDropped(event->mimeData()->urls());
}

} // namespace varlo

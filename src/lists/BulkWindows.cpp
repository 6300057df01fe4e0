#include "lists/BulkWindows.h"

#include "lists/EntryListView.h"
#include "lists/ListStore.h"
#include "lists/frmCompare.h"
#include "lists/frmExport.h"
#include "lists/frmImport.h"

#include <QClipboard>
#include <QDropEvent>
#include <QGuiApplication>
#include <QMimeData>

namespace varlo {

BulkWindows::BulkWindows(Session &session, ListStore &lists, QWidget &page)
    : QObject(&page), session_(session), lists_(lists), page_(page) {
    // The whole page takes a drop: an empty list box is disabled, and what is dropped on it goes to the page.
    page.setAcceptDrops(true);
    page.installEventFilter(this);
    for (EntryListView *view : page.findChildren<EntryListView *>())
        connect(view, &EntryListView::PasteWanted, this, &BulkWindows::Paste);
}

bool BulkWindows::MayImport() const {
    return !isLocked_ && !lists_.Open.Name().isEmpty();
}

void BulkWindows::Import() {
    ImportFrom({});
}

bool BulkWindows::ImportText(const QString &text) {
    return ImportFrom({.Files = {}, .Text = text});
}

bool BulkWindows::ImportFrom(const ImportData &data) {
    if (!MayImport())
        return false;
    const OpenList::Hold hold(lists_.Open); // another list would be judged by than is imported into
    frmImport window(session_, lists_, page_.window());
    window.Take(data);
    return window.exec() == QDialog::Accepted;
}

void BulkWindows::Export() {
    const OpenList::Hold hold(lists_.Open);
    frmExport(session_, lists_, page_.window()).exec();
}

void BulkWindows::Compare() {
    const OpenList::Hold hold(lists_.Open);
    frmCompare window(session_, lists_, page_.window());
    connect(&window, &frmCompare::ListMade, this, &BulkWindows::ListMade);
    window.exec();
}

void BulkWindows::Paste() {
    const QMimeData *data = QGuiApplication::clipboard()->mimeData();
    if (const ImportData found = data ? ImportDataOf(*data) : ImportData(); !found.IsEmpty())
        ImportFrom(found);
}

bool BulkWindows::eventFilter(QObject *watched, QEvent *event) {
    const bool isDrop = event->type() == QEvent::Drop;
    if (!isDrop && event->type() != QEvent::DragEnter && event->type() != QEvent::DragMove)
        return QObject::eventFilter(watched, event);
    auto *drop = static_cast<QDropEvent *>(event);
    const ImportData data = ImportDataOf(*drop->mimeData());
    if (!MayImport() || data.IsEmpty())
        return false;
    // Always a copy: a desktop that was told "move" would delete the operator's file.
    drop->setDropAction(Qt::CopyAction);
    drop->accept();
    // The window comes an event later: the program that the drop comes from waits for its end.
    if (isDrop)
        QMetaObject::invokeMethod(
            this, [this, data] { ImportFrom(data); }, Qt::QueuedConnection);
    return true;
}

} // namespace varlo

#include "lists/ReviewTable.h"

#include "core/Literals.h"
#include "lists/ImportReview.h"

#include <QHeaderView>
#include <QKeyEvent>

namespace varlo {

ReviewTable::ReviewTable(QWidget *parent) : QTableView(parent) {
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::AnyKeyPressed);
    setTabKeyNavigation(false);
    setWordWrap(false);
    setShowGrid(false);
    verticalHeader()->hide();
    // All rows are as high as a line: measuring each of many thousands takes seconds.
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultSectionSize(fontMetrics().lineSpacing() + 6);
    horizontalHeader()->setStretchLastSection(true);
    horizontalHeader()
        ->hide(); // what stands there speaks for itself, and the header would be one more place to go to
}

void ReviewTable::keyPressEvent(QKeyEvent *event) {
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (!isEnter && event->key() != Qt::Key_F2)
        return QTableView::keyPressEvent(event);
    const QModelIndex address = currentIndex().siblingAtColumn(ImportReview::kAddress);
    if (address.flags() & Qt::ItemIsEditable)
        edit(address);
    event->accept(); // Enter does not press the default button from here
}

} // namespace varlo

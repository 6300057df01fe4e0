#include "lists/EntryListView.h"

#include "core/Literals.h"
#include "lists/HintColor.h"
#include "lists/ListStore.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QPainter>

namespace varlo {

EntryListView::EntryListView(ListStore &lists, int box, const QString &accessibleName, QWidget *parent)
    : QListView(parent), box_(lists.Box(box)) {
    setObjectName(u"lstEmailList_"_s + QString::number(box));
    setAccessibleName(accessibleName);
    setModel(&lists.Box(box).Model());
    QItemSelectionModel *ownSelection = selectionModel();
    setSelectionModel(&lists.Selection(box));
    delete ownSelection;
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setUniformItemSizes(true); // without it, 32,767 rows are measured one by one
    setLayoutMode(QListView::SinglePass);
    setVerticalScrollMode(QAbstractItemView::ScrollPerItem);
    for (const auto change : {&QAbstractItemModel::rowsInserted, &QAbstractItemModel::rowsRemoved})
        connect(model(), change, this, &EntryListView::TellHint);
    connect(model(), &QAbstractItemModel::modelReset, this, &EntryListView::TellHint);
}

void EntryListView::SetHint(const QString &hint) {
    hint_ = hint;
    TellHint();
}

void EntryListView::TellHint() {
    const QString hint = model()->rowCount() == 0 ? hint_ : QString();
    if (hint == accessibleDescription())
        return;
    setAccessibleDescription(hint);
    viewport()->update();
}

void EntryListView::paintEvent(QPaintEvent *event) {
    QListView::paintEvent(event);
    constexpr int margin = 16;
    QPainter painter(viewport());
    painter.setPen(HintColor(palette()));
    painter.drawText(viewport()->rect().adjusted(margin, margin, -margin, -margin),
                     Qt::AlignCenter | Qt::TextWordWrap, accessibleDescription());
}

void EntryListView::keyPressEvent(QKeyEvent *event) {
    if (event->matches(QKeySequence::Copy)) {
        CopySelection();
    } else if (event->matches(QKeySequence::Paste)) {
        Q_EMIT PasteWanted();
    } else if (event->matches(QKeySequence::Delete)) {
        Q_EMIT DeleteWanted();
    } else if (event->key() == Qt::Key_F2 && event->modifiers() == Qt::NoModifier) {
        Q_EMIT EditWanted();
    } else if (event->key() == Qt::Key_F10 && event->modifiers() == Qt::ShiftModifier) {
        OpenMenuAtCurrentRow(); // the menu key comes as an event of its own
    } else {
        const auto before = selectionModel()->selection();
        QListView::keyPressEvent(event);
        if (selectionModel()->selection() != before)
            Q_EMIT SelectionTouched();
    }
}

void EntryListView::CopySelection() const {
    const QStringList entries = box_.SelectedEntries();
    if (!entries.isEmpty())
        QGuiApplication::clipboard()->setText(entries.join(u'\n'));
}

// The right button asks for the menu of what is selected; beside a selection it does not drop it.
QItemSelectionModel::SelectionFlags EntryListView::selectionCommand(const QModelIndex &index,
                                                                    const QEvent *event) const {
    const bool isRightPress = event != nullptr && event->type() == QEvent::MouseButtonPress &&
                              static_cast<const QMouseEvent *>(event)->button() == Qt::RightButton;
    if (isRightPress && box_.SelectedCount() > 1)
        return QItemSelectionModel::NoUpdate;
    return QListView::selectionCommand(index, event);
}

void EntryListView::mouseReleaseEvent(QMouseEvent *event) {
    QListView::mouseReleaseEvent(event);
    if (event->button() == Qt::LeftButton)
        Q_EMIT SelectionTouched();
}

// The first click has selected the entry.
void EntryListView::mouseDoubleClickEvent(QMouseEvent *event) {
    const bool isPlain = event->button() == Qt::LeftButton && event->modifiers() == Qt::NoModifier;
    if (isPlain && indexAt(event->position().toPoint()).isValid())
        Q_EMIT EditWanted();
    else
        QListView::mouseDoubleClickEvent(event);
}

void EntryListView::contextMenuEvent(QContextMenuEvent *event) {
    if (event->reason() == QContextMenuEvent::Mouse)
        Q_EMIT MenuWanted(event->globalPos());
    else
        OpenMenuAtCurrentRow();
}

void EntryListView::OpenMenuAtCurrentRow() {
    scrollTo(currentIndex());
    Q_EMIT MenuWanted(viewport()->mapToGlobal(visualRect(currentIndex()).bottomLeft()));
}

} // namespace varlo

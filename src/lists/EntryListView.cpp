#include "lists/EntryListView.h"

#include "core/Literals.h"
#include "lists/FoundDelegate.h"
#include "lists/FoundRows.h"
#include "lists/HintColor.h"
#include "lists/ListStore.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QScopedValueRollback>

namespace varlo {

namespace {

// Sets the model of a view without the selection model that comes with it.
void ShowModel(QAbstractItemView &view, QAbstractItemModel *model, QItemSelectionModel *selection) {
    view.setModel(model);
    const QItemSelectionModel *own = view.selectionModel();
    view.setSelectionModel(selection);
    delete own;
}

int CountOf(const QItemSelection &selection) {
    int count = 0;
    for (const QItemSelectionRange &range : selection)
        count += range.height();
    return count;
}

} // namespace

EntryListView::EntryListView(ListStore &lists, int box, const QString &accessibleName, QWidget *parent)
    : QListView(parent), box_(lists.Box(box)), found_(std::make_unique<FoundRows>(box_.Model())),
      foundSelection_(std::make_unique<QItemSelectionModel>(found_.get())),
      foundDelegate_(new FoundDelegate(this)) {
    setObjectName(u"lstEmailList_"_s + QString::number(box));
    setAccessibleName(accessibleName);
    ShowAll();
    setItemDelegate(foundDelegate_);
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setUniformItemSizes(true); // without it, 32,767 rows are measured one by one
    setLayoutMode(QListView::SinglePass);
    setVerticalScrollMode(QAbstractItemView::ScrollPerItem);
    for (const auto change : {&QAbstractItemModel::rowsInserted, &QAbstractItemModel::rowsRemoved})
        connect(model(), change, this, &EntryListView::TellHint);
    connect(model(), &QAbstractItemModel::modelReset, this, &EntryListView::TellHint);
    connect(found_.get(), &FoundRows::FoundAnew, this, &EntryListView::ShowFound);
    connect(&box_.Selection(), &QItemSelectionModel::selectionChanged, this, &EntryListView::ShowSelection);
    connect(foundSelection_.get(), &QItemSelectionModel::selectionChanged, this,
            &EntryListView::TakeSelection);
}

EntryListView::~EntryListView() = default;

void EntryListView::SetHint(const QString &hint) {
    hint_ = hint;
    TellHint();
}

void EntryListView::TellHint() {
    const QString hint = model()->rowCount() > 0 ? QString()
                         : IsNarrowed()          ? u"No address on this list contains that text."_s
                                                 : hint_;
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

// ---- Some rows of the list

bool EntryListView::IsNarrowed() const {
    return model() == found_.get();
}

void EntryListView::Narrow(const QString &text) {
    if (text.isEmpty() && !IsNarrowed())
        return;
    found_->SetText(text);
    foundDelegate_->SetText(found_->Text());
    if (text.isEmpty())
        return ShowAll();
    if (!IsNarrowed())
        ShowModel(*this, found_.get(), foundSelection_.get());
    ShowSelection();
    TellHint();
}

void EntryListView::ShowAll() {
    ShowModel(*this, &box_.Model(), &box_.Selection());
    scrollTo(currentIndex());
    TellHint();
}

void EntryListView::ShowFound() {
    ShowSelection();
    TellHint();
    Q_EMIT FoundAnew();
}

void EntryListView::ShowSelection() {
    if (!IsNarrowed() || isTaking_)
        return;
    QList<int> shown;
    for (const int row : box_.SelectedRows())
        if (const int found = found_->RowFound(row); found >= 0)
            shown.append(found);
    const QScopedValueRollback taking(isTaking_, true);
    SelectExactly(*foundSelection_, shown);
}

void EntryListView::TakeSelection() {
    if (!IsNarrowed() || isTaking_)
        return;
    QList<int> rows;
    for (const QModelIndex &index : foundSelection_->selectedIndexes())
        rows.append(found_->RowOfBox(index.row()));
    std::sort(rows.begin(), rows.end());
    const QScopedValueRollback taking(isTaking_, true);
    box_.SelectRows(rows);
}

int EntryListView::HiddenSelectedCount() const {
    return IsNarrowed() ? box_.SelectedCount() - CountOf(foundSelection_->selection()) : 0;
}

// The right button asks for the menu of what is selected; beside a selection it does not drop it.
QItemSelectionModel::SelectionFlags EntryListView::selectionCommand(const QModelIndex &index,
                                                                    const QEvent *event) const {
    const bool isRightPress = event != nullptr && event->type() == QEvent::MouseButtonPress &&
                              static_cast<const QMouseEvent *>(event)->button() == Qt::RightButton;
    if (isRightPress && CountOf(selectionModel()->selection()) > 1)
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

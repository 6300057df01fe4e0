// One list box: shows the rows of a model, selects many, costs nothing for rows out of sight.
#pragma once

#include <QListView>

namespace varlo {

class ListBox;
class ListStore;

class EntryListView : public QListView {
    Q_OBJECT

public:
    // Shows box `box` of the store; its object name is "lstEmailList_" and the number.
    EntryListView(ListStore &lists, int box, const QString &accessibleName, QWidget *parent = nullptr);

    // What stands in the box while it is empty.
    void SetHint(const QString &hint);
    // Copies the selected entries, one a line.
    void CopySelection() const;

Q_SIGNALS:
    // The operator changed the selection with mouse or keyboard.
    void SelectionTouched();
    void DeleteWanted();
    void EditWanted();
    void PasteWanted();
    // The right button went down at `position` (of the screen), or a key asked for the menu at the current row.
    void MenuWanted(const QPoint &position);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex &index,
                                                         const QEvent *event) const override;

private:
    void OpenMenuAtCurrentRow();
    // A hint in place of entries is read to who does not see it.
    void TellHint();

    const ListBox &box_;
    QString hint_;
};

} // namespace varlo

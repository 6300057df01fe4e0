// One list box: shows the rows of a model, selects many, costs nothing for rows out of sight.
#pragma once

#include <QListView>

#include <memory>

namespace varlo {

class FoundDelegate;
class FoundRows;
class ListBox;
class ListStore;

class EntryListView : public QListView {
    Q_OBJECT

public:
    // Shows box `box` of the store; its object name is "lstEmailList_" and the number.
    EntryListView(ListStore &lists, int box, const QString &accessibleName, QWidget *parent = nullptr);
    ~EntryListView() override;

    // What stands in the box while it is empty.
    void SetHint(const QString &hint);
    // Copies the selected entries, one a line.
    void CopySelection() const;

    // Shows only the rows that contain `text`, letter case aside; all rows when it is empty. The list and its
    // selection stay as they are, until the operator selects something: then that is the selection.
    void Narrow(const QString &text);
    // How many rows are shown.
    int ShownCount() const { return model()->rowCount(); }
    // How many selected rows are not shown.
    int HiddenSelectedCount() const;

Q_SIGNALS:
    // The narrowed list has changed, and other rows are shown.
    void FoundAnew();
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
    bool IsNarrowed() const;
    void ShowFound();
    void ShowAll();
    // What of the list's selection is shown becomes the selection of the rows found; and the other way about.
    void ShowSelection();
    void TakeSelection();
    void OpenMenuAtCurrentRow();
    // A hint in place of entries is read to who does not see it.
    void TellHint();

    ListBox &box_;
    std::unique_ptr<FoundRows> found_;
    std::unique_ptr<QItemSelectionModel> foundSelection_;
    FoundDelegate *foundDelegate_;
    bool isTaking_ = false; // the selection of the rows found goes to the list
    QString hint_;
};

} // namespace varlo

// The rows of a list box that contain a text, as a model of their own: what is shown of a list while the operator
// looks for somebody.
#pragma once

#include "lists/EntryListModel.h"

#include <QAbstractListModel>

namespace varlo {

// Letter case does not matter. When the list changes, the rows found go at once, and are found anew in the next
// event turn: of many changes in a row nobody sees each.
class FoundRows : public QAbstractListModel {
    Q_OBJECT

public:
    // `entries` must outlive it.
    explicit FoundRows(const EntryListModel &entries, QObject *parent = nullptr);

    // Finds the rows that contain `text`; an empty text finds none and costs nothing.
    void SetText(const QString &text);
    const QString &Text() const { return text_; }

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;

    // The row of the list box that row `found` shows.
    int RowOfBox(int found) const { return rows_.at(found); }
    // The row that shows row `row` of the list box; -1 when it was not found.
    int RowFound(int row) const;

Q_SIGNALS:
    // The list has changed, and the rows have been found anew.
    void FoundAnew();

private:
    void Find();
    void Forget();

    const EntryListModel &entries_;
    QString text_;
    QList<int> rows_; // ascending
    bool isStale_ = false;
};

} // namespace varlo

// What was found for an import, beside what the lists hold.
#pragma once

#include "core/PendingRequest.h"
#include "core/Session.h"
#include "lists/ImportSearch.h"

#include <QAbstractTableModel>
#include <QHash>

namespace varlo {

class ListStore;

enum class ImportState {
    New,      // would be put on the Pending list
    OnList,   // "+": the open list has it already
    Absent,   // "-": the open list does not have it
    Pending,  // the same request waits already
    Repeated, // corrected into what another row is
    Unusable,
};

struct ImportCounts {
    int New = 0;
    int OnList = 0;
    int Absent = 0;
    int Pending = 0;
    int Repeated = 0; // finds of an address beyond its first
    int Unusable = 0;

    bool operator==(const ImportCounts &) const = default;
};

// A table with a row for each address: what is unusable first, then in the order of the text. What was unusable can
// be corrected in its place, and stays corrected when the text is looked through again.
class ImportReview : public QAbstractTableModel {
    Q_OBJECT

public:
    enum Column { kAddress, kPlace, kResult, kColumns };

    explicit ImportReview(const ListStore &lists, QObject *parent = nullptr);

    // Takes these in the place of those before.
    void SetItems(const QList<ImportItem> &items);
    // The requests that would come of them; subscribing, until told otherwise.
    void SetKind(RequestKind kind);
    RequestKind Kind() const { return kind_; }
    // Shows rows of one state only, or all.
    void SetFilter(std::optional<ImportState> state);
    // Looks at the lists again.
    void Judge();

    const ImportCounts &Counts() const { return counts_; }
    // "3 new, 1 already on the list, 2 repeated"; what there is none of is left out.
    QString CountsText() const;
    // The addresses that are new, in the order of the text.
    QStringList NewAddresses() const;

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    // A correction; false for an empty one, and where nothing is to be corrected.
    bool setData(const QModelIndex &index, const QVariant &value, int role = Qt::EditRole) override;

Q_SIGNALS:
    void CountsChanged();

private:
    struct Row {
        ImportItem Item;
        QString Address; // the correction, where there is one
        ImportState State = ImportState::New;
    };

    ImportState StateOf(const QString &address) const;
    void JudgeRows();
    void Count(const Row &row);
    void ShowRows();
    QString ResultText(const Row &row) const;
    const Row &At(const QModelIndex &index) const;

    const ListStore &lists_;
    RequestKind kind_ = RequestKind::Subscribe;
    std::optional<ImportState> filter_;
    QHash<QString, QString> corrections_; // by what stands in the text
    QList<Row> rows_;                     // in the order of the text
    QList<qsizetype> shown_;              // places in rows_
    ImportCounts counts_;
};

// Puts the new ones on the Pending list, as one step; the status line tells how many. Those that it has no room for
// stay out. How many came onto it. A failure is reported as "Import.cmdOK".
int ApplyImport(Session &session, ListStore &lists, const QStringList &addresses, RequestKind kind);

} // namespace varlo

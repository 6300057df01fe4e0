// The Pending list: requests that wait until they are processed. Never written to disk.
#pragma once

#include "core/PendingRequest.h"
#include "core/Session.h"
#include "lists/ListBox.h"

#include <QHash>

namespace varlo {

class PendingList : public ChangingList {
    Q_OBJECT

public:
    explicit PendingList(Session &session, QObject *parent = nullptr);

    // Its selection is anybody's, its entries are the list's.
    ListBox &Box() { return box_; }
    const ListBox &Box() const { return box_; }
    int Count() const { return box_.Model().Count(); }
    PendingRequest Request(int row) const { return PendingRequest::FromEntry(box_.Model().Entry(row)); }

    // All of them, each with where it came from. What was put on the list without a test has come from a list.
    QList<PendingRequest> Requests() const;

    enum class Answer { Added, Duplicate, Invalid };
    // Adds the request at the end if it passes the tests for its origin; the boxes and status lines are those
    // for its origin, too. Throws RuntimeError 6 when the list is full; for a typed request that is reported as
    // "Main.cmdEmailAdd" instead, and the routine carries on.
    Answer Offer(const PendingRequest &request);
    // Adds requests for these addresses at the end, with no test. Throws RuntimeError 6 after as many as fit.
    void AddAll(RequestKind kind, QStringList addresses);

    void Replace(int row, const PendingRequest &request);
    // Removes entries (ascending rows).
    void RemoveRows(const QList<int> &rows);
    void RemoveFirst(qsizetype count);

    // Makes the last entry the current item, so that it is in view. Nothing when the list is empty.
    void SelectLast();

private:
    Answer Judge(const PendingRequest &request);
    Answer JudgeTyped(const QString &address);
    bool IsNew(const QString &entry);
    void Append(const PendingRequest &request);
    void NoteOrigin(int row, RequestOrigin origin);
    template<typename Statement> void Step(RequestOrigin origin, Statement &&statement);

    Session &session_;
    QHash<quint32, RequestOrigin> origins_; // by the serials of the rows, which an undo brings back
    ListBox box_{EntryListModel::Order::Chronological};
};

} // namespace varlo

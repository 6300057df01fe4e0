#include "lists/PendingList.h"

#include "core/Reporting.h"
#include "lists/AddressRules.h"

#include <numeric>

namespace varlo {

PendingList::PendingList(Session &session, QObject *parent) : ChangingList(parent), session_(session) {
    connect(&box_, &ListBox::Touched, this, [this] { Touch(); });
}

// What is typed carries on after a statement that failed; every other way in ends with it.
template<typename Statement> void PendingList::Step(RequestOrigin origin, Statement &&statement) {
    if (origin == RequestOrigin::Typed)
        Trapped(session_, u"Main.cmdEmailAdd"_s, statement);
    else
        statement();
}

bool PendingList::IsNew(const QString &entry) {
    return IsNewAddress(session_, entry, box_.Model());
}

// An invalid address is told in a box and on the status line, and compared with nothing.
PendingList::Answer PendingList::JudgeTyped(const QString &address) {
    if (!IsValidAddress(session_, address, false)) {
        Step(RequestOrigin::Typed,
             [&] { StatusMessage(session_, u"The e-mail address ["_s + address + u"] is invalid"_s); });
        return Answer::Invalid;
    }
    bool isNew = true;
    Step(RequestOrigin::Typed, [&] { isNew = IsNew(address); });
    return isNew ? Answer::Added : Answer::Duplicate;
}

// The ways in differ, and that is wanted: in the order of the two tests, in whether the second is made after
// the first has failed, and in what is compared. The bare address never equals an entry with its sign, so the
// same address typed or copied twice is queued twice.
PendingList::Answer PendingList::Judge(const PendingRequest &request) {
    bool isNew = true;
    bool isValid = true;
    switch (request.Origin) {
    case RequestOrigin::Typed:
        return JudgeTyped(request.Address);
    case RequestOrigin::Clipboard:
        isNew = IsNew(request.Address);
        isValid = IsValidAddress(session_, request.Address, true);
        break;
    case RequestOrigin::Mailbox:
    case RequestOrigin::Import:
        isValid = IsValidAddress(session_, request.Address, true);
        isNew = IsNew(request.Entry());
        break;
    case RequestOrigin::FailedDelivery:
    case RequestOrigin::List:
        break;
    }
    if (!isValid)
        return Answer::Invalid;
    return isNew ? Answer::Added : Answer::Duplicate;
}

PendingList::Answer PendingList::Offer(const PendingRequest &request) {
    const Answer answer = Judge(request);
    if (answer == Answer::Added)
        Append(request);
    return answer;
}

void PendingList::Append(const PendingRequest &request) {
    const RequestOrigin origin = request.Origin;
    Step(origin, [&] {
        NoteOrigin(box_.Model().Add(request.Entry()), origin);
        // Those of a mail check or an import are many: the last one is shown when all have come.
        if (origin != RequestOrigin::Mailbox && origin != RequestOrigin::Import)
            SelectLast();
    });
    if (origin == RequestOrigin::Typed || origin == RequestOrigin::Clipboard)
        Step(origin,
             [&] { StatusMessage(session_, u"Added ["_s + request.Address + u"] to the pending list"_s); });
}

void PendingList::NoteOrigin(int row, RequestOrigin origin) {
    // Rows that have gone are remembered, for an undo; after many of them only those that are there.
    constexpr qsizetype most = qsizetype(8) * EntryListModel::kMostEntries;
    if (origins_.size() >= most) {
        QHash<quint32, RequestOrigin> kept;
        for (int i = 0; i < Count(); ++i)
            if (const auto found = origins_.constFind(box_.Model().Serial(i)); found != origins_.constEnd())
                kept.insert(found.key(), found.value());
        origins_ = kept;
    }
    origins_.insert(box_.Model().Serial(row), origin);
}

QList<PendingRequest> PendingList::Requests() const {
    QList<PendingRequest> requests;
    requests.reserve(Count());
    for (int row = 0; row < Count(); ++row) {
        requests.append(Request(row));
        requests.last().Origin = origins_.value(box_.Model().Serial(row), RequestOrigin::List);
    }
    return requests;
}

void PendingList::AddAll(RequestKind kind, QStringList addresses) {
    const QString sign = PendingRequest{kind, QString()}.Entry();
    for (QString &address : addresses)
        address.prepend(sign);
    box_.Model().AddAll(addresses);
}

void PendingList::Replace(int row, const PendingRequest &request) {
    box_.Model().Replace(row, request.Entry());
}

void PendingList::RemoveRows(const QList<int> &rows) {
    box_.Model().RemoveRows(rows);
}

void PendingList::RemoveFirst(qsizetype count) {
    QList<int> rows(count);
    std::iota(rows.begin(), rows.end(), 0);
    RemoveRows(rows);
}

void PendingList::SelectLast() {
    box_.Selection().setCurrentIndex(box_.Model().index(Count() - 1), QItemSelectionModel::NoUpdate);
}

} // namespace varlo

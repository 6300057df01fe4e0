#include "lists/ImportReview.h"

#include "core/Literals.h"
#include "core/Reporting.h"
#include "core/modPublic.h"
#include "lists/AddressRules.h"
#include "lists/ListStore.h"

#include <QSet>

namespace varlo {

namespace {

QString StateText(ImportState state) {
    switch (state) {
    case ImportState::New:
        return u"New"_s;
    case ImportState::OnList:
        return u"Already on the list"_s;
    case ImportState::Absent:
        return u"Not on the list"_s;
    case ImportState::Pending:
        return u"Already pending"_s;
    case ImportState::Repeated:
        return u"Repeated"_s;
    case ImportState::Unusable:
        break;
    }
    return {};
}

} // namespace

ImportReview::ImportReview(const ListStore &lists, QObject *parent)
    : QAbstractTableModel(parent), lists_(lists) {
}

void ImportReview::SetItems(const QList<ImportItem> &items) {
    rows_.clear();
    rows_.reserve(items.size());
    for (const ImportItem &item : items)
        rows_.append({item, corrections_.value(item.Address, item.Address)});
    Judge();
}

void ImportReview::SetKind(RequestKind kind) {
    kind_ = kind;
    Judge();
}

void ImportReview::SetFilter(std::optional<ImportState> state) {
    filter_ = state;
    ShowRows();
}

ImportState ImportReview::StateOf(const QString &address) const {
    if (!PassesAddressRules(address))
        return ImportState::Unusable;
    if (lists_.lstEmailList(kPending).FindFirst(PendingRequest{kind_, address}.Entry()) >= 0)
        return ImportState::Pending;
    const bool isOnList = lists_.lstEmailList(kChronological).FindFirst(address) >= 0;
    if (kind_ == RequestKind::Subscribe)
        return isOnList ? ImportState::OnList : ImportState::New;
    return isOnList ? ImportState::New : ImportState::Absent;
}

void ImportReview::Judge() {
    JudgeRows();
    ShowRows();
    Q_EMIT CountsChanged();
}

void ImportReview::JudgeRows() {
    counts_ = {};
    QSet<QString> seen;
    seen.reserve(rows_.size());
    for (Row &row : rows_) {
        row.State = StateOf(row.Address);
        const QString key = LowerCased(row.Address);
        if (row.State != ImportState::Unusable && seen.contains(key))
            row.State = ImportState::Repeated;
        seen.insert(key);
        Count(row);
    }
}

void ImportReview::Count(const Row &row) {
    counts_.New += row.State == ImportState::New ? 1 : 0;
    counts_.OnList += row.State == ImportState::OnList ? 1 : 0;
    counts_.Absent += row.State == ImportState::Absent ? 1 : 0;
    counts_.Pending += row.State == ImportState::Pending ? 1 : 0;
    counts_.Unusable += row.State == ImportState::Unusable ? 1 : 0;
    counts_.Repeated += row.Item.Times - (row.State == ImportState::Repeated ? 0 : 1);
}

void ImportReview::ShowRows() {
    beginResetModel();
    shown_.clear();
    const auto show = [this](bool isFaulty) {
        for (qsizetype i = 0; i < rows_.size(); ++i) {
            const bool isWanted = !filter_ || rows_[i].State == *filter_ ||
                                  (filter_ == ImportState::Repeated && rows_[i].Item.Times > 1);
            if (isWanted && (rows_[i].Item.Fault != AddressFault::None) == isFaulty)
                shown_.append(i);
        }
    };
    show(true);
    show(false);
    endResetModel();
}

QString ImportReview::CountsText() const {
    QStringList parts;
    const auto add = [&parts](int count, const QString &words) {
        if (count > 0)
            parts << QString::number(count) + words;
    };
    add(counts_.New, kind_ == RequestKind::Subscribe ? u" new"_s : u" to remove"_s);
    add(counts_.OnList, u" already on the list"_s);
    add(counts_.Absent, u" not on the list"_s);
    add(counts_.Pending, u" already pending"_s);
    add(counts_.Repeated, u" repeated"_s);
    add(counts_.Unusable, u" unusable"_s);
    return parts.isEmpty() ? u"No addresses found"_s : parts.join(u", "_s);
}

QStringList ImportReview::NewAddresses() const {
    QStringList addresses;
    for (const Row &row : rows_)
        if (row.State == ImportState::New)
            addresses << row.Address;
    return addresses;
}

int ImportReview::rowCount(const QModelIndex &parent) const {
    return parent.isValid() ? 0 : static_cast<int>(shown_.size());
}

int ImportReview::columnCount(const QModelIndex &parent) const {
    return parent.isValid() ? 0 : kColumns;
}

const ImportReview::Row &ImportReview::At(const QModelIndex &index) const {
    return rows_.at(shown_.at(index.row()));
}

QString ImportReview::ResultText(const Row &row) const {
    if (row.State == ImportState::Unusable)
        return FaultText(row.Address);
    const QString text = row.State == ImportState::New && kind_ == RequestKind::Unsubscribe
                             ? u"To remove"_s
                             : StateText(row.State);
    return row.Item.Times > 1 ? text + u" (%1 times here)"_s.arg(row.Item.Times) : text;
}

QVariant ImportReview::data(const QModelIndex &index, int role) const {
    if (!index.isValid() || (role != Qt::DisplayRole && role != Qt::EditRole))
        return {};
    const Row &row = At(index);
    if (index.column() == kAddress)
        return row.Address;
    if (index.column() == kResult)
        return ResultText(row);
    const QString line = u"line %1"_s.arg(row.Item.Line);
    return row.Item.Source.isEmpty() ? line : row.Item.Source + u", "_s + line;
}

QVariant ImportReview::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    return QStringList{u"Address"_s, u"Where"_s, u"Result"_s}.value(section);
}

Qt::ItemFlags ImportReview::flags(const QModelIndex &index) const {
    const Qt::ItemFlags flags = QAbstractTableModel::flags(index);
    const bool isFaulty = index.isValid() && At(index).Item.Fault != AddressFault::None;
    return isFaulty && index.column() == kAddress ? flags | Qt::ItemIsEditable : flags;
}

bool ImportReview::setData(const QModelIndex &index, const QVariant &value, int role) {
    const QString address = CleanTypedAddress(value.toString());
    if (role != Qt::EditRole || !(flags(index) & Qt::ItemIsEditable) || address.isEmpty())
        return false;
    const QString original = At(index).Item.Address;
    corrections_.insert(original, address);
    for (Row &row : rows_)
        if (row.Item.Address == original)
            row.Address = address;
    JudgeRows();
    // Without a filter the rows stay where they are, and so does the operator.
    if (filter_)
        ShowRows();
    else
        Q_EMIT dataChanged(this->index(0, 0), this->index(rowCount() - 1, kColumns - 1));
    Q_EMIT CountsChanged();
    return true;
}

int ApplyImport(Session &session, ListStore &lists, const QStringList &addresses, RequestKind kind) {
    int added = 0;
    ListStep step(lists.Undo, u"Import "_s + AddressesText(addresses.size()));
    Trapped(session, u"Import.cmdOK"_s, [&] {
        const int room = EntryListModel::kMostEntries - lists.Pending.Count();
        for (const QString &address : addresses.first(qMin<qsizetype>(room, addresses.size())))
            if (lists.Pending.Offer({kind, address, RequestOrigin::Import}) == PendingList::Answer::Added)
                ++added;
        lists.Pending.SelectLast();
        step.SetText(u"Import "_s + AddressesText(added));
        StatusMessage(session, u"Imported %1 to the pending list"_s.arg(AddressesText(added).toLower()));
    });
    return added;
}

} // namespace varlo

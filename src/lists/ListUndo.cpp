#include "lists/ListUndo.h"

#include "core/Literals.h"
#include "core/RuntimeError.h"
#include "lists/OpenList.h"
#include "lists/PendingList.h"

#include <QSet>

#include <utility>

namespace varlo {

namespace {

EntryListModel &ModelOf(OpenList &open, PendingList &pending, size_t box) {
    return box == kPending ? pending.Box().Model() : open.Box(static_cast<int>(box)).Model();
}

// What was changed in place stays; what is new came from elsewhere.
void LeaveArrivals(RowsChange &change) {
    QSet<quint32> changed;
    for (const EntryRow &row : std::as_const(change.Removed))
        changed.insert(row.Serial);
    change.Added.removeIf([&](const EntryRow &row) { return !changed.contains(row.Serial); });
}

} // namespace

ListUndo::ListUndo(OpenList &open, PendingList &pending) : open_(open), pending_(pending) {
    for (size_t box = 0; box < current_.Boxes.size(); ++box)
        ModelOf(open_, pending_, box).RecordTo(&current_.Boxes[box]);
    current_.Before = open_.Revision();
    connect(&open_, &OpenList::Changed, this, &ListUndo::CloseTurn);
    connect(&pending_, &PendingList::Changed, this, &ListUndo::CloseTurn);
    connect(&open_, &OpenList::Loaded, this, &ListUndo::ForgetOpen);
    connect(&open_, &OpenList::Closed, this, &ListUndo::ForgetOpen);
}

ListUndo::~ListUndo() {
    for (size_t box = 0; box < current_.Boxes.size(); ++box)
        ModelOf(open_, pending_, box).RecordTo(nullptr);
}

bool ListUndo::Step::IsEmpty() const {
    return std::all_of(Boxes.begin(), Boxes.end(), [](const RowsChange &change) { return change.IsEmpty(); });
}

// ---- Recording

void ListUndo::Begin(const QString &text) {
    if (depth_ == 0) {
        CloseTurn();
        current_.Text = text;
    }
    ++depth_;
}

void ListUndo::End() {
    if (--depth_ > 0)
        return;
    if (std::exchange(leavesArrivals_, false))
        LeaveArrivals(current_.Boxes[kPending]);
    CloseStep(TakeStep());
}

ListUndo::Step ListUndo::TakeStep() {
    Step next;
    next.Before = open_.Revision();
    return std::exchange(current_, std::move(next));
}

// What nobody called by a name is called by what it did.
void ListUndo::CloseTurn() {
    if (depth_ > 0)
        return;
    Step step = TakeStep();
    step.After = open_.Revision();
    step.IsArrival = !step.TouchesOpen() && step.Boxes[kPending].Removed.isEmpty();
    step.Text = step.IsArrival ? u"Add Requests"_s : u"Change of the Lists"_s;
    CloseStep(std::move(step));
}

void ListUndo::CloseStep(Step step) {
    step.After = open_.Revision();
    for (size_t box = 0; box < step.Boxes.size(); ++box)
        step.Boxes[box].Settle(box == kAlphabetical);
    if (!step.IsEmpty())
        Push(std::move(step));
}

void ListUndo::Push(Step step) {
    redo_.clear();
    if (step.IsArrival && !undo_.empty() && undo_.back().IsArrival) {
        undo_.back().Boxes[kPending].Added += step.Boxes[kPending].Added;
        return;
    }
    undo_.push_back(std::move(step));
    if (undo_.size() > kMostSteps)
        undo_.pop_front();
}

// Steps hang together by the Pending list: what is older than one that changed both lists goes with it.
void ListUndo::ForgetOpen() {
    CloseTurn();
    for (std::deque<Step> *steps : {&undo_, &redo_}) {
        std::deque<Step> kept;
        for (auto step = steps->rbegin(); step != steps->rend(); ++step) {
            if (step->TouchesOpen() && step->TouchesPending())
                break;
            if (!step->TouchesOpen())
                kept.push_front(std::move(*step));
        }
        *steps = std::move(kept);
    }
    current_.Before = open_.Revision();
}

// ---- Going back and forth

QString ListUndo::UndoText() const {
    return depth_ > 0 || undo_.empty() ? QString() : undo_.back().Text;
}

QString ListUndo::RedoText() const {
    return depth_ > 0 || redo_.empty() ? QString() : redo_.back().Text;
}

void ListUndo::Undo() {
    CloseTurn();
    if (depth_ > 0 || undo_.empty())
        return;
    Apply(undo_.back(), true);
    redo_.push_back(std::move(undo_.back()));
    undo_.pop_back();
}

void ListUndo::Redo() {
    CloseTurn();
    if (depth_ > 0 || redo_.empty())
        return;
    Apply(redo_.back(), false);
    undo_.push_back(std::move(redo_.back()));
    redo_.pop_back();
}

void ListUndo::Apply(const Step &step, bool back) {
    const auto out = back ? &RowsChange::Added : &RowsChange::Removed;
    const auto in = back ? &RowsChange::Removed : &RowsChange::Added;
    for (size_t box = 0; box < step.Boxes.size(); ++box)
        if (const RowsChange &change = step.Boxes[box];
            !ModelOf(open_, pending_, box).HasRoomFor((change.*out).size(), (change.*in).size()))
            throw RuntimeError(Overflow);
    for (size_t box = 0; box < step.Boxes.size(); ++box)
        if (const RowsChange &change = step.Boxes[box]; !change.IsEmpty())
            ModelOf(open_, pending_, box).Exchange(change.*out, change.*in);
    if (step.TouchesOpen())
        open_.ReturnTo(back ? step.Before : step.After);
    current_.Before = open_.Revision();
}

QStringList ListUndo::TextsSinceSaved() const {
    QStringList texts;
    for (auto step = undo_.rbegin(); step != undo_.rend() && !open_.IsSavedRevision(step->After); ++step)
        if (step->TouchesOpen())
            texts.prepend(step->Text);
    return texts;
}

QString DescribeSteps(const QStringList &texts) {
    constexpr qsizetype kLongest = 200;
    QStringList described;
    for (qsizetype i = 0; i < texts.size();) {
        const qsizetype first = i;
        while (i < texts.size() && texts[i] == texts[first])
            ++i;
        described.append(i == first + 1 ? texts[first]
                                        : texts[first] + u" ("_s + QString::number(i - first) + u')');
    }
    const QString text = described.join(u", "_s);
    return text.size() <= kLongest ? text : text.first(kLongest - 3) + u"..."_s;
}

QString AddressesText(qsizetype count) {
    return QString::number(count) + (count == 1 ? u" Address"_s : u" Addresses"_s);
}

} // namespace varlo

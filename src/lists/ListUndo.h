// Going back and forth through the changes of the open list and the Pending list.
#pragma once

#include "lists/RowsChange.h"

#include <QObject>

#include <array>
#include <deque>

namespace varlo {

class OpenList;
class PendingList;

// Every change of the three list boxes is recorded, whoever makes it. What is done while a ListStep lives is one
// step; what is done without one is a step for each event turn. A step costs the memory of the rows that came
// and went, texts shared with the boxes. Another list in the place of the open one takes the steps back to it
// along; those that changed the Pending list alone stay.
class ListUndo : public QObject {
    Q_OBJECT

public:
    static constexpr size_t kMostSteps = 100;

    ListUndo(OpenList &open, PendingList &pending);
    ~ListUndo() override;

    // What Undo and Redo would go back and forth over, such as "Delete 3 Addresses"; empty when there is nothing,
    // or while a step is under way.
    QString UndoText() const;
    QString RedoText() const;
    // Go back over the last step, or forth again. The open list counts as saved again where its file has what it
    // then holds. Nothing when there is no such step. Throw RuntimeError 6 when a list would become too long; it
    // has not changed then.
    void Undo();
    void Redo();

    // What the steps since the open list was last loaded or saved are called, the oldest first.
    QStringList TextsSinceSaved() const;

private:
    friend class ListStep;

    struct Step {
        QString Text;
        std::array<RowsChange, 3> Boxes{};
        quint64 Before = 0; // revisions of the open list
        quint64 After = 0;
        bool IsArrival = false; // requests that came by themselves: one step, however many

        bool IsEmpty() const;
        // Also when an address came and went again: the list has to be saved since.
        bool TouchesOpen() const { return !Boxes[0].IsEmpty() || !Boxes[1].IsEmpty() || Before != After; }
        bool TouchesPending() const { return !Boxes[2].IsEmpty(); }
    };

    void Begin(const QString &text);
    void End();
    Step TakeStep();
    void CloseStep(Step step);
    void CloseTurn();
    void Push(Step step);
    void Apply(const Step &step, bool back);
    void ForgetOpen();

    OpenList &open_;
    PendingList &pending_;
    Step current_;
    std::deque<Step> undo_;
    std::deque<Step> redo_;
    int depth_ = 0; // ListSteps that live
    bool leavesArrivals_ = false;
};

// While it lives, all changes of the lists are one step, called `text` (title case, as it goes on after "Undo").
// A step within a step is part of the outer one.
class ListStep {
public:
    ListStep(ListUndo &undo, const QString &text) : undo_(undo) { undo_.Begin(text); }
    ~ListStep() { undo_.End(); }
    ListStep(const ListStep &) = delete;
    ListStep &operator=(const ListStep &) = delete;

    // Another text, once it is known what came of it.
    void SetText(const QString &text) { undo_.current_.Text = text; }
    // Requests that arrive on the Pending list meanwhile are not part of the step: for one that goes on from
    // event to event.
    void LeaveArrivals() { undo_.leavesArrivals_ = true; }

private:
    ListUndo &undo_;
};

// "Edit (2), Delete 1 Address": the texts in a row, equal ones that follow each other counted; long ones end in dots.
QString DescribeSteps(const QStringList &texts);

// "1 Address", "3 Addresses": for the text of a step.
QString AddressesText(qsizetype count);

} // namespace varlo

#include "compose/UndoHistory.h"

#include "core/Literals.h"
#include "core/RuntimeError.h"

#include <QRandomGenerator>
#include <gtest/gtest.h>

#include <array>

namespace varlo {
namespace {

const QString kNoState = u"smeebux"_s;

QStringList Slots(const UndoHistory &history, int first, int last = UndoHistory::kNewest) {
    QStringList texts;
    for (int i = first; i <= last; ++i)
        texts << history.Slot(i);
    return texts;
}

UndoHistory After(const QStringList &texts) {
    UndoHistory history;
    for (const QString &text : texts)
        history.Record(text);
    return history;
}

// The history as it is described, slot by slot, to compare with.
struct PlainHistory {
    std::array<QString, 100> slots_;
    int position = 99;

    PlainHistory() { slots_.fill(kNoState); }
    void Record(const QString &text) {
        std::array<QString, 100> next;
        next.fill(kNoState);
        for (int from = position, to = 98; from >= 0 && to >= 0; --from, --to)
            next[static_cast<size_t>(to)] = slots_[static_cast<size_t>(from)];
        next[99] = text;
        slots_ = next;
        position = 99;
    }
    bool Move(int by) {
        const int to = position + by;
        if (to < 0 || to > 99 || slots_[static_cast<size_t>(to)] == kNoState)
            return false;
        position = to;
        return true;
    }
    QString Shown() const { return slots_[static_cast<size_t>(position)]; }
};

TEST(UndoHistory, StartsWithTheSentinelInEverySlot) {
    const UndoHistory history;
    EXPECT_EQ(Slots(history, 0), QStringList(QList<QString>(100, kNoState)));
    EXPECT_EQ(history.Position(), 99);
}

TEST(UndoHistory, HasNoSlotOutsideOfZeroToNinetyNine) {
    const UndoHistory history;
    EXPECT_THROW(history.Slot(-1), RuntimeError);
    EXPECT_THROW(history.Slot(100), RuntimeError);
}

TEST(UndoHistory, RecordShiftsTheStatesDown) {
    const UndoHistory history = After({"a", "ab", "abc"});
    EXPECT_EQ(Slots(history, 96), QStringList({kNoState, "a", "ab", "abc"}));
}

TEST(UndoHistory, DoesNotLeadBackBeforeTheFirstChange) {
    UndoHistory history = After({"a"});
    EXPECT_FALSE(history.Undo());
    EXPECT_EQ(history.Shown(), "a");
}

TEST(UndoHistory, NothingRecordedNothingUndoneOrRedone) {
    UndoHistory history;
    EXPECT_FALSE(history.Undo());
    EXPECT_FALSE(history.Redo());
    EXPECT_EQ(history.Position(), 99);
}

TEST(UndoHistory, UndoLowersThePositionWhileTheSlotsStay) {
    UndoHistory history = After({"a", "ab", "abc"});
    EXPECT_TRUE(history.Undo());
    EXPECT_EQ(history.Position(), 98);
    EXPECT_EQ(history.Shown(), "ab");
    EXPECT_EQ(Slots(history, 96), QStringList({kNoState, "a", "ab", "abc"}));
}

TEST(UndoHistory, RedoRaisesItAgain) {
    UndoHistory history = After({"a", "ab", "abc"});
    history.Undo();
    history.Undo();
    EXPECT_TRUE(history.Redo());
    EXPECT_TRUE(history.Redo());
    EXPECT_FALSE(history.Redo());
    EXPECT_EQ(history.Shown(), "abc");
    EXPECT_EQ(history.Position(), 99);
}

TEST(UndoHistory, OneHundredFiftyEditsLetNinetyNineBeUndone) {
    UndoHistory history;
    for (int i = 1; i <= 150; ++i)
        history.Record(QString::number(i));
    int undone = 0;
    for (int i = 0; i < 150; ++i)
        undone += history.Undo();
    EXPECT_EQ(undone, 99);
    EXPECT_EQ(history.Shown(), "51");
    EXPECT_EQ(history.Position(), 0);
}

TEST(UndoHistory, TypingAfterTwoUndosDropsTheUndoneStates) {
    UndoHistory history = After({"a", "ab", "abc", "abcd"});
    history.Undo();
    history.Undo();
    history.Record("abX");
    EXPECT_FALSE(history.Redo());
    EXPECT_EQ(history.Position(), 99);
    EXPECT_EQ(Slots(history, 95), QStringList({kNoState, kNoState, "a", "ab", "abX"}));
}

TEST(UndoHistory, TypingAfterNinetyNineUndosKeepsTheShownState) {
    UndoHistory history;
    for (int i = 1; i <= 100; ++i)
        history.Record(QString::number(i));
    while (history.Undo()) {
    }
    history.Record("1x");
    EXPECT_EQ(Slots(history, 97), QStringList({kNoState, "1", "1x"}));
}

TEST(UndoHistory, RecordsNothingWhileSuppressed) {
    UndoHistory history = After({"a", "ab"});
    history.Suppress = true;
    history.Record("b");
    history.Suppress = false;
    EXPECT_EQ(Slots(history, 97), QStringList({kNoState, "a", "ab"}));
}

TEST(UndoHistory, ATextThatReadsLikeTheSentinelStopsUndo) {
    UndoHistory history = After({"a", kNoState, "b"});
    EXPECT_FALSE(history.Undo());
    EXPECT_EQ(history.Shown(), "b");
}

TEST(UndoHistory, ATextThatReadsLikeTheSentinelStopsRedoWithoutLosingTheOthers) {
    UndoHistory history = After({"a", kNoState});
    EXPECT_TRUE(history.Undo());
    EXPECT_EQ(history.Shown(), "a");
    EXPECT_FALSE(history.Redo());
    history.Record("ab");
    EXPECT_TRUE(history.Undo());
    EXPECT_EQ(history.Shown(), "a");
}

TEST(UndoHistory, ClearForgetsEverything) {
    UndoHistory history = After({"a", "ab"});
    history.Clear();
    EXPECT_EQ(Slots(history, 98), QStringList({kNoState, kNoState}));
    EXPECT_FALSE(history.Undo());
}

TEST(UndoHistory, EveryStateComesBackExactlyThroughRandomEdits) {
    QRandomGenerator random(20260304);
    UndoHistory history;
    PlainHistory plain;
    QString text;
    for (int i = 0; i < 3000; ++i) {
        const auto choice = random.bounded(4);
        if (choice == 0) {
            ASSERT_EQ(history.Undo(), plain.Move(-1));
        } else if (choice == 1) {
            ASSERT_EQ(history.Redo(), plain.Move(1));
        } else {
            const qsizetype at = random.bounded(static_cast<int>(text.size()) + 1);
            const qsizetype gone = random.bounded(static_cast<int>(text.size() - at) + 1);
            text.replace(at, gone, QString(random.bounded(6), QChar(u'a' + random.bounded(2))));
            history.Record(text);
            plain.Record(text);
        }
        ASSERT_EQ(history.Position(), plain.position);
        if (plain.Shown() != kNoState) {
            ASSERT_EQ(history.Shown(), plain.Shown());
            text = plain.Shown();
        }
    }
    EXPECT_EQ(Slots(history, 0), QStringList(plain.slots_.begin(), plain.slots_.end()));
}

TEST(UndoHistory, AHundredStatesOfAMegabyteShareWhatIsEqual) {
    UndoHistory history;
    QString text(1'000'000, u'x');
    for (int i = 0; i < 150; ++i) {
        text[i * 6000] = u'y';
        history.Record(text);
    }
    EXPECT_LT(history.StoredBytes(), 2'500'000);
    for (int i = 0; i < 50; ++i)
        history.Undo();
    EXPECT_LT(history.StoredBytes(), 2'500'000);
    EXPECT_EQ(history.Shown().count(u'y'), 100);
    EXPECT_EQ(history.Slot(99), text);
}

TEST(CaretAfterUndo, StaysBeforeASignatureThatClosesTheMessage) {
    EXPECT_EQ(CaretAfterUndo("Hello\r\nJo\r\nHill", "Jo\r\nHill"), 5);
}

TEST(CaretAfterUndo, GoesToTheEndWithoutTheSignature) {
    EXPECT_EQ(CaretAfterUndo("Hello\r\nBye", "Jo"), 10);
}

TEST(CaretAfterUndo, NeedsTheLineBreakBeforeTheSignature) {
    EXPECT_EQ(CaretAfterUndo("Jo", "Jo"), 2);
}

TEST(CaretAfterUndo, CountsFromTheEndEvenWhenTextFollowsTheSignature) {
    EXPECT_EQ(CaretAfterUndo("Hi\r\nJo and more", "Jo"), 11);
}

TEST(CaretAfterUndo, GoesToTheEndWhenThereIsNoSignature) {
    EXPECT_EQ(CaretAfterUndo("Hello\r\nBye", ""), 10);
}

} // namespace
} // namespace varlo

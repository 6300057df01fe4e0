#include "lists/ControlStates.h"

#include <gtest/gtest.h>

namespace varlo {
namespace {

TEST(ControlStatesTest, NothingIsEnabledInAnEmptyProfile) {
    EXPECT_EQ(ComputeControlStates({}), ControlStates{});
}

TEST(ControlStatesTest, EachConditionEnablesItsOwnRowAndNoOther) {
    EXPECT_EQ(ComputeControlStates({.HasLists = true}), ControlStates{.cmbMList = true});
    EXPECT_EQ(ComputeControlStates({.HasOpenList = true}), ControlStates{.OpenList = true});
    EXPECT_EQ(ComputeControlStates({.HasTypedAddress = true}), ControlStates{.TypedAddress = true});
    EXPECT_EQ(ComputeControlStates({.HasCurrent = true}), ControlStates{.Current = true});
    EXPECT_EQ(ComputeControlStates({.HasCurrentSelection = true}), ControlStates{.CurrentSelection = true});
    EXPECT_EQ(ComputeControlStates({.HasPending = true}), ControlStates{.Pending = true});
    EXPECT_EQ(ComputeControlStates({.HasPendingSelection = true}), ControlStates{.PendingSelection = true});
}

} // namespace
} // namespace varlo

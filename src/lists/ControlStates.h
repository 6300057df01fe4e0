// Which controls of the main window are enabled, as one table.
#pragma once

namespace varlo {

// What the table looks at.
struct ListSituation {
    bool HasLists = false;        // the list chooser has entries
    bool HasOpenList = false;     // its text is not empty
    bool HasTypedAddress = false; // the address box holds text
    bool HasCurrent = false;      // the open list has entries
    bool HasCurrentSelection = false;
    bool HasPending = false;
    bool HasPendingSelection = false;
};

struct ControlStates {
    bool cmbMList = false;
    // cmdFileRename, txtAddEmail, cmdAutoAdd, cmdCapture, chkInstantAdd
    bool OpenList = false;
    // both cmdEmailAdd, cmdEmailValidate
    bool TypedAddress = false;
    // the sort menu, cmdListSort, cmdListFind, both Current list boxes, mnuListsCurrent
    bool Current = false;
    // the Current cmdListEdit and cmdListDelete, both mnuListsCurrentCopy, mnuListsCurrentDeSelAll
    bool CurrentSelection = false;
    // lstEmailList(2), cmdCapturesAdd, mnuListsPending
    bool Pending = false;
    // the Pending cmdListEdit and cmdListDelete, cmdListSwap, both mnuListsPendingCopy,
    // mnuListsPendingDeSelAll
    bool PendingSelection = false;

    bool operator==(const ControlStates &) const = default;
};

constexpr ControlStates ComputeControlStates(const ListSituation &now) {
    return {.cmbMList = now.HasLists,
            .OpenList = now.HasOpenList,
            .TypedAddress = now.HasTypedAddress,
            .Current = now.HasCurrent,
            .CurrentSelection = now.HasCurrentSelection,
            .Pending = now.HasPending,
            .PendingSelection = now.HasPendingSelection};
}

} // namespace varlo

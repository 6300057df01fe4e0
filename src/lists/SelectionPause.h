// Takes a scattered selection off a list box while many of its entries come or go one by one.
#pragma once

#include <QSet>

namespace varlo {

class ListStore;

// Each entry that comes or goes costs a look at every separate range of the selection: half a minute for
// 32,767 requests after a search that found every other entry. While an object lives the box has no
// selection; at its end the entries that were selected and are still there are selected again. A selection of
// few ranges is left alone.
class SelectionPause {
public:
    SelectionPause(ListStore &lists, int box);
    ~SelectionPause();
    SelectionPause(const SelectionPause &) = delete;
    SelectionPause &operator=(const SelectionPause &) = delete;

private:
    ListStore &lists_;
    const int box_;
    QSet<quint32> serials_; // of the selected entries
};

} // namespace varlo

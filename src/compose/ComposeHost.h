// What the compose window needs of the main window, and nothing more.
#pragma once

#include <QStringList>

namespace varlo {

struct ComposeHost {
    virtual ~ComposeHost() = default;

    // The names of the mailing lists (no path, no extension), in the order in which the operator sees them.
    virtual QStringList ListNames() const = 0;
    // The name of the open list; empty when none is open.
    virtual QString CurrentListName() const = 0;
    // The selected rows of the visible Current list box, from first to last.
    virtual QStringList SelectedAddresses() const = 0;
    // Puts one entry, a sign and an address, on the Pending list.
    virtual void AddPending(const QString &entry) = 0;
};

} // namespace varlo

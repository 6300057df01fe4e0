// What the compose window needs of the main window, and nothing more.
#pragma once

#include "core/PendingRequest.h"

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
    // Offers a request to the Pending list.
    virtual void Offer(const PendingRequest &request) = 0;

    // The files to send along, full paths; a single empty element means none. They outlast a compose window.
    QStringList Attachments{QString()};
};

} // namespace varlo

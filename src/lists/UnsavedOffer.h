// The offer to take up what was kept of a list when the program had to end.
#pragma once

#include "core/NoticeBar.h"
#include "core/Session.h"

namespace varlo {

class OpenList;

// The bar "barUnsaved". It looks for a kept file whenever another list has been opened; it is shown until the
// offer is taken up, refused or closed. Closed, it is there again at the next load of that list.
class UnsavedOffer : public NoticeBar {
    Q_OBJECT

public:
    UnsavedOffer(Session &session, OpenList &list, QWidget *parent = nullptr);

private:
    void Refresh();
    void cmdUnsavedRestore_Click();
    void cmdUnsavedDiscard_Click();

    Session &session_;
    OpenList &list_;
    QString shownFor_; // the list that the bar has last looked at
};

} // namespace varlo

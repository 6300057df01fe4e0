// What the status bar shows of the lists, beside the latest message.
#pragma once

#include "core/Session.h"

#include <QObject>

class QLabel;
class QStatusBar;

namespace varlo {

class ListsPage;
class StatusLabel;

// The open profile, whether the open list is saved, and how many entries are selected and there. Follows the lists by
// itself.
class ListsStatus : public QObject {
    Q_OBJECT

public:
    // Puts its labels at the end of `bar`, which owns it.
    ListsStatus(Session &session, const ListsPage &page, QStatusBar &bar);

private:
    template<typename Label> Label *AddLabel(const char *name, const QString &text);
    void Refresh(int current, int pending);

    Session &session_;
    const ListsPage &page_;
    QStatusBar &bar_;
    StatusLabel *lblStatusProfile = nullptr;
    QLabel *lblStatusSaved = nullptr;
    QLabel *lblStatusSelected = nullptr;
    QLabel *lblStatusCurrent = nullptr;
    QLabel *lblStatusPending = nullptr;
};

} // namespace varlo

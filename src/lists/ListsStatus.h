// What the status bar shows of the lists, beside the latest message.
#pragma once

#include "core/Session.h"

#include <QWidget>

class QLabel;

namespace varlo {

class ListsPage;
class StatusLabel;

// The open profile, whether the open list is saved, and how many entries are selected and there. Follows the lists by
// itself.
class ListsStatus : public QWidget {
    Q_OBJECT

public:
    ListsStatus(Session &session, const ListsPage &page, QWidget *parent = nullptr);

private:
    QLabel *AddLabel(const char *name, const QString &text);
    void Refresh(int current, int pending);

    Session &session_;
    const ListsPage &page_;
    StatusLabel *lblStatusProfile = nullptr;
    QLabel *lblStatusSaved = nullptr;
    QLabel *lblStatusSelected = nullptr;
    QLabel *lblStatusCurrent = nullptr;
    QLabel *lblStatusPending = nullptr;
};

} // namespace varlo

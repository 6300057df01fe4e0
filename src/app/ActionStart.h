// Notices that the operator does something new.
#pragma once

#include "core/Session.h"

#include <QObject>

namespace varlo {

// An event filter for the whole program: with a key or a mouse button pressed outside message boxes an action
// begins, and trouble with the logs is told once more (Session::LogTrouble).
class ActionStart : public QObject {
    Q_OBJECT

public:
    explicit ActionStart(Session &session, QObject *parent = nullptr) : QObject(parent), session_(session) {}

    bool eventFilter(QObject *receiver, QEvent *event) override;

private:
    Session &session_;
};

} // namespace varlo

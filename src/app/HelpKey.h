// F1: the help about the window that it is pressed in.
#pragma once

#include "core/Session.h"

#include <QObject>

namespace varlo {

// An event filter for the whole program. A box belongs to the window that raised it.
class HelpKey : public QObject {
    Q_OBJECT

public:
    explicit HelpKey(Session &session, QObject *parent = nullptr) : QObject(parent), session_(session) {}

    bool eventFilter(QObject *receiver, QEvent *event) override;

private:
    Session &session_;
};

} // namespace varlo

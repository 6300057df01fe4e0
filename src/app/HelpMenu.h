// The menu "Help": the help, the read-me page, the maker's pages and the About box.
#pragma once

#include "core/Session.h"

#include <QMenu>
#include <QUrl>

namespace varlo {

class HelpMenu : public QMenu {
    Q_OBJECT

public:
    explicit HelpMenu(Session &session, QWidget *parent = nullptr);

private:
    // An entry that hands `target` to the desktop; failures are reported under "Main." and its name.
    void AddTarget(QMenu *menu, const char *name, const QString &caption, const QUrl &target);

    Session &session_;
};

} // namespace varlo

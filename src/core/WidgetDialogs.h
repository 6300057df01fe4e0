// The door to boxes as the operator meets it: Qt's own message boxes, input boxes and file choosers.
#pragma once

#include "core/Dialogs.h"

namespace varlo {

class WidgetDialogs : public Dialogs {
public:
    BoxAnswer MsgBox(const QString &text, BoxButtons buttons, BoxIcon icon, const QString &title) override;
    BoxAnswer AskToDestroy(const QString &text, BoxIcon icon, const QString &title) override;
    QString InputBox(const QString &prompt, const QString &title, const QString &text) override;
    QString OpenFileBox(const QString &filter, const QString &folder, const QString &title) override;
    QString SaveFileBox(const QString &filter, const QString &folder, const QString &title) override;
    QString FolderBox(const QString &folder, const QString &title) override;
    bool OpenUrl(const QUrl &url) override;
    void SetHourglass(bool on) override;
};

} // namespace varlo

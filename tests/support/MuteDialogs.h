// A door to boxes behind which nobody is: for benchmarks and fuzz targets, where a box is no part of what is looked at.
#pragma once

#include "core/Dialogs.h"

namespace varlo::test {

// Message boxes are answered with Ok, everything else is cancelled.
class MuteDialogs : public Dialogs {
public:
    BoxAnswer MsgBox(const QString &, BoxButtons, BoxIcon, const QString &) override { return BoxAnswer::Ok; }
    QString InputBox(const QString &, const QString &, const QString &) override { return {}; }
    QString OpenFileBox(const QString &, const QString &, const QString &) override { return {}; }
    QString SaveFileBox(const QString &, const QString &, const QString &) override { return {}; }
    QString FolderBox(const QString &, const QString &) override { return {}; }
    bool OpenUrl(const QUrl &) override { return false; }
    void SetHourglass(bool) override {}
};

} // namespace varlo::test

// Files that are dropped anywhere on a window.
#pragma once

#include <QList>
#include <QObject>
#include <QUrl>

class QDropEvent;
class QWidget;

namespace varlo {

// Belongs to `window` and takes files before its text boxes, which would insert their names, get them. Whatever
// else is dropped stays theirs. Make it when every control is there.
class FileDrops : public QObject {
    Q_OBJECT

public:
    explicit FileDrops(QWidget *window);

    // Whether what is dragged there are files of this machine; it is then accepted as a copy.
    static bool Accept(QDropEvent *event);

Q_SIGNALS:
    void Dropped(const QList<QUrl> &urls);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
};

} // namespace varlo

#include "compose/FileDrops.h"

#include <QDropEvent>
#include <QMimeData>
#include <QWidget>

#include <algorithm>

namespace varlo {

FileDrops::FileDrops(QWidget *window) : QObject(window) {
    window->setAcceptDrops(true);
    window->installEventFilter(this);
    for (QWidget *control : window->findChildren<QWidget *>())
        if (control->acceptDrops())
            control->installEventFilter(this);
}

bool FileDrops::Accept(QDropEvent *event) {
    const QList<QUrl> urls = event->mimeData()->urls();
    const bool areFiles =
        std::any_of(urls.begin(), urls.end(), [](const QUrl &url) { return url.isLocalFile(); });
    if (areFiles) {
        // Always a copy: a desktop that was told "move" would delete the operator's file.
        event->setDropAction(Qt::CopyAction);
        event->accept();
    }
    return areFiles;
}

bool FileDrops::eventFilter(QObject *watched, QEvent *event) {
    switch (event->type()) {
    case QEvent::DragEnter:
    case QEvent::DragMove:
        return Accept(static_cast<QDropEvent *>(event));
    case QEvent::Drop: {
        auto *drop = static_cast<QDropEvent *>(event);
        const bool areFiles = Accept(drop);
        if (areFiles)
            Q_EMIT Dropped(drop->mimeData()->urls());
        return areFiles;
    }
    default:
        return QObject::eventFilter(watched, event);
    }
}

} // namespace varlo

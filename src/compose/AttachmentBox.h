// The list box of attachments: a list of paths onto which files can be dropped from the desktop.
#pragma once

#include <QListWidget>
#include <QUrl>

namespace varlo {

class AttachmentBox : public QListWidget {
    Q_OBJECT

public:
    explicit AttachmentBox(QWidget *parent = nullptr);

    // The text of every row, from first to last.
    QStringList Rows() const;

Q_SIGNALS:
    void FilesDropped(const QList<QUrl> &urls);

protected:
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragMoveEvent(QDragMoveEvent *event) override;
    void dropEvent(QDropEvent *event) override;
};

} // namespace varlo

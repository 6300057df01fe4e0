// A thin bar at the top of a window for news and offers that need no box.
#pragma once

#include <QFrame>

class QPushButton;
class QToolButton;

namespace varlo {

class StatusLabel;

// One sentence, one or two buttons, and a cross that closes the bar. Hidden until Say is called; a click on one
// of its buttons does not hide it by itself. Put it first in the layout of the window that it concerns.
class NoticeBar : public QFrame {
    Q_OBJECT

public:
    // `name` becomes the object name, such as "barUnsaved".
    explicit NoticeBar(const char *name, QWidget *parent = nullptr);

    // A button after those that are there; `name` becomes its object name. The bar owns it.
    QPushButton *AddButton(const char *name, const QString &caption, const QString &toolTip = {});

    // Shows the bar with this sentence (plain text; one line, and the whole as a tooltip where it does not fit) and
    // tells screen readers of it.
    void Say(const QString &sentence);
    QString Sentence() const;

Q_SIGNALS:
    // The operator closed the bar by its cross: the offer is neither taken up nor refused.
    void Closed();

private:
    StatusLabel *lblNotice = nullptr;
    QToolButton *cmdNoticeClose = nullptr;
};

} // namespace varlo

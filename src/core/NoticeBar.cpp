#include "core/NoticeBar.h"

#include "core/Buttons.h"
#include "core/Literals.h"
#include "core/StatusLabel.h"

#include <QAccessible>
#include <QHBoxLayout>
#include <QPushButton>
#include <QStyle>
#include <QToolButton>

namespace varlo {

NoticeBar::NoticeBar(const char *name, QWidget *parent) : QFrame(parent) {
    setObjectName(QString::fromLatin1(name));
    setFrameShape(QFrame::StyledPanel);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum); // as thin as its sentence allows
    setAutoFillBackground(true);
    setBackgroundRole(QPalette::ToolTipBase);
    lblNotice = new StatusLabel(this);
    lblNotice->setObjectName(u"lblNotice"_s);
    lblNotice->setForegroundRole(QPalette::ToolTipText);
    cmdNoticeClose = new QToolButton(this);
    cmdNoticeClose->setObjectName(u"cmdNoticeClose"_s);
    cmdNoticeClose->setIcon(style()->standardIcon(QStyle::SP_TitleBarCloseButton));
    cmdNoticeClose->setAutoRaise(true);
    cmdNoticeClose->setFocusPolicy(Qt::TabFocus);
    cmdNoticeClose->setAccessibleName(u"Close"_s);
    cmdNoticeClose->setToolTip(u"Close this notice"_s);
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(8, 3, 3, 3);
    row->addWidget(lblNotice, 1);
    row->addWidget(cmdNoticeClose);
    connect(cmdNoticeClose, &QToolButton::clicked, this, [this] {
        hide();
        Q_EMIT Closed();
    });
    hide();
}

QPushButton *NoticeBar::AddButton(const char *name, const QString &caption, const QString &toolTip) {
    QPushButton *button = NewButton(this, name, caption, toolTip);
    auto *row = static_cast<QHBoxLayout *>(layout());
    row->insertWidget(row->count() - 1, button);
    setTabOrder(button, cmdNoticeClose);
    return button;
}

void NoticeBar::Say(const QString &sentence) {
    lblNotice->setText(sentence);
    setAccessibleName(sentence);
    show();
    QAccessibleEvent alert(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

QString NoticeBar::Sentence() const {
    return lblNotice->text();
}

} // namespace varlo

#include "lists/ListsStatus.h"

#include "core/Literals.h"
#include "core/StatusLabel.h"
#include "lists/ListsPage.h"

#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>

namespace varlo {

namespace {

constexpr int kProfileLetters = 12; // that fit; a longer name ends in dots and is told by its tooltip

} // namespace

ListsStatus::ListsStatus(Session &session, const ListsPage &page, QWidget *parent)
    : QWidget(parent), session_(session), page_(page) {
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    lblStatusProfile = new StatusLabel(this);
    lblStatusProfile->setObjectName(u"lblStatusProfile"_s);
    lblStatusProfile->setMaximumWidth(kProfileLetters * fontMetrics().averageCharWidth());
    row->addWidget(lblStatusProfile);
    lblStatusSaved = AddLabel("lblStatusSaved", {});
    lblStatusSelected = AddLabel("lblStatusSelected", {});
    lblStatusCurrent = AddLabel("lblStatusCurrent", u"0 Current"_s);
    lblStatusPending = AddLabel("lblStatusPending", u"0 Pending"_s);
    connect(&page_, &ListsPage::CountsChanged, this, &ListsStatus::Refresh);
}

QLabel *ListsStatus::AddLabel(const char *name, const QString &text) {
    auto *label = new QLabel(text, this);
    label->setObjectName(QString::fromLatin1(name));
    layout()->addWidget(label);
    return label;
}

// What there is nothing to say of takes no room.
void ListsStatus::Refresh(int current, int pending) {
    const ListStore &lists = page_.Lists();
    const int selected = lists.SelectedCount(lists.VisibleBox()) + lists.SelectedCount(kPending);
    lblStatusProfile->setText(QFileInfo(session_.ProfilePath).fileName());
    lblStatusSaved->setText(lists.Open.IsSaved() ? QString() : u"Not saved"_s);
    lblStatusSaved->setVisible(!lists.Open.IsSaved());
    lblStatusSelected->setText(QString::number(selected) + u" Selected"_s);
    lblStatusSelected->setVisible(selected > 0);
    lblStatusCurrent->setText(QString::number(current) + u" Current"_s);
    lblStatusPending->setText(QString::number(pending) + u" Pending"_s);
}

} // namespace varlo

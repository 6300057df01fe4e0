#include "lists/ListsStatus.h"

#include "core/Literals.h"
#include "core/StatusLabel.h"
#include "lists/ListsPage.h"

#include <QFileInfo>
#include <QLabel>
#include <QStatusBar>

namespace varlo {

namespace {

constexpr int kProfileLetters = 16; // that fit; a longer name ends in dots and is told by its tooltip

} // namespace

ListsStatus::ListsStatus(Session &session, const ListsPage &page, QStatusBar &bar)
    : QObject(&bar), session_(session), page_(page), bar_(bar) {
    lblStatusProfile = AddLabel<StatusLabel>("lblStatusProfile", {});
    // As tall as the labels beside it, so that their texts stand on one line.
    lblStatusProfile->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    lblStatusProfile->setMaximumWidth(kProfileLetters * bar.fontMetrics().averageCharWidth());
    lblStatusSaved = AddLabel<QLabel>("lblStatusSaved", {});
    lblStatusSelected = AddLabel<QLabel>("lblStatusSelected", {});
    lblStatusCurrent = AddLabel<QLabel>("lblStatusCurrent", u"0 Current"_s);
    lblStatusPending = AddLabel<QLabel>("lblStatusPending", u"0 Pending"_s);
    connect(&page_, &ListsPage::CountsChanged, this, &ListsStatus::Refresh);
}

template<typename Label> Label *ListsStatus::AddLabel(const char *name, const QString &text) {
    auto *label = new Label(text, &bar_);
    label->setObjectName(QString::fromLatin1(name));
    bar_.addPermanentWidget(label);
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

#include "prefs/NotificationPage.h"

#include "core/Literals.h"
#include "prefs/PageControls.h"

namespace varlo {

NotificationPage::NotificationPage()
    : PreferencesPage(Page::Notification, u"E-mail Notification"_s,
                      u"Settings for notifying subscribers by e-mail"_s) {
    AddSubscriptions();
    AddUnsubscriptions();
}

void NotificationPage::AddSubscriptions() {
    auto *subject = NewLine("txtNotifySubSubject");
    auto *body = NewTextBox("txtNotifySubBody");
    QFormLayout *rows = NewRows(AddGroup(Group::Subscriptions, u"Subscriptions"_s));
    rows->addRow(NewLabel(u"&Subject:"_s, subject), subject);
    rows->addRow(NewLabel(u"&Body:"_s, body), body);
    body->setMinimumHeight(body->fontMetrics().lineSpacing() * 4);
    Tie(subject, &Preferences::SubSubject);
    Tie(body, &Preferences::SubBody);
}

void NotificationPage::AddUnsubscriptions() {
    auto *subject = NewLine("txtNotifyUnsubSubject");
    auto *body = NewTextBox("txtNotifyUnsubBody");
    QFormLayout *rows = NewRows(AddGroup(Group::Unsubscriptions, u"Unsubscriptions"_s));
    rows->addRow(NewLabel(u"S&ubject:"_s, subject), subject);
    rows->addRow(NewLabel(u"B&ody:"_s, body), body);
    body->setMinimumHeight(body->fontMetrics().lineSpacing() * 4);
    Tie(subject, &Preferences::UnsubSubject);
    Tie(body, &Preferences::UnsubBody);
}

} // namespace varlo

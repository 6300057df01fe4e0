// What the operator can see, as JSON values.
#pragma once

#include <QJsonObject>
#include <QJsonValue>
#include <QWidget>

namespace varlo::e2e {

// The text that a control shows: its contents, caption or value, whatever it has. Throws Refusal.
QJsonValue TextOf(QWidget *widget);

// Any property of the object, "visible", "enabled" or "checked" among them. Throws Refusal when there is
// none.
QJsonValue PropertyOf(QWidget *widget, const QString &property);

// The entries of a list, tree or combo box, top to bottom: texts, or lists of texts with several columns.
// `count` entries from `first` on; below 0: all.
QJsonValue ItemsOf(QWidget *widget, int first, int count);

// The rows that are selected in a list, in order; of a combo box the current one.
QJsonValue SelectedRowsOf(QWidget *widget);

// All visible windows: object name, class, title, and whether it is active or modal.
QJsonValue Windows();

// The open box: title, text, buttons, and the text of its input line or file name if it has one.
QJsonValue DescribeBox(QWidget *box);

} // namespace varlo::e2e

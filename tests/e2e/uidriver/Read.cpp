#include "Read.h"

#include "Find.h"
#include "core/Literals.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QGroupBox>
#include <QInputDialog>
#include <QJsonArray>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QTextDocumentFragment>
#include <QTextEdit>

#include <algorithm>

namespace varlo::e2e {

namespace {

const QAbstractItemModel *ModelOf(QWidget *widget) {
    if (const auto *combo = qobject_cast<QComboBox *>(widget))
        return combo->model();
    return As<QAbstractItemView>(widget)->model();
}

QJsonValue Entry(const QAbstractItemModel &model, int row) {
    if (model.columnCount() <= 1)
        return model.index(row, 0).data().toString();
    QJsonArray columns;
    for (int column = 0; column < model.columnCount(); ++column)
        columns << model.index(row, column).data().toString();
    return columns;
}

// What a label shows of a text that may be markup.
QString Shown(const QString &text) {
    return Qt::mightBeRichText(text) ? QTextDocumentFragment::fromHtml(text).toPlainText() : text;
}

QJsonArray ButtonsOf(const QWidget *box) {
    QJsonArray captions;
    for (const QAbstractButton *button : box->findChildren<QAbstractButton *>())
        if (button->isVisible() && !button->text().isEmpty())
            captions << Plain(button->text());
    return captions;
}

} // namespace

QJsonValue TextOf(QWidget *widget) {
    if (const auto *editor = qobject_cast<QPlainTextEdit *>(widget))
        return editor->toPlainText();
    if (const auto *editor = qobject_cast<QTextEdit *>(widget))
        return editor->toPlainText();
    if (const auto *button = qobject_cast<QAbstractButton *>(widget))
        return Plain(button->text());
    for (const char *property : {"text", "currentText", "title", "value", "windowTitle"})
        if (const QVariant value = widget->property(property); value.isValid())
            return QJsonValue::fromVariant(value);
    throw Refusal{widget->objectName() + u" shows no text"_s};
}

QJsonValue PropertyOf(QWidget *widget, const QString &property) {
    const QVariant value = widget->property(property.toUtf8().constData());
    if (!value.isValid())
        throw Refusal{widget->objectName() + u" has no property "_s + property};
    const QJsonValue json = QJsonValue::fromVariant(value);
    return json.isNull() ? QJsonValue(value.toString()) : json;
}

QJsonValue ItemsOf(QWidget *widget, int first, int count) {
    const QAbstractItemModel *model = ModelOf(widget);
    QJsonArray entries;
    if (!model)
        return entries;
    const int rows = model->rowCount();
    const int end = count < 0 ? rows : std::min(rows, first + count);
    for (int row = first; row < end; ++row)
        entries << Entry(*model, row);
    return entries;
}

QJsonValue SelectedRowsOf(QWidget *widget) {
    if (const auto *combo = qobject_cast<QComboBox *>(widget))
        return combo->currentIndex() < 0 ? QJsonArray() : QJsonArray{combo->currentIndex()};
    std::vector<int> rows;
    for (const QModelIndex &index : As<QAbstractItemView>(widget)->selectionModel()->selectedIndexes())
        rows.push_back(index.row());
    std::sort(rows.begin(), rows.end());
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    QJsonArray found;
    for (const int row : rows)
        found << row;
    return found;
}

QJsonValue Windows() {
    QJsonArray windows;
    for (const QWidget *window : QApplication::topLevelWidgets())
        if (window->isVisible())
            windows << QJsonObject{{u"name"_s, window->objectName()},
                                   {u"class"_s, QString::fromLatin1(window->metaObject()->className())},
                                   {u"title"_s, window->windowTitle()},
                                   {u"active"_s, window == QApplication::activeWindow()},
                                   {u"modal"_s, window->isModal()}};
    return windows;
}

QJsonValue DescribeBox(QWidget *box) {
    QJsonObject seen{{u"title"_s, box->windowTitle()},
                     {u"class"_s, QString::fromLatin1(box->metaObject()->className())},
                     {u"name"_s, box->objectName()},
                     {u"buttons"_s, ButtonsOf(box)}};
    if (const auto *message = qobject_cast<QMessageBox *>(box))
        seen.insert(u"text"_s, message->text());
    if (const auto *input = qobject_cast<QInputDialog *>(box))
        seen.insert(u"text"_s, Shown(input->labelText()));
    const auto lines = box->findChildren<QLineEdit *>();
    if (lines.size() == 1)
        seen.insert(u"input"_s, lines.first()->text());
    return seen;
}

} // namespace varlo::e2e

#include "lists/ImportText.h"

#include <QMimeData>
#include <QUrl>

namespace varlo {

ImportData ImportDataOf(const QMimeData &data) {
    ImportData found;
    for (const QUrl &url : data.urls())
        if (url.isLocalFile())
            found.Files << url.toLocalFile();
    if (found.Files.isEmpty())
        found.Text = data.text();
    return found;
}

ImportText::ImportText(QWidget *parent) : QPlainTextEdit(parent) {
    setTabChangesFocus(true);
}

bool ImportText::canInsertFromMimeData(const QMimeData *source) const {
    return !ImportDataOf(*source).IsEmpty();
}

void ImportText::insertFromMimeData(const QMimeData *source) {
    const ImportData pasted = ImportDataOf(*source);
    if (!pasted.Files.isEmpty())
        Q_EMIT FilesPasted(pasted.Files);
    else if (pasted.Text.size() > kLongest)
        Q_EMIT LongTextPasted(pasted.Text);
    else
        insertPlainText(pasted.Text);
}

} // namespace varlo

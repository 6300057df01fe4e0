#include "core/WidgetDialogs.h"

#include "core/Literals.h"

#include <QApplication>
#include <QDesktopServices>
#include <QFileDialog>
#include <QInputDialog>
#include <QLineEdit>
#include <QMessageBox>

namespace varlo {

namespace {

QMessageBox::Icon IconOf(BoxIcon icon) {
    switch (icon) {
    case BoxIcon::Information:
        return QMessageBox::Information;
    case BoxIcon::Exclamation:
        return QMessageBox::Warning;
    case BoxIcon::Critical:
        return QMessageBox::Critical;
    case BoxIcon::Question:
        return QMessageBox::Question;
    case BoxIcon::None:
        break;
    }
    return QMessageBox::NoIcon;
}

QMessageBox::StandardButtons ButtonsOf(BoxButtons buttons) {
    switch (buttons) {
    case BoxButtons::OkCancel:
        return QMessageBox::Ok | QMessageBox::Cancel;
    case BoxButtons::YesNo:
        return QMessageBox::Yes | QMessageBox::No;
    case BoxButtons::YesNoCancel:
        return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
    case BoxButtons::Ok:
        break;
    }
    return QMessageBox::Ok;
}

BoxAnswer AnswerOf(int button) {
    switch (button) {
    case QMessageBox::Yes:
        return BoxAnswer::Yes;
    case QMessageBox::No:
        return BoxAnswer::No;
    case QMessageBox::Cancel:
        return BoxAnswer::Cancel;
    default:
        return BoxAnswer::Ok;
    }
}

// CR LF and a lone CR are line breaks in the program's texts; Qt knows the line feed.
QString WithLineFeeds(QString text) {
    return text.replace(u"\r\n"_s, u"\n"_s).replace(u'\r', u'\n');
}

// "All Files\0*.*" to "All Files (*)": on Linux a name without a point is a file, too.
QString QtFilter(const QString &pairs) {
    const QStringList parts = pairs.split(u'\0', Qt::SkipEmptyParts);
    QStringList filters;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        const QString pattern = parts[i + 1] == u"*.*"_s ? u"*"_s : parts[i + 1];
        filters << parts[i] + u" ("_s + pattern + u')';
    }
    return filters.join(u";;"_s);
}

} // namespace

BoxAnswer WidgetDialogs::MsgBox(const QString &text, BoxButtons buttons, BoxIcon icon, const QString &title) {
    // An hourglass over a box that waits for a click would tell the operator to wait for himself.
    const bool hourglass = QGuiApplication::overrideCursor() != nullptr;
    SetHourglass(false);
    QMessageBox box(IconOf(icon), title, WithLineFeeds(text), ButtonsOf(buttons),
                    QApplication::activeWindow());
    box.setTextFormat(Qt::PlainText);
    const BoxAnswer answer = AnswerOf(box.exec());
    SetHourglass(hourglass);
    return answer;
}

QString WidgetDialogs::InputBox(const QString &prompt, const QString &title, const QString &text) {
    QInputDialog box(QApplication::activeWindow());
    box.setWindowTitle(title);
    // The label of an input box guesses whether its text is markup; escaped and marked as such, it never is.
    box.setLabelText(u"<html>"_s + WithLineFeeds(prompt).toHtmlEscaped().replace(u'\n', u"<br>"_s));
    box.setTextValue(text);
    box.resize(qMax(box.sizeHint().width(), 380), box.sizeHint().height());
    return box.exec() == QDialog::Accepted ? box.textValue() : QString();
}

QString WidgetDialogs::OpenFileBox(const QString &filter, const QString &folder, const QString &title) {
    return QFileDialog::getOpenFileName(QApplication::activeWindow(), title, folder, QtFilter(filter));
}

QString WidgetDialogs::SaveFileBox(const QString &filter, const QString &folder, const QString &title) {
    return QFileDialog::getSaveFileName(QApplication::activeWindow(), title, folder, QtFilter(filter));
}

QString WidgetDialogs::FolderBox(const QString &folder, const QString &title) {
    return QFileDialog::getExistingDirectory(QApplication::activeWindow(), title, folder);
}

bool WidgetDialogs::OpenUrl(const QUrl &url) {
    return QDesktopServices::openUrl(url);
}

void WidgetDialogs::SetHourglass(bool on) {
    while (QGuiApplication::overrideCursor())
        QGuiApplication::restoreOverrideCursor();
    if (on)
        QGuiApplication::setOverrideCursor(Qt::WaitCursor);
}

} // namespace varlo

#include "core/WidgetDialogs.h"

#include "core/BoxPlace.h"
#include "core/Literals.h"
#include "core/MessageBox.h"

#include <QApplication>
#include <QDesktopServices>
#include <QFileDialog>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QScreen>

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

// `pressed` is no button at all when the program ended under the box: nobody agreed to anything then.
BoxAnswer AnswerOf(int pressed, BoxButtons buttons) {
    switch (pressed) {
    case QMessageBox::Yes:
        return BoxAnswer::Yes;
    case QMessageBox::No:
        return BoxAnswer::No;
    case QMessageBox::Cancel:
        return BoxAnswer::Cancel;
    case QMessageBox::Ok:
        return BoxAnswer::Ok;
    default:
        break;
    }
    if (buttons == BoxButtons::YesNo)
        return BoxAnswer::No;
    return buttons == BoxButtons::Ok ? BoxAnswer::Ok : BoxAnswer::Cancel;
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

// The label of an input box guesses whether its text is markup, and takes an ampersand for a mnemonic of the box
// beside it: marked as markup, escaped, blanks kept and parted from that box, it shows names as they are.
void ShowPrompt(QInputDialog &box, const QString &prompt, const QString &value) {
    box.setTextValue(value);
    box.sizeHint(); // lays the controls out, and so makes them
    auto *label = box.findChild<QLabel *>();
    label->setBuddy(nullptr); // before the text comes: an ampersand once taken for a mnemonic is gone
    const QString text =
        Breakable(WithLineFeeds(prompt), QChar(0x200B)).toHtmlEscaped().replace(u'\n', u"<br>"_s);
    box.setLabelText(u"<html><span style=\"white-space: pre-wrap\">"_s + text + u"</span>"_s);
    label->setWordWrap(label->sizeHint().width() > box.screen()->availableSize().width() / 2);
    box.findChild<QLineEdit *>()->setAccessibleName(prompt);
    RemoveButtonIcons(box);
}

QString Chosen(QFileDialog &box) {
    KeepAbove(box);
    return box.exec() == QDialog::Accepted ? box.selectedFiles().value(0) : QString();
}

BoxAnswer Show(QMessageBox &box, BoxButtons buttons) {
    KeepAbove(box);
    return AnswerOf(box.exec(), buttons);
}

// An hourglass over a box that waits for a click would tell the operator to wait for himself.
class WithoutHourglass {
public:
    explicit WithoutHourglass(Dialogs &boxes)
        : boxes_(boxes), wasOn_(QGuiApplication::overrideCursor() != nullptr) {
        boxes_.SetHourglass(false);
    }
    ~WithoutHourglass() { boxes_.SetHourglass(wasOn_); }
    WithoutHourglass(const WithoutHourglass &) = delete;
    WithoutHourglass &operator=(const WithoutHourglass &) = delete;

private:
    Dialogs &boxes_;
    const bool wasOn_;
};

} // namespace

BoxAnswer WidgetDialogs::MsgBox(const QString &text, BoxButtons buttons, BoxIcon icon, const QString &title) {
    const WithoutHourglass waiting(*this);
    MessageBox box(IconOf(icon), title, WithLineFeeds(text), ButtonsOf(buttons), BoxParent());
    return Show(box, buttons);
}

BoxAnswer WidgetDialogs::AskToDestroy(const QString &text, BoxIcon icon, const QString &title) {
    const WithoutHourglass waiting(*this);
    MessageBox box(IconOf(icon), title, WithLineFeeds(text), ButtonsOf(BoxButtons::YesNo), BoxParent());
    box.setDefaultButton(QMessageBox::No);
    return Show(box, BoxButtons::YesNo);
}

QString WidgetDialogs::InputBox(const QString &prompt, const QString &title, const QString &text) {
    QInputDialog box(BoxParent());
    box.setWindowTitle(title);
    ShowPrompt(box, prompt, text);
    KeepAbove(box);
    box.resize(qMax(box.sizeHint().width(), 380), box.sizeHint().height());
    return box.exec() == QDialog::Accepted ? box.textValue() : QString();
}

QString WidgetDialogs::OpenFileBox(const QString &filter, const QString &folder, const QString &title) {
    QFileDialog box(BoxParent(), title, folder, QtFilter(filter));
    box.setFileMode(QFileDialog::ExistingFile);
    return Chosen(box);
}

QString WidgetDialogs::SaveFileBox(const QString &filter, const QString &folder, const QString &title) {
    QFileDialog box(BoxParent(), title, folder, QtFilter(filter));
    box.setAcceptMode(QFileDialog::AcceptSave);
    return Chosen(box);
}

QString WidgetDialogs::FolderBox(const QString &folder, const QString &title) {
    QFileDialog box(BoxParent(), title, folder);
    box.setFileMode(QFileDialog::Directory);
    box.setOption(QFileDialog::ShowDirsOnly);
    return Chosen(box);
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

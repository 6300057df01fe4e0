// A developer's tool: takes a picture of every window of the room, for a person's eye.
//
//     QT_QPA_PLATFORM=offscreen QT_SCALE_FACTOR=2 compose_pictures FOLDER [dark]

#include "compose/ComposeHost.h"
#include "compose/frmAttach.h"
#include "compose/frmCompRecip.h"
#include "compose/frmCompose.h"
#include "support/TestProfile.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QStyleFactory>

namespace {

using namespace varlo;

struct Host : ComposeHost {
    QStringList ListNames() const override { return {"Announcements", "Members", "Newsletter"}; }
    QString CurrentListName() const override { return QStringLiteral("Newsletter"); }
    QStringList SelectedAddresses() const override { return {QStringLiteral("ann@example.org")}; }
    void AddPending(const QString &) override {}
};

void UseDarkColours() {
    QPalette dark;
    dark.setColor(QPalette::Window, QColor(45, 45, 45));
    dark.setColor(QPalette::Base, QColor(30, 30, 30));
    dark.setColor(QPalette::Button, QColor(60, 60, 60));
    for (QPalette::ColorRole role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::BrightText})
        dark.setColor(role, QColor(230, 230, 230));
    dark.setColor(QPalette::Highlight, QColor(42, 110, 190));
    dark.setColor(QPalette::HighlightedText, Qt::white);
    dark.setColor(QPalette::PlaceholderText, QColor(150, 150, 150));
    for (QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        dark.setColor(QPalette::Disabled, role, QColor(128, 128, 128));
    QApplication::setPalette(dark);
}

void TakePicture(QWidget &window, const QString &name) {
    window.show();
    QCoreApplication::processEvents();
    const QString path = QDir(QCoreApplication::arguments().at(1)).filePath(name + QStringLiteral(".png"));
    if (!window.grab().save(path))
        qFatal("cannot write %s", qPrintable(path));
}

template<typename Control> Control *Find(QWidget &window, const char *name) {
    return window.findChild<Control *>(QString::fromLatin1(name));
}

void TakeCompose(test::TestProfile &profile, Host &host) {
    frmCompose window(profile.session, host);
    TakePicture(window, QStringLiteral("compose-new"));
    Find<QLineEdit>(window, "txtSubject")->setText(QStringLiteral("The spring programme"));
    Find<QPlainTextEdit>(window, "txtMessage")
        ->setPlainText(
            QStringLiteral("Dear members,\n\nthe programme of this spring is attached.\n\nAnn Editor\n"));
    TakePicture(window, QStringLiteral("compose-written"));
    window.resize(window.minimumSizeHint());
    TakePicture(window, QStringLiteral("compose-smallest"));
    window.resize(720, 540);
    for (const char *name : {"cmbTo", "txtTo", "txtSubject", "txtMessage", "picAttachments", "mnuMessage",
                             "mnuEdit", "mnuInsert"})
        Find<QWidget>(window, name)->setEnabled(false);
    Find<QProgressBar>(window, "prgSending")->setValue(42);
    Find<QProgressBar>(window, "prgSending")->show();
    Find<QLabel>(window, "lblStatus")->setText(QStringLiteral("Sending message 105/250"));
    TakePicture(window, QStringLiteral("compose-sending"));
    for (const char *name : {"mnuMessage", "mnuEdit", "mnuInsert"}) {
        Find<QMenu>(window, name)->setEnabled(true);
        Find<QMenu>(window, name)->popup(QPoint());
        TakePicture(*Find<QMenu>(window, name), QString::fromLatin1(name));
        Find<QMenu>(window, name)->hide();
    }
}

} // namespace

int main(int argc, char **argv) {
    QApplication application(argc, argv);
    if (argc < 2)
        qFatal("usage: compose_pictures FOLDER [dark]");
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    if (argc > 2)
        UseDarkColours();
    test::TestProfile profile;
    Host host;
    profile.Write(QStringLiteral("lists/Newsletter.vlo"), "ann@example.org\r\nbob@example.org\r\n");
    profile.Write(QStringLiteral("prefs.ini"), "[Signature]\r\nText=Ann Editor\\nThe Garden Society\r\n");
    profile.Write(QStringLiteral("programme.pdf"), QByteArray(150000, 'x'));
    profile.session.Attachments = QStringList{profile.Path(QStringLiteral("programme.pdf"))};
    TakeCompose(profile, host);
    frmAttach attach(profile.session);
    Find<QListWidget>(attach, "lstAttachments")->setCurrentRow(0);
    TakePicture(attach, QStringLiteral("attach"));
    frmCompRecip lists(host.ListNames());
    Find<QListWidget>(lists, "lstRecipients")->item(1)->setSelected(true);
    TakePicture(lists, QStringLiteral("lists"));
    return 0;
}

#include "app/HelpMenu.h"

#include "app/HelpTargets.h"
#include "app/frmAbout.h"

namespace varlo {

HelpMenu::HelpMenu(Session &session, QWidget *parent)
    : QMenu(QStringLiteral("&Help"), parent), session_(session) {
    setObjectName(QStringLiteral("mnuHelp"));
    QAction *contents = AddEntry(this, "mnuHelpContents", QStringLiteral("&Contents..."));
    contents->setShortcut(QKeySequence::HelpContents);
    connect(contents, &QAction::triggered, this, [this] { OpenHelp(session_); });
    AddTarget(this, "mnuHelpReadMe", QStringLiteral("&Read Me..."), HelpTargets::ReadMe(session_));
    AddLine("mnuHelpLine1");
    AddTarget(this, "mnuHelpUpdate", QStringLiteral("Check for &Update"), HelpTargets::UpdateCheck());
    QMenu *web = addMenu(QStringLiteral("Thornbeck on the &Web"));
    web->setObjectName(QStringLiteral("mnuHelpWeb"));
    AddTarget(web, "mnuHelpWebsite", QStringLiteral("Thornbeck &Website"), HelpTargets::Website());
    AddTarget(web, "mnuHelpForums", QStringLiteral("Thornbeck &Forums"), HelpTargets::Forums());
    AddTarget(web, "mnuHelpEmail", QStringLiteral("&E-mail Thornbeck"), HelpTargets::SupportMail());
    AddLine("mnuHelpLine2");
    connect(AddEntry(this, "mnuHelpAbout", QStringLiteral("&About...")), &QAction::triggered, this,
            [this] { frmAbout(session_, parentWidget()).exec(); });
}

QAction *HelpMenu::AddEntry(QMenu *menu, const char *name, const QString &caption) {
    QAction *entry = menu->addAction(caption);
    entry->setObjectName(QString::fromLatin1(name));
    return entry;
}

void HelpMenu::AddTarget(QMenu *menu, const char *name, const QString &caption, const QUrl &target) {
    const QString label = QStringLiteral("Main.") + QString::fromLatin1(name);
    connect(AddEntry(menu, name, caption), &QAction::triggered, this,
            [this, target, label] { OpenTarget(session_, target, label); });
}

void HelpMenu::AddLine(const char *name) {
    addSeparator()->setObjectName(QString::fromLatin1(name));
}

} // namespace varlo

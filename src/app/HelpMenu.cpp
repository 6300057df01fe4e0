#include "app/HelpMenu.h"

#include "app/HelpTargets.h"
#include "app/frmAbout.h"
#include "core/Literals.h"
#include "core/MenuEntries.h"

namespace varlo {

HelpMenu::HelpMenu(Session &session, QWidget *parent) : QMenu(u"&Help"_s, parent), session_(session) {
    setObjectName(u"mnuHelp"_s);
    connect(AddEntry(this, "mnuHelpContents", u"&Contents..."_s), &QAction::triggered, this,
            [this] { OpenHelp(session_); });
    AddTarget(this, "mnuHelpReadMe", u"&Read Me..."_s, HelpTargets::ReadMe(session_));
    AddLine(this, "mnuHelpLine1");
    AddTarget(this, "mnuHelpUpdate", u"Check for &Update"_s, HelpTargets::UpdateCheck());
    QMenu *web = addMenu(u"Thornbeck on the &Web"_s);
    web->setObjectName(u"mnuHelpWeb"_s);
    AddTarget(web, "mnuHelpWebsite", u"Thornbeck &Website"_s, HelpTargets::Website());
    AddTarget(web, "mnuHelpForums", u"Thornbeck &Forums"_s, HelpTargets::Forums());
    AddTarget(web, "mnuHelpEmail", u"&E-mail Thornbeck"_s, HelpTargets::SupportMail());
    AddLine(this, "mnuHelpLine2");
    connect(AddEntry(this, "mnuHelpAbout", u"&About..."_s), &QAction::triggered, this,
            [this] { frmAbout(session_, parentWidget()).exec(); });
}

void HelpMenu::AddTarget(QMenu *menu, const char *name, const QString &caption, const QUrl &target) {
    const QString label = u"Main."_s + QString::fromLatin1(name);
    connect(AddEntry(menu, name, caption), &QAction::triggered, this,
            [this, target, label] { OpenTarget(session_, target, label); });
}

} // namespace varlo

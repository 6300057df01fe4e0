#include "app/HelpTargets.h"

#include "core/Literals.h"
#include "core/Reporting.h"
#include "core/TextFile.h"
#include "core/modPublic.h"

#include <QDir>
#include <QStandardPaths>

namespace varlo {

namespace {

// The first folder that holds `file`; the program folder when none does, for the report names the place that
// the operator can mend.
QUrl Document(const Session &session, const QString &file) {
    for (const QString &folder : QStringList(session.ProgramFolder) + session.DocumentFolders) {
        const QString path = QDir(folder).filePath(file);
        if (PathExists(path))
            return QUrl::fromLocalFile(path);
    }
    return QUrl::fromLocalFile(QDir(session.ProgramFolder).filePath(file));
}

bool IsMissingFile(const QUrl &target) {
    return target.isLocalFile() && !PathExists(target.toLocalFile());
}

// True when a registry file of a desktop names a program for one of the types of compiled help.
bool NamesChmViewer(const QString &registry) {
    QString text;
    try {
        text = DecodeText(ReadFile(registry));
    } catch (const RuntimeError &) {
        return false; // most folders have no such file
    }
    for (const QString &line : text.split(u'\n')) {
        const QString type = line.section(u'=', 0, 0).trimmed();
        const bool isHelp = type == u"application/vnd.ms-htmlhelp"_s || type == u"application/x-chm"_s;
        if (isHelp && !line.section(u'=', 1).trimmed().isEmpty())
            return true;
    }
    return false;
}

void Open(Session &session, const QUrl &target) {
    // Asked for a missing file, some desktops show a box and some say nothing: the operator hears of it here,
    // and so once.
    if (IsMissingFile(target))
        throw RuntimeError(FileNotFound);
    if (!session.Boxes.OpenUrl(target))
        throw RuntimeError(InvalidProcedureCall, u"No program opens "_s + target.toDisplayString());
}

} // namespace

QString ShortText(const ProductVersion &version) {
    return u"%1.%2"_s.arg(version.Major).arg(version.Minor);
}

QString LongText(const ProductVersion &version) {
    return u"%1 (Build %2)"_s.arg(ShortText(version)).arg(version.Revision);
}

QUrl HelpTargets::Website() {
    return QUrl(Product::kWebsite);
}

QUrl HelpTargets::Forums() {
    return QUrl(Product::kForums);
}

QUrl HelpTargets::UpdateCheck(const ProductVersion &version) {
    return QUrl(Product::kVersionCheck + u"/vercheck.php?app=Varlo&ver="_s + ShortText(version));
}

QUrl HelpTargets::SupportMail(const ProductVersion &version) {
    const QString subject = u"Varlo%20Pro%20v"_s + ShortText(version) + u"%20(Build%20"_s +
                            QString::number(version.Revision) + u')';
    return QUrl(u"mailto:"_s + Product::kSupportAddress + u"?subject="_s + subject);
}

QUrl HelpTargets::ReadMe(const Session &session) {
    return Document(session, u"Read Me.html"_s);
}

QList<QUrl> HelpTargets::Contents(const Session &session, bool hasChmViewer) {
    const QUrl compiled = Document(session, u"Varlo Pro.chm"_s);
    const QUrl pages = Document(session, u"help/index.html"_s);
    if (IsMissingFile(pages))
        return {compiled};
    if (hasChmViewer && !IsMissingFile(compiled))
        return {compiled, pages};
    return {pages};
}

QString HelpTargets::Page(const QString &window) {
    static const QHash<QString, QString> pages{
        {u"frmMain"_s, u"main.html"_s},
        {u"frmProfile"_s, u"profile.html"_s},
        {u"frmOptions"_s, u"options.html"_s},
        {u"frmConsole"_s, u"console.html"_s},
        {u"frmImport"_s, u"task-in.html"_s},
        {u"frmCompose"_s, u"compose.html"_s},
        {u"frmCompRecip"_s, u"recipients.html"_s},
        {u"frmAttach"_s, u"attach.html"_s},
        {u"frmAbout"_s, u"about.html"_s},
        {u"frmExport"_s, u"task-out.html"_s},
        {u"frmCompare"_s, u"task-out.html"_s},
        {u"frmHistory"_s, u"task-back.html"_s},
    };
    return pages.value(window);
}

bool HasChmViewer(const QStringList &applicationFolders) {
    for (const QString &folder : applicationFolders)
        for (const char *registry : {"mimeapps.list", "mimeinfo.cache", "defaults.list"})
            if (NamesChmViewer(QDir(folder).filePath(QString::fromLatin1(registry))))
                return true;
    return false;
}

bool HasChmViewer() {
#ifdef Q_OS_WIN
    return true;
#else
    return HasChmViewer(QStandardPaths::standardLocations(QStandardPaths::ApplicationsLocation) +
                        QStandardPaths::standardLocations(QStandardPaths::GenericConfigLocation));
#endif
}

void OpenHelp(Session &session) {
    Trapped(session, u"Main.mnuHelpContents"_s, [&] {
        QList<QUrl> forms = HelpTargets::Contents(session, HasChmViewer());
        if (forms.size() > 1 && session.Boxes.OpenUrl(forms.first()))
            return;
        Open(session, forms.last());
    });
}

void OpenHelpPage(Session &session, const QString &page) {
    const QUrl target = Document(session, u"help/"_s + page);
    if (page.isEmpty() || IsMissingFile(target))
        OpenHelp(session);
    else
        OpenTarget(session, target, u"Main.mnuHelpContents"_s);
}

void OpenTarget(Session &session, const QUrl &target, const QString &label) {
    Trapped(session, label, [&] { Open(session, target); });
}

} // namespace varlo

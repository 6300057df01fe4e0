#include "app/CommandLine.h"

#include "app/HelpTargets.h"
#include "core/Dialogs.h"
#include "core/Literals.h"
#include "core/Product.h"

#include <cstdio>

namespace varlo {

namespace {

// Options of Qt, which takes them out of the command line itself; those in the first list have a value.
const QStringList kToolkitValues{u"platform"_s, u"platformpluginpath"_s, u"platformtheme"_s, u"plugin"_s,
                                 u"style"_s,    u"stylesheet"_s,         u"session"_s,       u"display"_s,
                                 u"geometry"_s, u"qwindowgeometry"_s,    u"qwindowicon"_s,   u"icon"_s,
                                 u"title"_s,    u"qwindowtitle"_s};
const QStringList kToolkitSwitches{u"reverse"_s, u"nograb"_s, u"dograb"_s, u"sync"_s, u"widgetcount"_s};

QString VersionText() {
    return kApplicationTitle + u' ' + LongText({}) + u'\n';
}

QString HelpText() {
    return u"Usage: "_s + Product::kExecutableName +
           u" [options]\n"
           "Keeps mailing lists and writes to them.\n\n"
           "  /profile          show the profile manager even when a profile opens by itself\n"
           "  --help, -h        show this and end\n"
           "  --version         show the version and end\n"
           "  -platform NAME    (and other options of Qt) use another window system\n"_s;
}

// "style" for "-style", "--style" and "-style=fusion".
QString Name(const QString &option) {
    const QString bare = option.mid(option.startsWith(u"--"_s) ? 2 : 1);
    return bare.section(u'=', 0, 0);
}

bool IsOption(const QString &argument) {
    return argument.size() > 1 && argument.startsWith(u'-') && !argument.contains(u"/profile"_s);
}

CommandLine Refusal(const QString &option) {
    return {CommandLine::Wish::Refuse,
            u"%1: unknown option %2 (see %1 --help)\n"_s.arg(Product::kExecutableName, option)};
}

} // namespace

CommandLine ReadCommandLine(const QStringList &arguments) {
    for (qsizetype i = 0; i < arguments.size(); ++i) {
        const QString &argument = arguments[i];
        if (argument == u"--help"_s || argument == u"-h"_s)
            return {CommandLine::Wish::Print, HelpText()};
        if (argument == u"--version"_s)
            return {CommandLine::Wish::Print, VersionText()};
        if (!IsOption(argument) || kToolkitSwitches.contains(Name(argument)))
            continue;
        if (!kToolkitValues.contains(Name(argument)))
            return Refusal(argument);
        if (!argument.contains(u'='))
            ++i; // its value
    }
    return {};
}

int Answer(const CommandLine &line) {
    const bool refused = line.Wanted == CommandLine::Wish::Refuse;
    std::fputs(line.Text.toLocal8Bit().constData(), refused ? stderr : stdout);
    return refused ? 2 : 0;
}

} // namespace varlo

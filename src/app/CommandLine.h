// The options of the command line, read before there is a window or even a display.
#pragma once

#include <QStringList>

namespace varlo {

// What the command line asks for. `Text` goes to standard output (Print) or to standard error (Refuse).
struct CommandLine {
    enum class Wish { Start, Print, Refuse };
    Wish Wanted = Wish::Start;
    QString Text;
};

// `arguments` are those of the program without its own name. "--help" and "--version" print; an option that
// neither the program nor its toolkit knows is refused. "/profile" anywhere makes an argument known.
CommandLine ReadCommandLine(const QStringList &arguments);

// The exit code after printing or refusing (0, 2).
int Answer(const CommandLine &line);

} // namespace varlo

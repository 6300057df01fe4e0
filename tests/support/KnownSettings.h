// Every setting and every control of the Preferences window, as the operator and "prefs.ini" know them.
#pragma once

#include <QByteArray>

#include <span>

namespace varlo::test {

// One row a setting or control; what a row does not have is empty. A control without a setting has no section.
struct KnownSetting {
    int Page;            // of the Preferences window; -1 for a setting that is not there
    const char *Control; // its object name
    const char *Caption; // its own, or that of the label before it; without the mark of the access key
    const char *Tip;
    const char *Section;
    const char *Key;
    const char *Kind; // "32-bit", "16-bit", "truth" or "text"
    const char *Default;
    const char *Sample; // another value than the default, as the file has it
    const char *How;    // "held", "fresh", "in window" or "outside": who reads it, and when
};

// The rows with a setting stand in the order in which OK stores them.
std::span<const KnownSetting> KnownSettings();

// What OK writes into an empty file when each field holds its sample; with `section`, only that section.
QByteArray SampleFile(const char *section = nullptr);

} // namespace varlo::test

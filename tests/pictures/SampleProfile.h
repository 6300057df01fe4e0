// A program folder as a society could have it: three profiles, three lists, settings.
#pragma once

#include "core/Session.h"
#include "support/ScriptedDialogs.h"

#include <QTemporaryDir>

namespace varlo::test {

// The clock starts at a quarter past ten and moves on by a second with every look at it, so that every run
// makes the same pictures.
class SampleProfile {
public:
    SampleProfile();

    // Runs a whole check of a mailbox that holds requests; the console gets its lines. Returns the entries
    // that it made for the Pending list.
    QStringList CheckMailbox();
    void RemoveLists() const;
    void WriteAttachment(const QString &path, int bytes) const;

private:
    void WriteLists() const;
    void WriteSettings() const;

    QTemporaryDir folder_;
    ScriptedDialogs boxes_;
    QDateTime clock_{QDate(2026, 3, 4), QTime(10, 15)};

public:
    Session session;
};

} // namespace varlo::test

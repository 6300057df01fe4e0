// A Pending list of the test's own, which keeps what was asked of it in order.
#pragma once

#include "core/Reporting.h"
#include "pop3/RequestCapture.h"

#include <QStringList>

namespace varlo::test {

// An address is valid when it holds "@" and no blank.
struct FakePending {
    explicit FakePending(Session &session) : session_(session) {}

    QStringList Entries;
    QStringList Calls;
    bool BypassTicked = false;
    std::function<void()> OnProcess;

    PendingDoor Door() {
        return {[this](const QString &address) {
                    Calls << QStringLiteral("valid? ") + address;
                    return address.contains(u'@') && !address.contains(u' ');
                },
                [this](const QString &entry) { return IsNew(entry); },
                [this](const QString &entry) {
                    Entries << entry;
                    Calls << QStringLiteral("add ") + entry;
                },
                [this] { Calls << QStringLiteral("select last"); },
                [this] { Calls << QStringLiteral("update"); },
                [this] { return BypassTicked; },
                [this] {
                    Calls << QStringLiteral("process");
                    if (OnProcess)
                        OnProcess();
                }};
    }

private:
    bool IsNew(const QString &entry) {
        Calls << QStringLiteral("new? ") + entry;
        const bool isNew = !Entries.contains(entry, Qt::CaseInsensitive);
        if (!isNew)
            StatusMessage(session_,
                          QStringLiteral("Duplicate address [") + entry + QStringLiteral("] ignored"));
        return isNew;
    }

    Session &session_;
};

} // namespace varlo::test

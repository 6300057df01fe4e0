// A Pending list of the test's own, which keeps what was asked of it in order.
#pragma once

#include "core/Literals.h"
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
                    Calls << u"valid? "_s + address;
                    return address.contains(u'@') && !address.contains(u' ');
                },
                [this](const QString &entry) { return IsNew(entry); },
                [this](const QString &entry) {
                    Entries << entry;
                    Calls << u"add "_s + entry;
                },
                [this] { Calls << u"select last"_s; },
                [this] { Calls << u"update"_s; },
                [this] { return BypassTicked; },
                [this] {
                    Calls << u"process"_s;
                    if (OnProcess)
                        OnProcess();
                }};
    }

private:
    bool IsNew(const QString &entry) {
        Calls << u"new? "_s + entry;
        const bool isNew = !Entries.contains(entry, Qt::CaseInsensitive);
        if (!isNew)
            StatusMessage(session_, u"Duplicate address ["_s + entry + u"] ignored"_s);
        return isNew;
    }

    Session &session_;
};

} // namespace varlo::test

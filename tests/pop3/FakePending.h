// A Pending list of the test's own, which keeps what was asked of it in order.
#pragma once

#include "core/Literals.h"
#include "core/Reporting.h"
#include "pop3/RequestCapture.h"

#include <QStringList>
#include <gtest/gtest.h>

namespace varlo::test {

// An address is valid when it holds "@" and no blank.
struct FakePending {
    explicit FakePending(Session &session) : session_(session) {}

    QStringList Entries;
    QStringList Calls;
    int MostEntries = 32767;
    bool BypassTicked = false;
    std::function<void()> OnProcess;

    PendingDoor Door() {
        return {[this](const PendingRequest &request) { return Offer(request); },
                [this] { Calls << u"select last"_s; }, [this] { return BypassTicked; },
                [this] {
                    Calls << u"process"_s;
                    if (OnProcess)
                        OnProcess();
                }};
    }

private:
    bool Offer(const PendingRequest &request) {
        EXPECT_EQ(request.Origin, RequestOrigin::Mailbox);
        const QString entry = request.Entry();
        Calls << u"offer "_s + entry;
        const bool isNew = !Entries.contains(entry, Qt::CaseInsensitive);
        if (!isNew)
            StatusMessage(session_, u"Duplicate address ["_s + entry + u"] ignored"_s);
        const bool isTaken = isNew && request.Address.contains(u'@') && !request.Address.contains(u' ');
        if (isTaken && Entries.size() >= MostEntries)
            throw RuntimeError(Overflow);
        if (isTaken)
            Entries << entry;
        return isTaken;
    }

    Session &session_;
};

} // namespace varlo::test

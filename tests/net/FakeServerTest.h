// A test of a server that goes as it is told.
#pragma once

#include "core/Literals.h"
#include "net/ServerTest.h"

namespace varlo::test {

class FakeServerTest : public net::ServerTest {
public:
    FakeServerTest() { ++Alive; }
    ~FakeServerTest() override { --Alive; }
    void Start() override { Started = true; }

    void Connect() {
        Q_EMIT Step(u"Connected to [mail.test], port 25."_s);
        Q_EMIT Line(Side::Server, u"220 hi"_s);
        Q_EMIT Line(Side::Client, u"EHLO [127.0.0.1]"_s);
    }
    void End(const net::TestResult &result) { Q_EMIT Finished(result); }

    bool Started = false;
    static inline int Alive = 0;
};

inline net::Certificate SomeCertificate() {
    return {u"mail.test"_s, u"Nobody"_s, QDateTime(QDate(2026, 1, 2), QTime(), Qt::UTC),
            QDateTime(QDate(2036, 1, 2), QTime(), Qt::UTC), QByteArray(32, '\x0A')};
}

} // namespace varlo::test

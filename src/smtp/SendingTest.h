// The test of a server that takes mail: connects, encrypts, signs in, leaves.
#pragma once

#include "core/Mailer.h"
#include "net/ServerTest.h"

#include <memory>

namespace OSSMTP {

class SendingTest : public varlo::net::ServerTest {
    Q_OBJECT

public:
    explicit SendingTest(const varlo::MailAccount &account, QObject *parent = nullptr);
    ~SendingTest() override;

    void Start() override;

private:
    class Private;
    std::unique_ptr<Private> d;
};

} // namespace OSSMTP

// TEMPORARY: a mailer over the component whose Send waits. It goes when the component is a mailer itself.
#pragma once

#include "core/Mailer.h"
#include "smtp/SMTP.h"

namespace OSSMTP {

class BlockingMailer : public varlo::Mailer {
    Q_OBJECT

public:
    explicit BlockingMailer(const varlo::MailAccount &account, QObject *parent = nullptr);

    void Submit(const varlo::Mail &mail) override;
    void SetTimeout(int milliseconds) { smtp_.SetTimeout(milliseconds); }

private:
    void Run();
    void SendOne();
    void Set(const varlo::Mail &mail);

    SMTP smtp_;
    varlo::Mail mail_;
    std::shared_ptr<const varlo::MailMessage> set_; // what the component holds
    varlo::Outcome outcome_;
    bool submitted_ = false;
    bool running_ = false;
};

} // namespace OSSMTP

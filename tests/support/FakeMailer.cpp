#include "support/FakeMailer.h"

#include <gtest/gtest.h>

#include <utility>

namespace varlo::test {

class FakeMailer : public Mailer {
public:
    FakeMailer(FakeMailers &shared, MailAccount account) : shared_(shared), account_(std::move(account)) {
        ++shared_.Made;
        ++shared_.Alive;
        shared_.Newest = this;
        shared_.OnMade(*this);
    }
    ~FakeMailer() override {
        --shared_.Alive;
        shared_.waiting_.removeAll(this);
    }

    void Submit(const Mail &mail) override {
        EXPECT_FALSE(submitted_) << "one mail at a time";
        submitted_ = true;
        mail_ = {account_.Host,      account_.Port,  account_.Sender,          mail.Message->Subject,
                 mail.Message->Text, mail.Recipient, mail.Message->Attachments};
        shared_.Sent.push_back(mail_);
        QMetaObject::invokeMethod(this, &FakeMailer::Answer, Qt::QueuedConnection);
    }
    void Finish(const Outcome &outcome) {
        submitted_ = false;
        if (outcome.IsLocal || outcome.IsOfAccount)
            shared_.Sent.pop_back();
        Q_EMIT Finished(outcome);
    }

private:
    void Answer() {
        const QPointer<FakeMailer> self(this);
        shared_.Current = mail_;
        const auto script = shared_.OnSend; // it may replace itself
        const std::optional<Outcome> outcome = script();
        if (!self)
            return;
        if (outcome)
            Finish(*outcome);
        else
            shared_.waiting_ << this;
    }

    FakeMailers &shared_;
    const MailAccount account_;
    SentMail mail_;
    bool submitted_ = false;
};

MakeMailer FakeMailers::Maker() {
    return [this](const MailAccount &account) { return std::make_unique<FakeMailer>(*this, account); };
}

QStringList FakeMailers::Recipients() const {
    QStringList recipients;
    for (const SentMail &mail : Sent)
        recipients << mail.Recipient;
    return recipients;
}

void FakeMailers::Finish(const Outcome &outcome) {
    ASSERT_TRUE(IsBusy());
    static_cast<FakeMailer *>(waiting_.takeFirst())->Finish(outcome);
}

Outcome Failure(int number, const QString &description) {
    return {Outcome::Kind::Refused, number, description};
}

Outcome OwnFailure(int number, const QString &description) {
    return {Outcome::Kind::NotTried, number, description, true};
}

Outcome AccountFailure(int number, const QString &description) {
    return {Outcome::Kind::NotTried, number, description, false, true};
}

} // namespace varlo::test

// The engine with mailers without a wire, ready to send three messages.
#pragma once

#include "compose/EngineFixture.h"
#include "support/FakeMailer.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

namespace varlo::test {

inline QString Text(const char *text) {
    return QString::fromUtf8(text);
}

class FakedEngine : public EngineFixture {
protected:
    FakedEngine() { makeMailer = fake.Maker(); }
    ~FakedEngine() override {
        engine.reset();
        EXPECT_EQ(fake.Alive, 0) << "a mailer outlived its send";
    }

    QStringList SentFiles() const {
        return QDir(profile.Path(Text("sent"))).entryList(QDir::Files | QDir::Hidden);
    }

    // From now on no line can be appended to the log of that name.
    void SpoilLog(const QString &file) const {
        const QString path = session.ProfileFile(Text("logs"), file);
        QFile::remove(path);
        ASSERT_TRUE(QDir().mkpath(path));
    }

    void ExpectRefusal(const char *text) {
        EXPECT_FALSE(engine->Validate(message));
        EXPECT_EQ(profile.Boxes.Shown, (std::vector<ShownBox>{{kApplicationTitle, Text(text), BoxButtons::Ok,
                                                               BoxIcon::Exclamation}}));
    }

    // Nothing went out, nothing was kept, the window was never disabled, and exactly one error was reported.
    void ExpectNothingSent(const char *error) const {
        EXPECT_EQ(Errors(), QStringList(Text(error)));
        EXPECT_EQ(profile.Boxes.Shown.size(), 1U);
        EXPECT_EQ(fake.Sent, std::vector<SentMail>());
        EXPECT_EQ(SentFiles(), QStringList());
        EXPECT_EQ(sendings, std::vector<bool>());
        EXPECT_EQ(captions, QStringList());
        EXPECT_FALSE(engine->IsSending());
    }

    FakeMailers fake;
};

} // namespace varlo::test

#include "import/MailHeader.h"

#include "core/Literals.h"

#include <gtest/gtest.h>

namespace varlo::test {
namespace {

TEST(MailHeaderTest, KnowsTheFieldsThatBelongToMachines) {
    for (const QString &line :
         {u"Message-ID: <1@x.org>"_s, u"message-id:<1@x.org>"_s, u"> Message-ID: <1@x.org>"_s,
          u">> References: <1@x.org>"_s, u"Received: from a"_s, u"Received: by a"_s,
          u"Return-Path: <a@x.org>"_s, u"DKIM-Signature: v=1"_s, u"ARC-Seal: i=1"_s,
          u"List-Unsubscribe: <mailto:leave@x.org>"_s, u"Content-ID: <a@x.org>"_s}) {
        EXPECT_TRUE(IsMachineHeader(line, false)) << line.toStdString();
        EXPECT_TRUE(IsHeader(line)) << line.toStdString();
    }
}

TEST(MailHeaderTest, LeavesThoseThatNamePeople) {
    for (const QString &line : {u"From: a@x.org"_s, u"To: a@x.org"_s, u"Cc: a@x.org"_s,
                                u"Reply-To: a@x.org"_s, u"Message-ID a@x.org"_s, u"My Message-ID: a@x.org"_s,
                                u"List-Members: a@x.org"_s, u" Message-ID: a@x.org"_s, u":"_s, u""_s})
        EXPECT_FALSE(IsMachineHeader(line, true)) << line.toStdString();
}

TEST(MailHeaderTest, WordsThatPeopleUseTooCountBehindAHeaderOnly) {
    for (const QString &line : {u"References: Bo, bo@x.org"_s, u"Received: 5 letters of bo@x.org"_s,
                                u"X-mas: ask bo@x.org"_s, u"References:"_s}) {
        EXPECT_FALSE(IsMachineHeader(line, false)) << line.toStdString();
        EXPECT_TRUE(IsMachineHeader(line, true)) << line.toStdString();
    }
}

TEST(MailHeaderTest, ProseIsNoHeader) {
    for (const QString &line : {u"Dear all: hello"_s, u": x"_s, u"no colon"_s, u""_s})
        EXPECT_FALSE(IsHeader(line)) << line.toStdString();
}

} // namespace
} // namespace varlo::test

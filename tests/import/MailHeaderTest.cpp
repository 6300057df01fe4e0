#include "import/MailHeader.h"

#include "core/Literals.h"

#include <gtest/gtest.h>

namespace varlo::test {
namespace {

TEST(MailHeaderTest, KnowsTheFieldsThatBelongToMachines) {
    for (const QString &line :
         {u"Message-ID: <1@x.org>"_s, u"message-id:<1@x.org>"_s, u"> Message-ID: <1@x.org>"_s,
          u">> References: <1@x.org>"_s, u"X-Original-To: a@x.org"_s, u"Received: from a"_s,
          u"DKIM-Signature: v=1"_s, u"ARC-Seal: i=1"_s, u"List-Unsubscribe: <mailto:leave@x.org>"_s,
          u"Content-ID: <a@x.org>"_s})
        EXPECT_TRUE(IsMachineHeader(line)) << line.toStdString();
}

TEST(MailHeaderTest, LeavesThoseThatNamePeople) {
    for (const QString &line : {u"From: a@x.org"_s, u"To: a@x.org"_s, u"Cc: a@x.org"_s,
                                u"Reply-To: a@x.org"_s, u"Message-ID a@x.org"_s, u"My Message-ID: a@x.org"_s,
                                u"List-Members: a@x.org"_s, u" Message-ID: a@x.org"_s, u":"_s, u""_s})
        EXPECT_FALSE(IsMachineHeader(line)) << line.toStdString();
}

} // namespace
} // namespace varlo::test

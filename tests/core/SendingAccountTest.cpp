#include "core/SendingAccount.h"

#include "core/Literals.h"
#include "support/Printers.h"
#include "support/TestProfile.h"

#include <gtest/gtest.h>

namespace varlo {
namespace {

TEST(SendingAccountTest, AMailboxIsAQuotedNameAndAnAddressInBrackets) {
    EXPECT_EQ(Mailbox(u"Mailing List"_s, u"a@b.org"_s), u"\"Mailing List\" <a@b.org>"_s);
    EXPECT_EQ(Mailbox(QString(), QString()), u"\"\" <>"_s);
}

TEST(SendingAccountTest, AnAccountIsWhatThePreferencesHoldNow) {
    test::TestProfile profile;
    profile.session.Prefs.SMTPServer = u"mail.example.org"_s;
    profile.session.Prefs.SMTPPort = 2525;
    profile.session.Prefs.SMTPFrom = u"Ann Editor"_s;
    profile.session.Prefs.SMTPEmail = u"ann@example.org"_s;
    EXPECT_EQ(SendingAccount(profile.session),
              (MailAccount{u"mail.example.org"_s, 2525, u"\"Ann Editor\" <ann@example.org>"_s}));
}

} // namespace
} // namespace varlo

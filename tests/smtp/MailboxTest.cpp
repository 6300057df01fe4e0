#include "smtp/Mailbox.h"

#include "core/Literals.h"
#include "support/Printers.h"

#include <gtest/gtest.h>

namespace OSSMTP {

static void PrintTo(const Mailbox &mailbox, std::ostream *out) {
    *out << "name ";
    PrintTo(mailbox.Name, out);
    *out << " given ";
    PrintTo(mailbox.Given, out);
    *out << " address ";
    PrintTo(mailbox.Address, out);
}

namespace {

Mailbox Good(const QString &name, const QString &given) {
    return {name, given, given.toUtf8(), false};
}

bool IsUsable(const QString &address) {
    return !ParseMailbox(u"\"N\" <%1>"_s.arg(address)).Address.isEmpty();
}

} // namespace

TEST(MailboxTest, QuotedNameLosesItsQuotes) {
    EXPECT_EQ(ParseMailbox(u"\"My List\" <a@x.org>"_s), Good(u"My List"_s, u"a@x.org"_s));
}

TEST(MailboxTest, BareNameIsTaken) {
    EXPECT_EQ(ParseMailbox(u"My List <a@x.org>"_s), Good(u"My List"_s, u"a@x.org"_s));
}

TEST(MailboxTest, BareAddressHasNoName) {
    EXPECT_EQ(ParseMailbox(u" a@x.org "_s), Good(QString(), u"a@x.org"_s));
}

TEST(MailboxTest, EmptyNameIsNoName) {
    EXPECT_EQ(ParseMailbox(u"\"\" <a@x.org>"_s), Good(QString(), u"a@x.org"_s));
}

TEST(MailboxTest, NameMayHoldQuotesAndBrackets) {
    EXPECT_EQ(ParseMailbox(u"\"A \"B\" <c@d> E\" <a@x.org>"_s), Good(u"A \"B\" <c@d> E"_s, u"a@x.org"_s));
}

TEST(MailboxTest, BracketWithinTheAddressIsNotTakenForItsStart) {
    EXPECT_FALSE(IsUsable(u"a<b@x.org"_s));
}

TEST(MailboxTest, AddressesThatWouldBreakACommandAreUnusable) {
    for (const QString &address :
         {QString(), u" "_s, u"a b@x.org"_s, u"a@x.org\r\nDATA"_s, u"a@x.org> X"_s, u"a>b@x.org"_s,
          u"a\tb@x.org"_s, u"a@x.org\u00a0"_s, u"a@x\u2028.org"_s, u"a\u007fb@x.org"_s, QString(QChar(0)),
          u"a@x.org"_s + QChar(0xD800), QString(600, QLatin1Char('a'))})
        EXPECT_FALSE(IsUsable(address)) << address.toStdString();
}

TEST(MailboxTest, UnusableAddressIsKeptForTheReport) {
    EXPECT_EQ(ParseMailbox(u"\"N\" <a b>"_s).Given, u"a b"_s);
    EXPECT_EQ(ParseMailbox(u"\"N\" <a@b"_s).Given, u"\"N\" <a@b"_s);
}

TEST(MailboxTest, OddButHarmlessAddressesAreLeftToTheServer) {
    for (const char *address : {"ann", "a@b@c.org", "\"quoted\"@x.org", "a@[127.0.0.1]", "'a'@x.org"})
        EXPECT_TRUE(IsUsable(QString::fromLatin1(address))) << address;
}

TEST(MailboxTest, DomainThatIsNotAsciiBecomesAscii) {
    const QString given = u"a@b\u00fccher.example"_s;
    EXPECT_EQ(ParseMailbox(given), (Mailbox{QString(), given, "a@xn--bcher-kva.example", false}));
}

TEST(MailboxTest, LocalPartThatIsNotAsciiIsTold) {
    const QString given = u"\u00fc@x.org"_s;
    EXPECT_EQ(ParseMailbox(given), (Mailbox{QString(), given, given.toUtf8(), true}));
}

TEST(MailboxTest, DomainOfAnAddress) {
    EXPECT_EQ(DomainOf("a@b@x.org"), "x.org");
    EXPECT_EQ(DomainOf("ann"), "localhost");
    EXPECT_EQ(DomainOf("ann@"), "localhost");
}

} // namespace OSSMTP

#include "smtp/Mailbox.h"

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
    return !ParseMailbox(QStringLiteral("\"N\" <%1>").arg(address)).Address.isEmpty();
}

} // namespace

TEST(MailboxTest, QuotedNameLosesItsQuotes) {
    EXPECT_EQ(ParseMailbox(QStringLiteral("\"My List\" <a@x.org>")),
              Good(QStringLiteral("My List"), QStringLiteral("a@x.org")));
}

TEST(MailboxTest, BareNameIsTaken) {
    EXPECT_EQ(ParseMailbox(QStringLiteral("My List <a@x.org>")),
              Good(QStringLiteral("My List"), QStringLiteral("a@x.org")));
}

TEST(MailboxTest, BareAddressHasNoName) {
    EXPECT_EQ(ParseMailbox(QStringLiteral(" a@x.org ")), Good(QString(), QStringLiteral("a@x.org")));
}

TEST(MailboxTest, EmptyNameIsNoName) {
    EXPECT_EQ(ParseMailbox(QStringLiteral("\"\" <a@x.org>")), Good(QString(), QStringLiteral("a@x.org")));
}

TEST(MailboxTest, NameMayHoldQuotesAndBrackets) {
    EXPECT_EQ(ParseMailbox(QStringLiteral("\"A \"B\" <c@d> E\" <a@x.org>")),
              Good(QStringLiteral("A \"B\" <c@d> E"), QStringLiteral("a@x.org")));
}

TEST(MailboxTest, BracketWithinTheAddressIsNotTakenForItsStart) {
    EXPECT_FALSE(IsUsable(QStringLiteral("a<b@x.org")));
}

TEST(MailboxTest, AddressesThatWouldBreakACommandAreUnusable) {
    for (const QString &address :
         {QString(), QStringLiteral(" "), QStringLiteral("a b@x.org"), QStringLiteral("a@x.org\r\nDATA"),
          QStringLiteral("a@x.org> X"), QStringLiteral("a>b@x.org"), QStringLiteral("a\tb@x.org"),
          QStringLiteral("a@x.org\u00a0"), QStringLiteral("a@x\u2028.org"), QStringLiteral("a\u007fb@x.org"),
          QString(QChar(0)), QStringLiteral("a@x.org") + QChar(0xD800), QString(600, QLatin1Char('a'))})
        EXPECT_FALSE(IsUsable(address)) << address.toStdString();
}

TEST(MailboxTest, UnusableAddressIsKeptForTheReport) {
    EXPECT_EQ(ParseMailbox(QStringLiteral("\"N\" <a b>")).Given, QStringLiteral("a b"));
    EXPECT_EQ(ParseMailbox(QStringLiteral("\"N\" <a@b")).Given, QStringLiteral("\"N\" <a@b"));
}

TEST(MailboxTest, OddButHarmlessAddressesAreLeftToTheServer) {
    for (const char *address : {"ann", "a@b@c.org", "\"quoted\"@x.org", "a@[127.0.0.1]", "'a'@x.org"})
        EXPECT_TRUE(IsUsable(QString::fromLatin1(address))) << address;
}

TEST(MailboxTest, DomainThatIsNotAsciiBecomesAscii) {
    const QString given = QStringLiteral("a@b\u00fccher.example");
    EXPECT_EQ(ParseMailbox(given), (Mailbox{QString(), given, "a@xn--bcher-kva.example", false}));
}

TEST(MailboxTest, LocalPartThatIsNotAsciiIsTold) {
    const QString given = QStringLiteral("\u00fc@x.org");
    EXPECT_EQ(ParseMailbox(given), (Mailbox{QString(), given, given.toUtf8(), true}));
}

TEST(MailboxTest, DomainOfAnAddress) {
    EXPECT_EQ(DomainOf("a@b@x.org"), "x.org");
    EXPECT_EQ(DomainOf("ann"), "localhost");
    EXPECT_EQ(DomainOf("ann@"), "localhost");
}

} // namespace OSSMTP

#include "compose/SendTexts.h"

#include "core/Literals.h"
#include "support/Printers.h"

#include <gtest/gtest.h>

namespace varlo {
namespace {

TEST(SendTextsTest, ThePercentageCountsAgainstTheLastIndex) {
    EXPECT_EQ(PercentComplete(1, 250), 0);
    EXPECT_EQ(PercentComplete(3, 250), 1);
    EXPECT_EQ(PercentComplete(1, 3), 50);
    EXPECT_EQ(PercentComplete(248, 250), 99);
    EXPECT_EQ(PercentComplete(249, 250), 100);
    EXPECT_EQ(PercentComplete(999'999, 1'000'000), 100);
}

TEST(SendTextsTest, AnOnlyRecipientDividesNothingByZero) {
    EXPECT_EQ(PercentComplete(0, 1), 0);
    EXPECT_EQ(PercentComplete(0, 0), 0);
}

TEST(SendTextsTest, TheEstimateCountsRecipients) {
    EXPECT_EQ(ProgressCaption(30, 9, 40), u"Sending: 23% Complete (1 mins, 30 secs remaining)"_s);
    EXPECT_EQ(ProgressCaption(60, 1, 1000), u"Sending: 0% Complete (8 hrs, 19 mins, 0 secs remaining)"_s);
    EXPECT_EQ(ProgressCaption(7, 2, 6), u"Sending: 40% Complete (7 secs remaining)"_s);
    EXPECT_EQ(ProgressCaption(10, 2, 5), u"Sending: 50% Complete (6 secs remaining)"_s);
}

TEST(SendTextsTest, AtMostOneSecondIsCalledOne) {
    EXPECT_EQ(ProgressCaption(0, 1, 250), u"Sending: 0% Complete (1 second remaining)"_s);
    EXPECT_EQ(ProgressCaption(3, 2, 4), u"Sending: 66% Complete (1 second remaining)"_s);
    EXPECT_EQ(ProgressCaption(6, 2, 4), u"Sending: 66% Complete (2 secs remaining)"_s);
    EXPECT_EQ(ProgressCaption(500, 4, 5), u"Sending: 100% Complete (1 second remaining)"_s);
}

TEST(SendTextsTest, AMillionRecipientsOverDaysDoNotOverflow) {
    EXPECT_EQ(ProgressCaption(1'000'000, 499'999, 1'000'000),
              u"Sending: 49% Complete (277 hrs, 46 mins, 40 secs remaining)"_s);
}

TEST(SendTextsTest, TheSummaryOfAFlawlessSendHasTwoLines) {
    EXPECT_EQ(SummaryText(3723, 250, 0, 0), u"Message sending complete.\r\n\r\n"
                                            "- The sending process lasted 1 hrs, 2 mins, 3 secs\r\n"
                                            "- The message was sent to 250 recipients"_s);
}

TEST(SendTextsTest, TheSummaryNamesDuplicatesAndFailures) {
    EXPECT_EQ(SummaryText(0, 985, 10, 5),
              u"Message sending complete.\r\n\r\n"
              "- The sending process lasted 0 secs\r\n"
              "- The message was sent to 985 recipients\r\n"
              "- 10 duplicate recipients were ignored\r\n"
              "- The message could not be delivered to 5 recipients*\r\n\r\n"
              "* Failed addresses are added to the pending list flagged for removal."_s);
}

TEST(SendTextsTest, TheSummaryWithFailuresOnlyHasNoLineOfDuplicates) {
    EXPECT_EQ(SummaryText(1, 0, 0, 2),
              u"Message sending complete.\r\n\r\n"
              "- The sending process lasted 1 secs\r\n"
              "- The message was sent to 0 recipients\r\n"
              "- The message could not be delivered to 2 recipients*\r\n\r\n"
              "* Failed addresses are added to the pending list flagged for removal."_s);
}

TEST(SendTextsTest, AStoppedSendTellsHowFarItCame) {
    EXPECT_EQ(StoppedText(3, 250), u"Sending stopped after 3/250 messages"_s);
}

TEST(SendTextsTest, AServersTextOfSeveralLinesBecomesOne) {
    EXPECT_EQ(SmtpErrorText(550, u"no such user"_s), u"SMTP error 550 - no such user"_s);
    EXPECT_EQ(SmtpErrorText(550, u"a\r\nb\nc\rd"_s), u"SMTP error 550 - a b c d"_s);
}

} // namespace
} // namespace varlo

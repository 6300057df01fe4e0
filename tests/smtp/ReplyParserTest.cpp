#include "smtp/ReplyParser.h"

#include "core/Literals.h"
#include "support/Printers.h"

#include <gtest/gtest.h>

#include <vector>

namespace OSSMTP {

static void PrintTo(const Reply &reply, std::ostream *out) {
    *out << reply.Code << ' ' << reply.Text.constData();
}

namespace {

std::vector<Reply> AllOf(ReplyParser &parser) {
    std::vector<Reply> replies;
    while (auto reply = parser.Next())
        replies.push_back(*reply);
    return replies;
}

std::vector<Reply> Parse(const QByteArray &bytes) {
    ReplyParser parser;
    parser.Add(bytes);
    return AllOf(parser);
}

bool Breaks(const QByteArray &bytes) {
    ReplyParser parser;
    parser.Add(bytes);
    AllOf(parser);
    return parser.IsBroken();
}

} // namespace

TEST(ReplyParserTest, OneLineIsAReply) {
    EXPECT_EQ(Parse("250 ok\r\n"), (std::vector<Reply>{{250, "ok"}}));
}

TEST(ReplyParserTest, LinesAreKeptApartAndShownJoinedByABlank) {
    const std::vector<Reply> replies = Parse("550-first\r\n550-\r\n550 last\r\n");
    ASSERT_EQ(replies, (std::vector<Reply>{{550, "first\n\nlast"}}));
    EXPECT_EQ(replies[0].Description(), u"first  last"_s);
}

TEST(ReplyParserTest, SeveralRepliesInOneReadComeOutInOrder) {
    EXPECT_EQ(Parse("250 a\r\n550 b\r\n354 c\r\n"), (std::vector<Reply>{{250, "a"}, {550, "b"}, {354, "c"}}));
}

TEST(ReplyParserTest, CodeAloneIsAReply) {
    EXPECT_EQ(Parse("250\r\n354\n"), (std::vector<Reply>{{250, ""}, {354, ""}}));
}

TEST(ReplyParserTest, BytesOneByOneGiveTheSameReplies) {
    ReplyParser parser;
    std::vector<Reply> replies;
    for (const char c : QByteArray("250-one\r\n250 two\r\n354 go\n")) {
        parser.Add(QByteArrayView(&c, 1));
        for (const Reply &reply : AllOf(parser))
            replies.push_back(reply);
    }
    EXPECT_EQ(replies, (std::vector<Reply>{{250, "one\ntwo"}, {354, "go"}}));
    EXPECT_TRUE(parser.IsEmpty());
}

TEST(ReplyParserTest, PartOfALineIsNotEmpty) {
    ReplyParser parser;
    parser.Add("250");
    EXPECT_FALSE(parser.Next());
    EXPECT_FALSE(parser.IsEmpty());
}

TEST(ReplyParserTest, PartOfAReplyIsNotEmpty) {
    ReplyParser parser;
    parser.Add("250-\r\n");
    EXPECT_FALSE(parser.Next());
    EXPECT_FALSE(parser.IsEmpty());
}

TEST(ReplyParserTest, WhatIsNoReplyBreaks) {
    for (const QByteArray &bytes :
         {QByteArray("hello\r\n"), QByteArray("\r\n"), QByteArray("25\r\n"), QByteArray("2500 x\r\n"),
          QByteArray("650 x\r\n"), QByteArray("050 x\r\n"), QByteArray(8, '\0') + "\r\n"})
        EXPECT_TRUE(Breaks(bytes)) << bytes.constData();
}

TEST(ReplyParserTest, LineWithoutEndBreaksAtTheLimit) {
    EXPECT_FALSE(Breaks(QByteArray(ReplyParser::kLongestReply, '2')));
    EXPECT_TRUE(Breaks(QByteArray(ReplyParser::kLongestReply + 1, '2')));
}

TEST(ReplyParserTest, EndlessReplyOfShortLinesBreaks) {
    EXPECT_TRUE(Breaks(QByteArray("250-more\r\n").repeated(20000)));
}

TEST(ReplyParserTest, BrokenParserTakesNothingUntilCleared) {
    ReplyParser parser;
    parser.Add("nonsense\r\n250 ok\r\n");
    EXPECT_EQ(AllOf(parser), std::vector<Reply>());
    parser.Add("250 ok\r\n");
    EXPECT_EQ(AllOf(parser), std::vector<Reply>());
    parser.Clear();
    parser.Add("250 ok\r\n");
    EXPECT_EQ(AllOf(parser), (std::vector<Reply>{{250, "ok"}}));
}

TEST(ReplyParserTest, DescriptionIsReadableText) {
    EXPECT_EQ((Reply{550, QByteArray("a\0b\tc\x1b[1m", 9)}.Description()), u"a b c [1m"_s);
    EXPECT_EQ((Reply{550, "f\xc3\xbcr"}.Description()), u"f\u00fcr"_s);
    EXPECT_EQ((Reply{550, "f\xfcr"}.Description()), u"f\u00fcr"_s);
}

} // namespace OSSMTP

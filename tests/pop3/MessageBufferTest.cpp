// Putting a message together from chunks.
#include "pop3/MessageBuffer.h"

#include "core/Literals.h"

#include <gtest/gtest.h>

namespace varlo {

namespace {

const QByteArray kReply = "+OK 40 octets\r\nSubject: x\r\n\r\nbody\r\n.\r\n";

// Appends the chunks until one completes the message; true when that is the last one.
bool CompleteWithTheLast(MessageBuffer &buffer, const QByteArrayList &chunks) {
    for (qsizetype i = 0; i + 1 < chunks.size(); ++i)
        if (buffer.Append(chunks[i]))
            return false;
    return buffer.Append(chunks.last());
}

QString HeadOf(MessageBuffer &buffer) {
    buffer.Strip();
    return buffer.Head();
}

} // namespace

TEST(MessageBufferTest, OneChunk) {
    MessageBuffer buffer;
    EXPECT_TRUE(buffer.Append(kReply));
    EXPECT_EQ(HeadOf(buffer), u"Subject: x\r\n\r\n"_s);
    EXPECT_EQ(buffer.Size(), qsizetype(qstrlen("Subject: x\r\n\r\nbody\r\n")));
}

TEST(MessageBufferTest, SplitAtEveryPosition) {
    for (qsizetype first = 0; first < kReply.size(); ++first)
        for (qsizetype second = first; second < kReply.size(); ++second) {
            MessageBuffer buffer;
            EXPECT_TRUE(CompleteWithTheLast(
                buffer, {kReply.first(first), kReply.sliced(first, second - first), kReply.sliced(second)}));
            EXPECT_EQ(HeadOf(buffer), u"Subject: x\r\n\r\n"_s) << first << ' ' << second;
        }
}

TEST(MessageBufferTest, OneByteAtATime) {
    MessageBuffer buffer;
    for (const char byte : kReply.chopped(1))
        EXPECT_FALSE(buffer.Append(QByteArray(1, byte)));
    EXPECT_TRUE(buffer.Append("\n"));
    EXPECT_EQ(HeadOf(buffer), u"Subject: x\r\n\r\n"_s);
}

TEST(MessageBufferTest, LookAlikesOfTheEndMarkEndNothing) {
    MessageBuffer buffer;
    for (const char *chunk :
         {"+OK\r\n", ".x\r\n", "\r\n..\r\n", "\r\n.\n", "x.\r\n", "\r\n. \r\n", "\n.\r", "x\n"})
        EXPECT_FALSE(buffer.Append(chunk)) << chunk;
    EXPECT_TRUE(buffer.Append(".\r\n"));
}

TEST(MessageBufferTest, EmptyMessageHasNoHead) {
    MessageBuffer buffer;
    EXPECT_TRUE(buffer.Append("+OK\r\n.\r\n"));
    EXPECT_EQ(HeadOf(buffer), QString());
    EXPECT_EQ(buffer.Size(), 0);
}

TEST(MessageBufferTest, StatusLineWithoutACarriageReturnSwallowsTheEndMark) {
    MessageBuffer buffer;
    EXPECT_TRUE(buffer.Append("+OK\n.\r\n"));
    EXPECT_EQ(HeadOf(buffer), QString());
    EXPECT_EQ(buffer.Size(), 0);
}

TEST(MessageBufferTest, EmptyLineThatOnlyTheEndMarkWouldCompleteIsNone) {
    MessageBuffer buffer;
    // Bytes behind the mark are cut in its stead.
    EXPECT_TRUE(buffer.Append("+OK\r\nSubject: x\r\n.\r\n\r\n"));
    EXPECT_EQ(HeadOf(buffer), QString());
}

TEST(MessageBufferTest, PointsThatTheServerDoubledStay) {
    MessageBuffer buffer;
    EXPECT_TRUE(buffer.Append("+OK\r\n..x: y\r\n\r\n.\r\n"));
    EXPECT_EQ(HeadOf(buffer), u"..x: y\r\n\r\n"_s);
}

TEST(MessageBufferTest, HeadIsDecodedApartFromTheBody) {
    MessageBuffer buffer;
    EXPECT_TRUE(buffer.Append("+OK\r\nFrom: J\xC3\xB6rg\r\n\r\n\xFF\xFE\r\n.\r\n"));
    EXPECT_EQ(HeadOf(buffer), u"From: J\u00F6rg\r\n\r\n"_s);
}

TEST(MessageBufferTest, HeadThatIsNotUtf8KeepsEveryByteAsOneCharacter) {
    MessageBuffer buffer;
    EXPECT_TRUE(buffer.Append("+OK\r\nFrom: J\xF6rg \x80\r\n\r\n\r\n.\r\n"));
    EXPECT_EQ(HeadOf(buffer), u"From: J\u00F6rg \u20AC\r\n\r\n"_s);
}

TEST(MessageBufferTest, TextLeftAfterAStripIsSearchedAgainFromItsBeginning) {
    MessageBuffer buffer;
    EXPECT_TRUE(buffer.Append("+OK\r\nA: b\r\n.\r\nrest"));
    buffer.Strip(); // "A: b CRLF . CRLF r" still holds a mark
    EXPECT_TRUE(buffer.Append("x"));
}

TEST(MessageBufferTest, ClearedBufferIsAsNew) {
    MessageBuffer buffer;
    buffer.Append("+OK\r\nhalf\r\n");
    buffer.Clear();
    EXPECT_EQ(buffer.Size(), 0);
    EXPECT_FALSE(buffer.Append(".\r\n"));
}

// The cost is the work, not the time: every byte is looked at once, and three of them again with each chunk.
TEST(MessageBufferTest, FiftyMegabytesInSmallChunksAreSearchedOnce) {
    const QByteArray chunk(1000, 'x');
    constexpr qint64 chunks = 50 * 1000;
    MessageBuffer buffer;
    for (qint64 i = 0; i < chunks; ++i)
        ASSERT_FALSE(buffer.Append(chunk));
    EXPECT_EQ(buffer.Size(), chunks * 1000);
    EXPECT_EQ(buffer.Searched(), chunks * 1000 + 3 * (chunks - 1));
    EXPECT_TRUE(buffer.Append("\r\n.\r\n"));
}

TEST(MessageBufferTest, MessagePastTheLimitIsToldAndItsMemoryGivenBack) {
    MessageBuffer buffer;
    EXPECT_FALSE(buffer.Append(QByteArray(MessageBuffer::kLongest, 'x')));
    EXPECT_FALSE(buffer.IsTooLong());
    EXPECT_FALSE(buffer.Append("x"));
    EXPECT_TRUE(buffer.IsTooLong());
    buffer.Clear();
    EXPECT_FALSE(buffer.IsTooLong());
}

} // namespace varlo

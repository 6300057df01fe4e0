#include "core/WordWrap.h"

#include "core/Literals.h"
#include "core/RuntimeError.h"
#include "support/Printers.h"
#include "support/TestProfile.h"

#include <gtest/gtest.h>

#include <array>
#include <random>
#include <string>

namespace varlo {
namespace {

// The rule as it was laid down, position by position from 1 and with the whole text rebuilt at every break:
// slow, and here to say what is right.
class SlowRule {
public:
    SlowRule(std::u16string text, qsizetype width) : s_(std::move(text)), width_(width), p_(width) {}

    std::u16string Run() {
        while (p_ < Length()) {
            EndLine();
            p_ += width_;
        }
        return s_;
    }

private:
    void EndLine() {
        const qsizetype start = p_ > width_ ? p_ - width_ : p_ - (width_ - 1);
        if (FindsBreak(start))
            return;
        for (qsizetype j = p_; j >= start; --j)
            if (At(j) == u' ')
                return Break(j);
        for (qsizetype k = p_; k <= Length(); ++k) {
            if (IsBreak(k)) {
                p_ = k + 1;
                return;
            }
            if (At(k) == u' ')
                return Break(k);
        }
    }

    bool FindsBreak(qsizetype start) {
        bool found = false;
        for (qsizetype i = start; i <= p_ + 1; ++i) {
            if (IsBreak(i)) {
                p_ = i + 1;
                found = true;
            }
        }
        return found;
    }

    void Break(qsizetype at) {
        const auto j = static_cast<size_t>(at);
        s_ = s_.substr(0, j - 1) + u"\r\n" + s_.substr(j);
        p_ = at;
    }

    qsizetype Length() const { return static_cast<qsizetype>(s_.size()); }
    char16_t At(qsizetype i) const {
        return i >= 1 && i <= Length() ? s_[static_cast<size_t>(i - 1)] : u'\0';
    }
    bool IsBreak(qsizetype i) const { return At(i) == u'\r' && At(i + 1) == u'\n'; }

    std::u16string s_;
    qsizetype width_;
    qsizetype p_;
};

QString BySlowRule(const QString &text, qint16 width) {
    return QString::fromStdU16String(SlowRule(text.toStdU16String(), width).Run());
}

QString RandomText(std::mt19937 &random, const std::vector<QString> &pieces, int length) {
    std::uniform_int_distribution<size_t> pick(0, pieces.size() - 1);
    QString text;
    while (text.size() < length)
        text += pieces[pick(random)];
    return text;
}

constexpr std::array<qint16, 13> kWidths{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 72};

void ExpectTheSlowRulesResult(const std::vector<QString> &pieces, unsigned seed, int texts, int longest) {
    std::mt19937 random(seed);
    std::uniform_int_distribution<int> length(0, longest);
    for (int i = 0; i < texts; ++i) {
        const QString text = RandomText(random, pieces, length(random));
        for (qint16 width : kWidths)
            ASSERT_EQ(WrapAtBlanks(text, width), BySlowRule(text, width))
                << "width " << width << ", text " << testing::PrintToString(text);
    }
}

QString Wrapped(const char *text, qint16 width) {
    return WrapAtBlanks(QString::fromLatin1(text), width);
}

TEST(WordWrapTest, BreaksTheFoxIntoFiveLines) {
    EXPECT_EQ(Wrapped("the quick brown fox jumps over the lazy dog", 10),
              u"the quick\r\nbrown fox\r\njumps\r\nover the\r\nlazy dog"_s);
}

TEST(WordWrapTest, ABlankInTheLastColumnIsTheLatestPlaceForABreak) {
    EXPECT_EQ(Wrapped("aaaa bbbb cccc", 10), u"aaaa bbbb\r\ncccc"_s);
    EXPECT_EQ(Wrapped("aaaa bbbbb cccc", 10), u"aaaa\r\nbbbbb cccc"_s);
}

TEST(WordWrapTest, ALongWordStaysWholeAndEndsAtTheFirstBlankBehindIt) {
    EXPECT_EQ(Wrapped("abcdefghijklmno pq", 10), u"abcdefghijklmno\r\npq"_s);
}

TEST(WordWrapTest, ALongWordThatEndsAtABreakGetsNoOther) {
    EXPECT_EQ(Wrapped("abcdefghijklmno\r\npq rs", 10), u"abcdefghijklmno\r\npq rs"_s);
}

TEST(WordWrapTest, OneWordOfAHundredLettersIsReturnedUnchanged) {
    const QString word(100, u'x');
    EXPECT_EQ(WrapAtBlanks(word, 72), word);
}

TEST(WordWrapTest, ALineOfExactlyTheWidthBeforeABreakIsLeftAlone) {
    EXPECT_EQ(Wrapped("aaaa bbbbb\r\ncccc ddddd\r\nee", 10), u"aaaa bbbbb\r\ncccc ddddd\r\nee"_s);
}

TEST(WordWrapTest, ALineOfOneMoreThanTheWidthBeforeABreakIsBroken) {
    EXPECT_EQ(Wrapped("aaaa bbbbbb\r\ncc", 10), u"aaaa\r\nbbbbbb\r\ncc"_s);
}

TEST(WordWrapTest, ShortLinesAndEmptyLinesAreReturnedUnchanged) {
    const QString text = u"one\r\n\r\n\r\ntwo three\r\n\r\nfour\r\n"_s;
    EXPECT_EQ(WrapAtBlanks(text, 10), text);
}

TEST(WordWrapTest, ATextOfAtMostTheWidthIsReturnedUnchanged) {
    EXPECT_EQ(Wrapped("aa bb cc", 72), u"aa bb cc"_s);
    EXPECT_EQ(Wrapped("aa bb cc", 8), u"aa bb cc"_s);
    EXPECT_EQ(Wrapped("aa bb cc", 7), u"aa bb\r\ncc"_s);
}

TEST(WordWrapTest, OfSeveralBlanksOnlyTheBrokenOneIsConsumed) {
    EXPECT_EQ(Wrapped("aaaa   bbbb", 6), u"aaaa \r\n bbbb"_s);
    EXPECT_EQ(Wrapped("aaaa  bbbb", 5), u"aaaa\r\n bbbb"_s);
}

TEST(WordWrapTest, ABlankBeforeABreakThatIsBrokenLeavesAnEmptyLine) {
    EXPECT_EQ(Wrapped("aaaaaaaaaaa \r\nb", 10), u"aaaaaaaaaaa\r\n\r\nb"_s);
}

TEST(WordWrapTest, LoneCarriageReturnsLineFeedsAndTabsAreNoBreaks) {
    EXPECT_EQ(Wrapped("aa\rbb\ncc\tdd ee ff", 5), u"aa\rbb\ncc\tdd\r\nee ff"_s);
}

TEST(WordWrapTest, CountsCharactersOutsideLatin) {
    EXPECT_EQ(WrapAtBlanks(u"äöü ßéñ жук 日本"_s, 8), u"äöü ßéñ\r\nжук 日本"_s);
}

TEST(WordWrapTest, AnEmptyTextGivesAnEmptyTextWithoutAnError) {
    test::TestProfile profile;
    EXPECT_EQ(WordWrap(profile.session, QString(), 72), QString());
    EXPECT_EQ(WordWrap(profile.session, QString(), 0), QString());
    EXPECT_EQ(profile.Boxes.Texts(), QStringList());
}

TEST(WordWrapTest, AWidthBelowOneIsReportedAndGivesAnEmptyText) {
    for (qint16 width : std::array<qint16, 3>{0, -1, -32768}) {
        test::TestProfile profile;
        EXPECT_EQ(WordWrap(profile.session, u"some text"_s, width), QString());
        EXPECT_EQ(profile.Log(u"ErrorLog.txt"_s).value(0).section(u' ', -8),
                  u"in Public.WordWrap - Invalid procedure call or argument"_s);
        EXPECT_EQ(profile.Boxes.Shown.size(), 1U);
    }
}

TEST(WordWrapTest, AWidthBelowOneIsRefusedWithNumberFive) {
    try {
        WrapAtBlanks(u"some text"_s, 0);
        FAIL() << "nothing thrown";
    } catch (const RuntimeError &error) {
        EXPECT_EQ(error.Number(), 5);
    }
}

TEST(WordWrapTest, TheGreatestWidthWraps) {
    const QString word(20000, u'x');
    EXPECT_EQ(WrapAtBlanks(word + u' ' + word, 32767), word + u"\r\n"_s + word);
}

TEST(WordWrapTest, GivesTheSlowRulesResultForProse) {
    ExpectTheSlowRulesResult({u"a"_s, u"bc"_s, u"defg"_s, u" "_s, u" "_s, u"\r\n"_s}, 1, 2000, 200);
}

TEST(WordWrapTest, GivesTheSlowRulesResultForEveryKindOfLineEnd) {
    ExpectTheSlowRulesResult({u"x"_s, u"yy"_s, u" "_s, u"\r\n"_s, u"\r"_s, u"\n"_s, u"\t"_s, u"\r\n\r\n"_s},
                             2, 3000, 120);
}

TEST(WordWrapTest, GivesTheSlowRulesResultForBlanksAndEmptyLines) {
    ExpectTheSlowRulesResult({u" "_s, u"\r\n"_s, u"z"_s}, 3, 2000, 60);
}

TEST(WordWrapTest, GivesTheSlowRulesResultForLongWords) {
    ExpectTheSlowRulesResult({QString(40, u'w'), QString(90, u'v'), u" "_s, u"\r\n"_s, u"u "_s}, 4, 1000,
                             900);
}

TEST(WordWrapTest, GivesTheSlowRulesResultForEveryTextOfSevenPieces) {
    const QStringList pieces{u"a"_s, u" "_s, u"\r"_s, u"\n"_s};
    for (int code = 0; code < 4 * 4 * 4 * 4 * 4 * 4 * 4; ++code) {
        QString text;
        for (int rest = code, i = 0; i < 7; ++i, rest /= 4)
            text += pieces[rest % 4];
        for (qint16 width = 1; width <= 4; ++width)
            ASSERT_EQ(WrapAtBlanks(text, width), BySlowRule(text, width)) << testing::PrintToString(text);
    }
}

QString WithoutBreaks(QString text) {
    return text.replace(u"\r\n"_s, u" "_s);
}

// Work in the square of the text's length would run here until the test program is stopped.
void ExpectOnlyBlanksToBecomeBreaks(const QString &text, qint16 width) {
    EXPECT_TRUE(WithoutBreaks(WrapAtBlanks(text, width)) == WithoutBreaks(text)) << "width " << width;
}

TEST(WordWrapTest, AMegabyteOfAnythingTakesTimeInProportion) {
    constexpr int kSize = 1 << 20;
    for (qint16 width : std::array<qint16, 4>{1, 2, 72, 32767}) {
        ExpectOnlyBlanksToBecomeBreaks(QString(kSize, u'x'), width);
        ExpectOnlyBlanksToBecomeBreaks(QString(kSize, u' '), width);
        ExpectOnlyBlanksToBecomeBreaks(QString(kSize, u'\r'), width);
        ExpectOnlyBlanksToBecomeBreaks(u"\r\n"_s.repeated(kSize / 2), width);
        ExpectOnlyBlanksToBecomeBreaks(u"x "_s.repeated(kSize / 2), width);
        ExpectOnlyBlanksToBecomeBreaks((QString(100, u'x') + u"\r\n"_s).repeated(kSize / 102), width);
        ExpectOnlyBlanksToBecomeBreaks((u"a "_s + QString(32768, u'x')).repeated(kSize / 32770), width);
        ExpectOnlyBlanksToBecomeBreaks(QString(kSize, u'x') + u"\r\n "_s, width);
    }
}

} // namespace
} // namespace varlo

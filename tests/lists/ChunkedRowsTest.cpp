#include "lists/ChunkedRows.h"

#include "lists/ListsFixture.h"

#include <gtest/gtest.h>

#include <random>

namespace varlo {
namespace {

using test::RandomBelow;

std::vector<int> Contents(const ChunkedRows<int> &rows) {
    std::vector<int> all;
    rows.ForEach([&](int row) { all.push_back(row); });
    return all;
}

std::vector<int> UpTo(int count) {
    std::vector<int> numbers(static_cast<size_t>(count));
    for (int i = 0; i < count; ++i)
        numbers[static_cast<size_t>(i)] = i;
    return numbers;
}

TEST(ChunkedRowsTest, IsEmptyAtFirst) {
    const ChunkedRows<int> rows;
    EXPECT_EQ(rows.Size(), 0);
    EXPECT_EQ(Contents(rows), std::vector<int>());
    EXPECT_EQ(rows.LowerBound([](int) { return true; }), 0);
}

ChunkedRows<int> RowsUpTo(int count) {
    ChunkedRows<int> rows;
    for (int i = 0; i < count; ++i)
        rows.Append(i);
    return rows;
}

TEST(ChunkedRowsTest, AppendsSizesAroundTheSizeOfAChunk) {
    for (int size : {0, 1, 255, 256, 257, 511, 512, 513, 32767}) {
        const ChunkedRows<int> rows = RowsUpTo(size);
        EXPECT_EQ(rows.Size(), size);
        EXPECT_EQ(Contents(rows), UpTo(size));
        for (int row : {0, 254, 255, 256, 257, size - 1})
            if (row >= 0 && row < size) {
                EXPECT_EQ(rows.At(row), row) << "of " << size;
            }
    }
}

TEST(ChunkedRowsTest, AppendGoesOnBehindAnInsertion) {
    ChunkedRows<int> rows = RowsUpTo(256);
    rows.Insert(100, -1);
    rows.Append(256);
    std::vector<int> expected = UpTo(257);
    expected.insert(expected.begin() + 100, -1);
    EXPECT_EQ(Contents(rows), expected);
}

TEST(ChunkedRowsTest, AppendsAndPrependsThousands) {
    ChunkedRows<int> appended;
    ChunkedRows<int> prepended;
    for (int i = 0; i < 3000; ++i) {
        appended.Insert(i, i);
        prepended.Insert(0, 2999 - i);
    }
    EXPECT_EQ(Contents(appended), UpTo(3000));
    EXPECT_EQ(Contents(prepended), UpTo(3000));
}

TEST(ChunkedRowsTest, CanBeEmptiedFromTheFrontAndFilledAgain) {
    ChunkedRows<int> rows = RowsUpTo(600);
    for (int i = 0; i < 600; ++i) {
        EXPECT_EQ(rows.At(0), i);
        rows.RemoveAt(0);
    }
    EXPECT_EQ(rows.Size(), 0);
    rows.Insert(0, 5);
    EXPECT_EQ(Contents(rows), std::vector<int>{5});
}

TEST(ChunkedRowsTest, CanBeEmptiedFromTheEnd) {
    ChunkedRows<int> rows = RowsUpTo(600);
    for (int i = 599; i >= 0; --i) {
        EXPECT_EQ(rows.At(i), i);
        rows.RemoveAt(i);
    }
    EXPECT_EQ(Contents(rows), std::vector<int>());
}

TEST(ChunkedRowsTest, SetAtReplacesOneRow) {
    ChunkedRows<int> rows = RowsUpTo(600);
    rows.SetAt(256, -1);
    std::vector<int> expected = UpTo(600);
    expected[256] = -1;
    EXPECT_EQ(Contents(rows), expected);
}

TEST(ChunkedRowsTest, LowerBoundFindsEveryPlace) {
    ChunkedRows<int> rows = RowsUpTo(1000);
    for (int wanted = 0; wanted <= 1000; ++wanted)
        ASSERT_EQ(rows.LowerBound([&](int row) { return row < wanted; }), wanted);
}

TEST(ChunkedRowsTest, AgreesWithAVectorOverRandomChanges) {
    constexpr unsigned kSeed = 20260304;
    std::mt19937 random(kSeed);
    ChunkedRows<int> rows;
    std::vector<int> expected;
    for (int step = 0; step < 20000; ++step) {
        const int at = RandomBelow(random, static_cast<int>(expected.size()) + 1);
        const auto place = expected.begin() + at;
        const int kind = RandomBelow(random, 16);
        if (kind < (step < 12000 ? 10 : 6)) {
            rows.Insert(at, step);
            expected.insert(place, step);
        } else if (place != expected.end() && kind < 15) {
            rows.RemoveAt(at);
            expected.erase(place);
        } else if (place != expected.end()) {
            rows.SetAt(at, -step);
            *place = -step;
        }
        if (step % 500 == 0) {
            ASSERT_EQ(Contents(rows), expected) << "seed " << kSeed << ", step " << step;
        }
    }
    EXPECT_EQ(Contents(rows), expected);
    for (size_t i = 0; i < expected.size(); ++i)
        ASSERT_EQ(rows.At(static_cast<int>(i)), expected[i]);
}

} // namespace
} // namespace varlo

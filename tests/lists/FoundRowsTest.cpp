#include "lists/FoundRows.h"

#include "core/Literals.h"
#include "lists/ListsFixture.h"

#include <QAbstractItemModelTester>
#include <QCoreApplication>
#include <QSignalSpy>
#include <gtest/gtest.h>

namespace varlo {
namespace {

using test::Words;

class FoundRowsTest : public testing::Test {
protected:
    QStringList Found() const {
        QStringList texts;
        for (int row = 0; row < found.rowCount(); ++row)
            texts << found.data(found.index(row)).toString();
        return texts;
    }

    EntryListModel entries{EntryListModel::Order::Chronological};
    FoundRows found{entries};
    QAbstractItemModelTester tester{&found, QAbstractItemModelTester::FailureReportingMode::Fatal};
    QSignalSpy foundAnew{&found, &FoundRows::FoundAnew};
};

TEST_F(FoundRowsTest, ShowsWhatContainsTheTextWhateverItsCase) {
    entries.SetEntries(Words("Anna@x.test bob@x.test JoAnn@y.test"));
    found.SetText(u"aNN"_s);
    EXPECT_EQ(Found(), Words("Anna@x.test JoAnn@y.test"));
    EXPECT_EQ(found.RowOfBox(1), 2);
    EXPECT_EQ(found.RowFound(2), 1);
    EXPECT_EQ(found.RowFound(1), -1);
    found.SetText(u"@y"_s);
    EXPECT_EQ(Found(), Words("JoAnn@y.test"));
    EXPECT_EQ(found.RowFound(0), -1);
}

TEST_F(FoundRowsTest, LettersBeyondAsciiAreFoundInEitherCase) {
    entries.SetEntries({u"m\u00dcller@x.test"_s, u"ma@x.test"_s});
    found.SetText(u"M\u00fcL"_s);
    EXPECT_EQ(Found(), QStringList{u"m\u00dcller@x.test"_s});
}

TEST_F(FoundRowsTest, AnEmptyTextFindsNothing) {
    entries.SetEntries(Words("a@x.test"));
    EXPECT_EQ(Found(), QStringList());
    found.SetText(u"a"_s);
    found.SetText({});
    EXPECT_EQ(Found(), QStringList());
    entries.Add(u"b@x.test"_s);
    QCoreApplication::sendPostedEvents();
    EXPECT_EQ(foundAnew.count(), 0) << "nobody is looking";
}

TEST_F(FoundRowsTest, RowsOfAChangedListAreGoneAtOnceAndFoundAnewInTheNextTurn) {
    entries.SetEntries(Words("a1@x.test b@x.test a2@x.test"));
    found.SetText(u"a"_s);
    entries.Remove(0);
    EXPECT_EQ(Found(), QStringList()) << "row 2 is another one now";
    entries.Add(u"a3@x.test"_s);
    EXPECT_EQ(foundAnew.count(), 0);
    QCoreApplication::sendPostedEvents();
    EXPECT_EQ(Found(), Words("a2@x.test a3@x.test"));
    EXPECT_EQ(foundAnew.count(), 1);
    EXPECT_EQ(found.RowOfBox(1), 2);
}

TEST_F(FoundRowsTest, AReplacedEntryIsFoundByItsNewText) {
    entries.SetEntries(Words("a1@x.test b@x.test"));
    found.SetText(u"c@"_s);
    entries.Replace(1, u"c@x.test"_s);
    QCoreApplication::sendPostedEvents();
    EXPECT_EQ(Found(), Words("c@x.test"));
}

TEST_F(FoundRowsTest, ATextThatComesAfterAChangeIsTheOneThatCounts) {
    entries.SetEntries(Words("a1@x.test b1@x.test"));
    found.SetText(u"a"_s);
    entries.Add(u"b2@x.test"_s);
    found.SetText(u"b"_s);
    EXPECT_EQ(Found(), Words("b1@x.test b2@x.test"));
    QCoreApplication::sendPostedEvents();
    EXPECT_EQ(Found(), Words("b1@x.test b2@x.test"));
    EXPECT_EQ(foundAnew.count(), 0);
}

} // namespace
} // namespace varlo

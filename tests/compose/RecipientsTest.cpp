#include "compose/Recipients.h"

#include "core/TextFile.h"
#include "support/Printers.h"
#include "support/TestProfile.h"

#include <QDir>
#include <QFile>
#include <QTimer>
#include <gtest/gtest.h>

namespace varlo {
namespace {

QString Text(const char *text) {
    return QString::fromUtf8(text);
}

class RecipientsTest : public testing::Test {
protected:
    RecipientsTest() {
        Connect(*recipients);
        choice.ListNames = {Text("friends"), Text("news")};
        choice.CurrentListName = Text("news");
        choice.PickLists = [] {
            ADD_FAILURE() << "the dialog was shown";
            return QStringList();
        };
        profile.Write(Text("lists/friends.vlo"), "a@b.org\r\nc@d.org\r\n");
        profile.Write(Text("lists/news.vlo"), "e@f.org\r\nA@B.org\r\n");
    }

    void Connect(Recipients &source) {
        QObject::connect(&source, &Recipients::StatusChanged, &keeper,
                         [this](const QString &text) { told << text; });
        QObject::connect(&source, &Recipients::ToolTipChanged, &keeper,
                         [this](const QString &text) { told << Text("tip: ") + text; });
        QObject::connect(&source, &Recipients::CountChanged, &keeper,
                         [this](const QString &text) { told << text; });
    }

    QStringList Choose(qsizetype index) {
        choice.Index = index;
        recipients->Choose(choice);
        return recipients ? recipients->Addresses() : QStringList();
    }

    QStringList Errors() const {
        QStringList errors;
        for (const QString &line : profile.Log(Text("ErrorLog.txt")))
            errors << line.mid(line.indexOf(Text("Error ")) + 6);
        return errors;
    }

    test::TestProfile profile;
    std::unique_ptr<Recipients> recipients = std::make_unique<Recipients>(profile.session);
    RecipientChoice choice;
    QObject keeper;
    QStringList told;
};

// ---- The rows of the drop-down

TEST_F(RecipientsTest, EveryRowHasItsMeaning) {
    std::vector<RecipientSource> sources;
    for (qsizetype index = -1; index <= 6; ++index)
        sources.push_back(RecipientSourceAt(index, 2));
    using enum RecipientSource;
    EXPECT_EQ(sources, (std::vector<RecipientSource>{Separator, OneList, OneList, Separator, AllLists,
                                                     SelectLists, CurrentSelection, Separator}));
}

TEST_F(RecipientsTest, WithoutListsTheFirstRowIsTheSeparator) {
    EXPECT_EQ(RecipientSourceAt(0, 0), RecipientSource::Separator);
    EXPECT_EQ(RecipientSourceAt(1, 0), RecipientSource::AllLists);
}

TEST_F(RecipientsTest, TheRowsAreTheListsAndThreeOrFourMore) {
    const QString line = QString(61, u'-');
    EXPECT_EQ(RecipientSourceTexts({Text("a"), Text("b")}, true),
              (QStringList{Text("a"), Text("b"), line, Text("All Mailing Lists"), Text("Select Lists..."),
                           Text("Current Selection")}));
    EXPECT_EQ(RecipientSourceTexts({}, false),
              (QStringList{line, Text("All Mailing Lists"), Text("Select Lists...")}));
}

TEST_F(RecipientsTest, NamesAreJoinedByACommaAndABlank) {
    EXPECT_EQ(ListNamesText({Text("a"), Text("b")}), Text("a, b"));
    EXPECT_EQ(ListNamesText({Text("a")}), Text("a"));
    EXPECT_EQ(ListNamesText({}), QString());
}

TEST_F(RecipientsTest, TheCountIsPlainDecimal) {
    EXPECT_EQ(RecipientCountText(0), Text("0 Recipients"));
    EXPECT_EQ(RecipientCountText(1), Text("1 Recipients"));
    EXPECT_EQ(RecipientCountText(1'000'000), Text("1000000 Recipients"));
}

// ---- Choices

TEST_F(RecipientsTest, AListGivesItsLinesInTheirOrder) {
    EXPECT_EQ(Choose(1), (QStringList{Text("e@f.org"), Text("A@B.org")}));
    EXPECT_EQ(told, (QStringList{Text("Loading recipients..."), Text("tip: news"), Text("2 Recipients"),
                                 Text("Recipients loaded")}));
}

TEST_F(RecipientsTest, AllListsGiveASharedAddressTwice) {
    EXPECT_EQ(Choose(3), (QStringList{Text("a@b.org"), Text("c@d.org"), Text("e@f.org"), Text("A@B.org")}));
    EXPECT_EQ(told, (QStringList{Text("Loading recipients..."), Text("tip: friends, news"),
                                 Text("4 Recipients"), Text("Recipients loaded")}));
}

TEST_F(RecipientsTest, PickedListsAreReadWithoutATipOfTheirOwn) {
    choice.PickLists = [this] {
        told << Text("dialog");
        return QStringList(Text("news"));
    };
    EXPECT_EQ(Choose(4), (QStringList{Text("e@f.org"), Text("A@B.org")}));
    EXPECT_EQ(told, (QStringList{Text("Loading recipients..."), Text("dialog"), Text("2 Recipients"),
                                 Text("Recipients loaded")}));
}

TEST_F(RecipientsTest, NoPickedListIsNobody) {
    Choose(0);
    told.clear();
    choice.PickLists = [] { return QStringList(); };
    EXPECT_EQ(Choose(4), QStringList());
    EXPECT_EQ(told,
              (QStringList{Text("Loading recipients..."), Text("0 Recipients"), Text("Recipients loaded")}));
}

TEST_F(RecipientsTest, TheSelectionIsTakenAsItStands) {
    choice.SelectedAddresses = {Text("z@z.org"), QString(), Text("+a@b.org")};
    EXPECT_EQ(Choose(5), choice.SelectedAddresses);
    EXPECT_EQ(told, (QStringList{Text("Loading recipients..."), Text("tip: news (Selected addresses only)"),
                                 Text("3 Recipients"), Text("Recipients loaded")}));
}

TEST_F(RecipientsTest, TheSeparatorIsNobody) {
    Choose(0);
    told.clear();
    EXPECT_EQ(Choose(2), QStringList());
    EXPECT_EQ(told,
              (QStringList{Text("Loading recipients..."), Text("0 Recipients"), Text("Recipients loaded")}));
}

TEST_F(RecipientsTest, AllListsOfNoneAreNobody) {
    choice.ListNames.clear();
    EXPECT_EQ(Choose(1), QStringList());
    EXPECT_EQ(told, (QStringList{Text("Loading recipients..."), Text("tip: "), Text("0 Recipients"),
                                 Text("Recipients loaded")}));
}

TEST_F(RecipientsTest, AChoiceReplacesTheOneBefore) {
    Choose(3);
    EXPECT_EQ(Choose(0), (QStringList{Text("a@b.org"), Text("c@d.org")}));
}

TEST_F(RecipientsTest, AListIsReadWhenItIsChosen) {
    Choose(0);
    profile.Write(Text("lists/friends.vlo"), "new@b.org\r\n");
    EXPECT_EQ(recipients->Addresses(), (QStringList{Text("a@b.org"), Text("c@d.org")}));
    EXPECT_EQ(Choose(0), QStringList(Text("new@b.org")));
}

TEST_F(RecipientsTest, StatusTextsGoToTheConsoleAndTheLogOnly) {
    Choose(0);
    const QStringList lines = profile.Log(Text("StatusLog.txt"));
    EXPECT_EQ(lines, profile.ConsoleLines);
    ASSERT_EQ(lines.size(), 2);
    EXPECT_TRUE(lines[0].endsWith(Text(" | Loading recipients...")));
    EXPECT_TRUE(lines[1].endsWith(Text(" | Recipients loaded")));
    EXPECT_EQ(profile.StatusTexts, QStringList());
}

// ---- What lists hold

TEST_F(RecipientsTest, AnEmptyListContributesNothing) {
    profile.Write(Text("lists/friends.vlo"), "");
    EXPECT_EQ(Choose(3), (QStringList{Text("e@f.org"), Text("A@B.org")}));
}

TEST_F(RecipientsTest, ABlankLineIsAnEmptyRecipient) {
    profile.Write(Text("lists/friends.vlo"), "\r\na@b.org\r\n\r\n  \r\n");
    EXPECT_EQ(Choose(0), (QStringList{QString(), Text("a@b.org"), QString(), Text("  ")}));
    EXPECT_EQ(told.value(2), Text("4 Recipients"));
}

TEST_F(RecipientsTest, NoLineIsTrimmedAndTheLastNeedsNoEnd) {
    profile.Write(Text("lists/friends.vlo"), " a@b.org \r\nlast@d.org");
    EXPECT_EQ(Choose(0), (QStringList{Text(" a@b.org "), Text("last@d.org")}));
}

TEST_F(RecipientsTest, LettersOutsideAsciiAreKept) {
    profile.Write(Text("lists/friends.vlo"), "\xEF\xBB\xBFj\xC3\xBCrgen@b.org\r\n");
    profile.Write(Text("lists/news.vlo"), "j\xFCrgen@b.org\r\n"); // not valid UTF-8
    EXPECT_EQ(Choose(3), (QStringList{Text("jürgen@b.org"), Text("jürgen@b.org")}));
}

TEST_F(RecipientsTest, AMillionAddressesFromFortyListsAreAllThere) {
    choice.ListNames.clear();
    for (int list = 0; list < 40; ++list) {
        const QString name = Text("list") + QString::number(list);
        QByteArray lines;
        for (int i = 0; i < 25'000; ++i)
            lines += "subscriber" + QByteArray::number(list * 25'000 + i) + "@example.org\r\n";
        profile.Write(Text("lists/") + name + Text(".vlo"), lines);
        choice.ListNames << name;
    }
    const QStringList all = Choose(41);
    ASSERT_EQ(all.size(), 1'000'000);
    EXPECT_EQ(all.at(0), Text("subscriber0@example.org"));
    EXPECT_EQ(all.at(654'321), Text("subscriber654321@example.org"));
    EXPECT_EQ(all.at(999'999), Text("subscriber999999@example.org"));
    EXPECT_EQ(told.value(2), Text("1000000 Recipients"));
}

// ---- Failures

TEST_F(RecipientsTest, AListThatIsGoneIsReportedAndTheOthersAreRead) {
    ASSERT_TRUE(QFile::remove(profile.Path(Text("lists/friends.vlo"))));
    EXPECT_EQ(Choose(3), (QStringList{Text("e@f.org"), Text("A@B.org")}));
    EXPECT_EQ(Errors(), QStringList(Text("53 in Compose.cmbTo - File not found")));
    EXPECT_EQ(profile.Boxes.Shown.size(), 1U);
    EXPECT_EQ(told.mid(2), (QStringList{Text("2 Recipients"), Text("Recipients loaded")}));
}

TEST_F(RecipientsTest, WhatWasReadBeforeAFailureIsKept) {
    ASSERT_TRUE(QFile::remove(profile.Path(Text("lists/news.vlo"))));
    EXPECT_EQ(Choose(3), (QStringList{Text("a@b.org"), Text("c@d.org")}));
    EXPECT_EQ(Errors(), QStringList(Text("53 in Compose.cmbTo - File not found")));
}

TEST_F(RecipientsTest, AFolderInPlaceOfAListIsReported) {
    ASSERT_TRUE(QFile::remove(profile.Path(Text("lists/news.vlo"))));
    ASSERT_TRUE(QDir().mkpath(profile.Path(Text("lists/news.vlo"))));
    EXPECT_EQ(Choose(1), QStringList());
    EXPECT_EQ(Errors(), QStringList(Text("70 in Compose.cmbTo - Permission denied")));
}

TEST_F(RecipientsTest, ALogThatCannotBeWrittenDoesNotStopTheLoading) {
    ASSERT_TRUE(QDir().mkpath(profile.Path(Text("logs/StatusLog.txt"))));
    EXPECT_EQ(Choose(0), (QStringList{Text("a@b.org"), Text("c@d.org")}));
    EXPECT_EQ(Errors(), QStringList(Text("70 in Compose.cmbTo - Permission denied")))
        << "once for its two lines";
}

// ---- Events that run meanwhile

TEST_F(RecipientsTest, AChoiceThatIsMadeWhileOneLoadsWins) {
    QTimer::singleShot(0, &keeper, [this] {
        RecipientChoice other = choice;
        other.Index = 1;
        recipients->Choose(other);
    });
    EXPECT_EQ(Choose(3), (QStringList{Text("e@f.org"), Text("A@B.org")}));
    EXPECT_EQ(told, (QStringList{Text("Loading recipients..."), Text("Loading recipients..."),
                                 Text("tip: news"), Text("2 Recipients"), Text("Recipients loaded")}));
}

TEST_F(RecipientsTest, MayBeDestroyedWhileItLoads) {
    QTimer::singleShot(0, &keeper, [this] { recipients.reset(); });
    EXPECT_EQ(Choose(3), QStringList());
    EXPECT_EQ(told, QStringList(Text("Loading recipients...")));
}

TEST_F(RecipientsTest, MayBeDestroyedUnderTheDialog) {
    choice.PickLists = [this] {
        recipients.reset();
        return choice.ListNames;
    };
    EXPECT_EQ(Choose(4), QStringList());
    EXPECT_EQ(told, QStringList(Text("Loading recipients...")));
}

} // namespace
} // namespace varlo

#include "lists/ListExport.h"

#include "import/AddressFinder.h"
#include "lists/ListsFixture.h"
#include "support/FullDisk.h"
#include "support/Printers.h"

namespace varlo::test {
namespace {

const QList<ExportEntry> kRequests{{u"anna@x.test"_s, u"subscribe"_s, u"mailbox"_s},
                                   {u"bo,b@x.test"_s, u"unsubscribe"_s, QString()}};

struct ListExportTest : ListsFixture {
    QString Target(const QString &name) const { return profile.Path(name); }
    bool Save(const QString &name, ExportForm form, const QStringList &addresses) {
        profile.Boxes.Files = {name.isEmpty() ? name : Target(name)};
        return ExportToFile(session, EntriesOf(addresses), form);
    }
};

TEST_F(ListExportTest, TextIsOneAddressALine) {
    EXPECT_EQ(ExportText(EntriesOf(Words("anna@x.test bo@x.test")), ExportForm::Text),
              u"anna@x.test\r\nbo@x.test\r\n"_s);
    EXPECT_EQ(ExportText(kRequests, ExportForm::Text), u"+anna@x.test\tmailbox\r\n-bo,b@x.test\r\n"_s);
    EXPECT_EQ(ExportText({}, ExportForm::Text), QString());
}

TEST_F(ListExportTest, ATableHasAHeaderAndQuotesWhereTheyAreNeeded) {
    EXPECT_EQ(ExportText(EntriesOf({u"anna@x.test"_s, u"a \"b\"; c"_s, QString()}), ExportForm::Csv),
              u"E-mail\r\nanna@x.test\r\n\"a \"\"b\"\"; c\"\r\n\r\n"_s);
    EXPECT_EQ(
        ExportText(kRequests, ExportForm::Csv),
        u"E-mail,Request,Origin\r\nanna@x.test,subscribe,mailbox\r\n\"bo,b@x.test\",unsubscribe,\r\n"_s);
}

TEST_F(ListExportTest, ACardHoldsWhatCardsMustHold) {
    EXPECT_EQ(ExportText(kRequests, ExportForm::VCard),
              u"BEGIN:VCARD\r\nVERSION:3.0\r\nFN:anna@x.test\r\nN:anna@x.test;;;;\r\nEMAIL;TYPE=INTERNET:"
              u"anna@x.test\r\n"
              "NOTE:subscribe\\, mailbox\r\nEND:VCARD\r\n"
              "BEGIN:VCARD\r\nVERSION:3.0\r\nFN:bo\\,b@x.test\r\nN:bo\\,b@x.test;;;;\r\n"
              "EMAIL;TYPE=INTERNET:bo\\,b@x.test\r\nNOTE:unsubscribe\r\nEND:VCARD\r\n"_s);
}

TEST_F(ListExportTest, NoLineOfACardIsLongerThan75Bytes) {
    const QString address = QString(100, u'\u00FC') + u"\U0001F600"_s.repeated(30) + u"@x.test"_s;
    const QByteArray card = ExportBytes(EntriesOf({address}), ExportForm::VCard);
    for (const QByteArray &line : card.split('\n'))
        EXPECT_LE(line.trimmed().size(), 75) << line.toStdString();
    EXPECT_TRUE(
        QString::fromUtf8(card).replace(u"\r\n "_s, QString()).contains(u"FN:"_s + address + u"\r\n"_s));
}

TEST_F(ListExportTest, OnlyATableThatNeedsItHasAMark) {
    for (const ExportForm form : {ExportForm::Text, ExportForm::Csv, ExportForm::VCard}) {
        EXPECT_FALSE(ExportBytes(EntriesOf(Words("anna@x.test")), form).startsWith("\xEF\xBB\xBF"));
        EXPECT_EQ(ExportBytes(EntriesOf(Words("j\u00F6rg@x.test")), form).startsWith("\xEF\xBB\xBF"),
                  form == ExportForm::Csv);
    }
}

TEST_F(ListExportTest, WritesTheFileAndTells) {
    EXPECT_TRUE(Save(u"out.csv"_s, ExportForm::Csv, Words("anna@x.test bo@x.test")));
    EXPECT_EQ(profile.Read(u"out.csv"_s), "E-mail\r\nanna@x.test\r\nbo@x.test\r\n");
    EXPECT_EQ(TakeStatus(), QStringList{u"Exported 2 addresses to [out.csv]"_s});
}

TEST_F(ListExportTest, ANameWithoutAnExtensionGetsIt) {
    EXPECT_TRUE(Save(u"out"_s, ExportForm::VCard, Words("anna@x.test")));
    EXPECT_TRUE(profile.Read(u"out.vcf"_s).startsWith("BEGIN:VCARD"));
    profile.Write(u"other.txt"_s, "mine");
    EXPECT_TRUE(Save(u"other"_s, ExportForm::Text, Words("anna@x.test")));
    EXPECT_EQ(profile.Read(u"other.txt"_s), "mine") << "nobody was asked about this one";
    EXPECT_EQ(profile.Read(u"other"_s), "anna@x.test\r\n");
}

TEST_F(ListExportTest, CancelWritesNothing) {
    EXPECT_FALSE(Save(QString(), ExportForm::Text, Words("anna@x.test")));
    EXPECT_EQ(TakeStatus(), QStringList());
}

TEST_F(ListExportTest, AFullDiskLeavesTheOldFileWhole) {
    profile.Write(u"out.txt"_s, "old");
    {
        const FullDisk disk(1000);
        EXPECT_FALSE(Save(u"out.txt"_s, ExportForm::Text, Addresses(1000)));
    }
    EXPECT_EQ(profile.Read(u"out.txt"_s), "old");
    EXPECT_EQ(Errors(), QStringList{u"61 in Export.cmdExportSave - Disk full"_s});
    EXPECT_EQ(TakeStatus(), QStringList());
}

TEST_F(ListExportTest, TheRequestsGoOutWithWhereTheyCameFrom) {
    const auto offer = [this](const char *address, RequestOrigin origin, RequestKind kind) {
        lists.Pending.Offer({kind, QString::fromLatin1(address), origin});
    };
    offer("aa@x.test", RequestOrigin::Typed, RequestKind::Subscribe);
    offer("bb@x.test", RequestOrigin::Mailbox, RequestKind::Unsubscribe);
    offer("cc@x.test", RequestOrigin::FailedDelivery, RequestKind::Unsubscribe);
    offer("dd@x.test", RequestOrigin::Import, RequestKind::Subscribe);
    offer("ee@x.test", RequestOrigin::Clipboard, RequestKind::Subscribe);
    AddPending(Words("?ff@x.test"));
    QCoreApplication::processEvents(); // what follows is a step of its own
    lists.Pending.RemoveRows({1});
    lists.Undo.Undo();
    EXPECT_EQ(ExportText(EntriesOf(lists.Pending.Requests()), ExportForm::Csv),
              u"E-mail,Request,Origin\r\naa@x.test,subscribe,typed\r\nbb@x.test,unsubscribe,mailbox\r\n"
              "cc@x.test,unsubscribe,delivery failed\r\ndd@x.test,subscribe,import\r\n"
              "ee@x.test,subscribe,clipboard\r\n?ff@x.test,unknown,\r\n"_s);
}

// What goes out in any form comes in again as it was.
TEST_F(ListExportTest, ComesBackThroughAnImport) {
    std::mt19937 random(99);
    for (int round = 0; round < 100; ++round) {
        QStringList addresses;
        for (int i = 0; i < 2 + RandomBelow(random, 50); ++i) {
            QString local(u"abc_.~\u00FC9"_s[RandomBelow(random, 3)]);
            for (int k = RandomBelow(random, 90); k > 0; --k)
                local += u"abcxyz_~\u00FC9-"_s[RandomBelow(random, 11)];
            addresses << local + QString::number(i) + u"@example.org"_s;
        }
        for (const ExportForm form : {ExportForm::Text, ExportForm::Csv, ExportForm::VCard}) {
            QStringList again;
            for (const FoundAddress &found : FindAddresses(ExportText(EntriesOf(addresses), form)))
                again << found.Text;
            EXPECT_EQ(again, addresses);
        }
    }
}

} // namespace
} // namespace varlo::test

#include "core/TextFile.h"

#include "core/Literals.h"
#include "core/RuntimeError.h"
#include "support/ErrorOf.h"
#include "support/FullDisk.h"
#include "support/WithoutRootRights.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

#ifdef Q_OS_UNIX
#include <csignal>
#include <sys/wait.h>
#include <unistd.h>
#endif

namespace varlo::test {
namespace {

// The number of the error that the statement throws; 0 when it does not.

const QFileDevice::Permissions kForEverybody(0x7777);

class TextFileTest : public testing::Test {
protected:
    QString Path(const char *name) const { return folder_.filePath(QString::fromLatin1(name)); }
    void Make(const char *name, const QByteArray &bytes) const {
        QFile file(Path(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(bytes), bytes.size());
    }
    QStringList Entries() const {
        return QDir(folder_.path())
            .entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden, QDir::Name);
    }

    QTemporaryDir folder_;
};

TEST(DecodeText, ReadsUtf8) {
    EXPECT_EQ(DecodeText("caf\xC3\xA9 \xE2\x82\xAC \xF0\x9F\x93\xA7"), u"caf\u00E9 \u20AC \U0001F4E7"_s);
    EXPECT_EQ(DecodeText(QByteArray()), QString());
}

TEST(DecodeText, DropsAByteOrderMarkAtTheStartOnly) {
    EXPECT_EQ(DecodeText("\xEF\xBB\xBFx"), u"x"_s);
    EXPECT_EQ(DecodeText("x\xEF\xBB\xBF"), u"x\uFEFF"_s);
}

TEST(DecodeText, ReadsWhatIsNotUtf8AsWindows1252) {
    EXPECT_EQ(DecodeText("caf\xE9 \x80\x93"), u"caf\u00E9 \u20AC\u201C"_s);
}

TEST(DecodeText, OneWrongByteMakesTheWholeTextWindows1252) {
    EXPECT_EQ(DecodeText("\xC3\xA9 \xE9"), u"\u00C3\u00A9 \u00E9"_s);
}

TEST(DecodeText, CutOffOrForbiddenSequencesAreNotUtf8) {
    EXPECT_EQ(DecodeText("a\xC3"), u"a\u00C3"_s);
    EXPECT_EQ(DecodeText("a\xE2\x82"), u"a\u00E2\u201A"_s);
    EXPECT_EQ(DecodeText("\xC0\xAF"), u"\u00C0\u00AF"_s);           // a slash in two bytes
    EXPECT_EQ(DecodeText("\xED\xA0\x80"), u"\u00ED\u00A0\u20AC"_s); // half of a pair
}

TEST(DecodeText, EveryByteOfWindows1252IsKeptApart) {
    QByteArray all;
    for (int byte = 0x80; byte <= 0xFF; ++byte)
        all.append(static_cast<char>(byte));
    const QString text = DecodeText(all);
    ASSERT_EQ(text.size(), all.size());
    EXPECT_EQ(QSet<QChar>(text.begin(), text.end()).size(), all.size());
    for (const int unassigned : {0x81, 0x8D, 0x8F, 0x90, 0x9D})
        EXPECT_EQ(text[unassigned - 0x80].unicode(), unassigned);
}

TEST(EncodeText, WritesUtf8WithoutAMark) {
    EXPECT_EQ(EncodeText(u"caf\u00E9 \U0001F4E7"_s), QByteArray("caf\xC3\xA9 \xF0\x9F\x93\xA7"));
}

TEST(SplitLines, LastLineCountsWithOrWithoutItsEnd) {
    const QStringList both{u"a"_s, u"b"_s};
    EXPECT_EQ(SplitLines(u"a\r\nb\r\n"_s), both);
    EXPECT_EQ(SplitLines(u"a\r\nb"_s), both);
}

TEST(SplitLines, EmptyTextHasNoLinesAndAnEmptyLineIsALine) {
    EXPECT_EQ(SplitLines(QString()), QStringList());
    EXPECT_EQ(SplitLines(u"\r\n"_s), QStringList{QString()});
    EXPECT_EQ(SplitLines(u"\r\n\r\na"_s), (QStringList{QString(), QString(), u"a"_s}));
}

TEST(SplitLines, LoneLineFeedEndsALineAndALoneCarriageReturnDoesNot) {
    EXPECT_EQ(SplitLines(u"a\nb\rc\r\nd"_s), (QStringList{u"a"_s, u"b\rc"_s, u"d"_s}));
    EXPECT_EQ(SplitLines(u"a\r\r\n"_s), QStringList{u"a\r"_s});
}

TEST_F(TextFileTest, ReadsTheLinesThatTheDecodedTextHas) {
    const QByteArray mark("\xEF\xBB\xBF");
    for (const QByteArray &bytes :
         {QByteArray(), QByteArray("a"), QByteArray("a\r\nb\r\n"), QByteArray("\r\n\n\r\na"),
          QByteArray("a\rb\r\r\nc\n\r"), QByteArray("caf\xC3\xA9\r\n\xF0\x9F\x93\xA7"),
          QByteArray("\xE9\r\n\xC3\xA9"), QByteArray("cut\xC3\r\n\xA9"), QByteArray("a\0b\r\n\0", 6),
          mark + "a\r\nb", "a\r\n" + mark + "b\r\n" + mark, mark}) {
        Make("file", bytes);
        EXPECT_EQ(ReadLines(Path("file")), SplitLines(DecodeText(bytes))) << bytes.toHex(' ').constData();
    }
    EXPECT_THROW(ReadLines(Path("nothing")), RuntimeError);
}

TEST_F(TextFileTest, ReadsAllBytes) {
    const QByteArray bytes("a\0b\r\n\xFF", 6);
    Make("file", bytes);
    EXPECT_EQ(ReadFile(Path("file")), bytes);
}

TEST_F(TextFileTest, ReadFailuresAreToldApart) {
    ASSERT_TRUE(QDir(folder_.path()).mkdir(u"folder"_s));
    EXPECT_EQ(ErrorOf([&] { ReadFile(Path("none")); }), FileNotFound);
    EXPECT_EQ(ErrorOf([&] { ReadFile(Path("none/file")); }), PathNotFound);
    EXPECT_EQ(ErrorOf([&] { ReadFile(Path("folder")); }), PermissionDenied);
    EXPECT_EQ(ErrorOf([&] { ReadFile(u"/proc/self/mem"_s); }), DeviceIoError);
    Make("secret", "x");
    ASSERT_TRUE(QFile::setPermissions(Path("secret"), QFileDevice::WriteOwner));
    ASSERT_TRUE(QFile::setPermissions(folder_.path(), kForEverybody));
    const WithoutRootRights asUser;
    EXPECT_EQ(ErrorOf([&] { ReadFile(Path("secret")); }), PermissionDenied);
}

TEST_F(TextFileTest, WriteMakesAndReplacesAFile) {
    WriteFile(Path("file"), "one");
    EXPECT_EQ(ReadFile(Path("file")), QByteArray("one"));
    WriteFile(Path("file"), "2");
    EXPECT_EQ(ReadFile(Path("file")), QByteArray("2"));
    WriteFile(Path("file"), QByteArray());
    EXPECT_EQ(ReadFile(Path("file")), QByteArray());
    EXPECT_EQ(Entries(), QStringList{u"file"_s});
}

TEST_F(TextFileTest, WriteThatFailsAtEveryByteLeavesTheOldFile) {
    WriteFile(Path("file"), "the old file");
    const QByteArray bytes(300, 'n');
    for (rlim_t room = 0; room < 300; ++room) {
        int error = 0;
        {
            const FullDisk disk(room);
            error = ErrorOf([&] { WriteFile(Path("file"), bytes); });
        }
        ASSERT_EQ(error, DiskFull) << "with room for " << room << " bytes";
        ASSERT_EQ(ReadFile(Path("file")), QByteArray("the old file")) << "with room for " << room << " bytes";
    }
    EXPECT_EQ(Entries(), QStringList{u"file"_s}) << "nothing half-written is left";
    {
        const FullDisk disk(300);
        WriteFile(Path("file"), bytes);
    }
    EXPECT_EQ(ReadFile(Path("file")), bytes);
}

TEST_F(TextFileTest, LargeWriteThatFailsLeavesTheOldFile) {
    WriteFile(Path("file"), "the old file");
    const QByteArray bytes(1'000'000, 'n'); // past every buffer: the write itself fails, not the closing
    for (const rlim_t room : {0U, 1U, 16'384U, 999'999U}) {
        int error = 0;
        {
            const FullDisk disk(room);
            error = ErrorOf([&] { WriteFile(Path("file"), bytes); });
        }
        EXPECT_EQ(error, DiskFull) << "with room for " << room << " bytes";
        EXPECT_EQ(ReadFile(Path("file")), QByteArray("the old file"));
    }
    EXPECT_EQ(Entries(), QStringList{u"file"_s});
}

#ifdef Q_OS_UNIX // with fork

TEST_F(TextFileTest, KilledWriterLeavesOneOfTheTwoFiles) {
    const QByteArray one(200'000, '1');
    const QByteArray two(200'000, '2');
    WriteFile(Path("file"), one);
    for (int round = 0; round < 10; ++round) {
        const pid_t writer = fork();
        if (writer == 0) {
            while (true) {
                WriteFile(Path("file"), two);
                WriteFile(Path("file"), one);
            }
        }
        ASSERT_GT(writer, 0);
        for (int reads = 0; reads < 20 * round; ++reads) { // reads, too, see whole files only
            const QByteArray seen = ReadFile(Path("file"));
            ASSERT_TRUE(seen == one || seen == two);
        }
        ASSERT_EQ(kill(writer, SIGKILL), 0);
        ASSERT_EQ(waitpid(writer, nullptr, 0), writer);
        const QByteArray left = ReadFile(Path("file"));
        ASSERT_TRUE(left == one || left == two);
    }
}

#endif

TEST_F(TextFileTest, WriteFailuresAreToldApart) {
    ASSERT_TRUE(QDir(folder_.path()).mkdir(u"folder"_s));
    EXPECT_EQ(ErrorOf([&] { WriteFile(Path("none/file"), "x"); }), PathNotFound);
    EXPECT_EQ(ErrorOf([&] { WriteFile(Path("folder"), "x"); }), PermissionDenied);
    EXPECT_EQ(Entries(), QStringList{u"folder"_s});
}

TEST_F(TextFileTest, FolderThatCannotBeWrittenRefusesAFile) {
    Make("file", "old");
    ASSERT_TRUE(QFile::setPermissions(Path("file"), kForEverybody));
    ASSERT_TRUE(QFile::setPermissions(folder_.path(), QFileDevice::ReadOwner | QFileDevice::ExeOwner |
                                                          QFileDevice::ReadOther | QFileDevice::ExeOther));
    {
        const WithoutRootRights asUser;
        EXPECT_EQ(ErrorOf([&] { WriteFile(Path("file"), "x"); }), PermissionDenied);
        EXPECT_EQ(ErrorOf([&] { WriteFile(Path("new"), "x"); }), PermissionDenied);
        EXPECT_EQ(ErrorOf([&] { AppendLine(Path("new"), u"x"_s); }), PermissionDenied);
        EXPECT_EQ(ErrorOf([&] { DeleteFile(Path("file")); }), PermissionDenied);
        EXPECT_EQ(ErrorOf([&] { RenamePath(Path("file"), Path("new")); }), PermissionDenied);
    }
    EXPECT_EQ(ReadFile(Path("file")), QByteArray("old"));
    ASSERT_TRUE(QFile::setPermissions(folder_.path(), kForEverybody));
    EXPECT_EQ(Entries(), QStringList{u"file"_s});
}

TEST_F(TextFileTest, ReadOnlyFileIsNotReplaced) {
    Make("file", "old");
    ASSERT_TRUE(QFile::setPermissions(Path("file"), QFileDevice::ReadOwner | QFileDevice::ReadOther));
    ASSERT_TRUE(QFile::setPermissions(folder_.path(), kForEverybody));
    {
        const WithoutRootRights asUser;
        EXPECT_EQ(ErrorOf([&] { WriteFile(Path("file"), "x"); }), PermissionDenied);
        EXPECT_EQ(ErrorOf([&] { AppendLine(Path("file"), u"x"_s); }), PermissionDenied);
    }
    EXPECT_EQ(ReadFile(Path("file")), QByteArray("old"));
}

TEST_F(TextFileTest, OwnerOnlyHoldsForNewFiles) {
    WriteFile(Path("secret"), "x", FileAccess::OwnerOnly);
    EXPECT_FALSE(QFile::permissions(Path("secret")).testFlag(QFileDevice::ReadGroup));
    EXPECT_FALSE(QFile::permissions(Path("secret")).testFlag(QFileDevice::ReadOther));
    Make("shared", "x");
    ASSERT_TRUE(QFile::setPermissions(Path("shared"), QFileDevice::ReadOwner | QFileDevice::WriteOwner |
                                                          QFileDevice::ReadOther));
    WriteFile(Path("shared"), "y", FileAccess::OwnerOnly);
    EXPECT_TRUE(QFile::permissions(Path("shared")).testFlag(QFileDevice::ReadOther));
}

TEST_F(TextFileTest, AppendMakesAFileAndAddsLines) {
    AppendLine(Path("log"), u"one"_s);
    AppendLine(Path("log"), u"caf\u00E9"_s);
    AppendLine(Path("log"), QString());
    EXPECT_EQ(ReadFile(Path("log")), QByteArray("one\r\ncaf\xC3\xA9\r\n\r\n"));
}

TEST_F(TextFileTest, AppendFailuresAreToldApart) {
    ASSERT_TRUE(QDir(folder_.path()).mkdir(u"folder"_s));
    EXPECT_EQ(ErrorOf([&] { AppendLine(Path("none/log"), u"x"_s); }), PathNotFound);
    EXPECT_EQ(ErrorOf([&] { AppendLine(Path("folder"), u"x"_s); }), PermissionDenied);
    Make("log", "12345678");
    const FullDisk disk(8);
    EXPECT_EQ(ErrorOf([&] { AppendLine(Path("log"), u"x"_s); }), DiskFull);
}

TEST_F(TextFileTest, ALineThatAFullDiskCutsDoesNotSwallowTheNextOne) {
    AppendLine(Path("log"), u"first"_s);
    for (rlim_t room = 7; room < 15; ++room) {
        const FullDisk disk(room);
        EXPECT_EQ(ErrorOf([&] { AppendLine(Path("log"), u"second"_s); }), DiskFull) << room;
        EXPECT_EQ(ReadFile(Path("log")), QByteArray("first\r\n")) << room;
    }
    AppendLine(Path("log"), u"third"_s);
    EXPECT_EQ(ReadFile(Path("log")), QByteArray("first\r\nthird\r\n"));
}

TEST_F(TextFileTest, RenameMovesAFileOrAFolder) {
    Make("file", "x");
    RenamePath(Path("file"), Path("File"));
    ASSERT_TRUE(QDir(folder_.path()).mkpath(u"folder/inside"_s));
    RenamePath(Path("folder"), Path("other"));
    EXPECT_EQ(Entries(), (QStringList{u"File"_s, u"other"_s}));
    EXPECT_TRUE(QFileInfo(Path("other/inside")).isDir());
}

TEST_F(TextFileTest, RenameFailuresAreToldApart) {
    Make("file", "x");
    Make("taken", "y");
    EXPECT_EQ(ErrorOf([&] { RenamePath(Path("none"), Path("new")); }), FileNotFound);
    EXPECT_EQ(ErrorOf([&] { RenamePath(Path("file"), Path("taken")); }), FileAlreadyExists);
    EXPECT_EQ(ErrorOf([&] { RenamePath(Path("file"), Path("none/new")); }), PathNotFound);
    EXPECT_EQ(ReadFile(Path("taken")), QByteArray("y"));
    EXPECT_EQ(Entries(), (QStringList{u"file"_s, u"taken"_s}));
}

TEST_F(TextFileTest, RenameOntoItselfIsNoError) {
    Make("file", "x");
    RenamePath(Path("file"), Path("file"));
    EXPECT_EQ(ReadFile(Path("file")), QByteArray("x"));
}

TEST_F(TextFileTest, DeleteRemovesAFile) {
    Make("file", "x");
    DeleteFile(Path("file"));
    EXPECT_EQ(Entries(), QStringList());
    EXPECT_EQ(ErrorOf([&] { DeleteFile(Path("file")); }), FileNotFound);
}

TEST_F(TextFileTest, DeleteLeavesFoldersAlone) {
    ASSERT_TRUE(QDir(folder_.path()).mkdir(u"folder"_s));
    EXPECT_EQ(ErrorOf([&] { DeleteFile(Path("folder")); }), PermissionDenied);
    EXPECT_EQ(Entries(), QStringList{u"folder"_s});
}

} // namespace
} // namespace varlo::test

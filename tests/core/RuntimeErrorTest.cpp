#include "core/RuntimeError.h"

#include "core/Literals.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <cerrno>

namespace varlo::test {
namespace {

TEST(RuntimeError, KnownNumbersCarryTheirDescriptions) {
    const std::pair<ErrorNumber, const char *> cases[] = {
        {InvalidProcedureCall, "5 Invalid procedure call or argument"},
        {Overflow, "6 Overflow"},
        {TypeMismatch, "13 Type mismatch"},
        {FileNotFound, "53 File not found"},
        {FileAlreadyOpen, "55 File already open"},
        {DeviceIoError, "57 Device I/O error"},
        {FileAlreadyExists, "58 File already exists"},
        {DiskFull, "61 Disk full"},
        {PermissionDenied, "70 Permission denied"},
        {PathFileAccess, "75 Path/File access error"},
        {PathNotFound, "76 Path not found"},
        {KeyAlreadyPresent, "457 This key is already associated with an element of this collection"},
    };
    for (const auto &[number, text] : cases) {
        const RuntimeError error(number);
        EXPECT_EQ(u"%1 %2"_s.arg(error.Number()).arg(error.Description()), QString::fromLatin1(text));
    }
}

TEST(RuntimeError, CarriesANumberAndTextOfItsOwn) {
    const RuntimeError error(550, u"no caf\u00E9 here"_s);
    EXPECT_EQ(error.Number(), 550);
    EXPECT_EQ(error.Description(), u"no caf\u00E9 here"_s);
    EXPECT_STREQ(error.what(), "no caf\xC3\xA9 here");
}

TEST(RuntimeError, TextOutlivesACopy) {
    const auto copy = std::make_unique<RuntimeError>(RuntimeError(Overflow));
    EXPECT_STREQ(copy->what(), "Overflow");
}

TEST(SystemError, TellsTheSystemsErrorsApart) {
    const std::pair<int, ErrorNumber> cases[] = {
        {ENOENT, FileNotFound},    {ENOTDIR, PathNotFound},   {EEXIST, FileAlreadyExists},
        {ENOSPC, DiskFull},        {EFBIG, DiskFull},         {EACCES, PermissionDenied},
        {EPERM, PermissionDenied}, {EROFS, PermissionDenied}, {EISDIR, PermissionDenied},
        {EBUSY, FileAlreadyOpen},  {EIO, DeviceIoError},      {EMFILE, DeviceIoError}};
    for (const auto &[code, number] : cases)
        EXPECT_EQ(SystemError(code).Number(), number) << std::strerror(code);
#ifdef EDQUOT // Windows has none
    EXPECT_EQ(SystemError(EDQUOT).Number(), DiskFull);
#endif
}

TEST(FileError, TellsTheFailuresOfAFileApart) {
    const QTemporaryDir folder;
    QFile missing(folder.filePath(u"none"_s));
    ASSERT_FALSE(missing.open(QIODevice::ReadOnly));
    EXPECT_EQ(FileError(missing).Number(), FileNotFound);
    QFile below(folder.filePath(u"none/file"_s));
    ASSERT_FALSE(below.open(QIODevice::ReadOnly));
    EXPECT_EQ(FileError(below).Number(), PathNotFound);
    QFile itself(folder.path());
    ASSERT_FALSE(itself.open(QIODevice::ReadOnly));
    EXPECT_EQ(FileError(itself).Number(), PermissionDenied);
    QFile full(u"/dev/full"_s);
    ASSERT_TRUE(full.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
    ASSERT_EQ(full.write("x"), -1);
    EXPECT_EQ(FileError(full).Number(), DiskFull);
}

TEST(To16Bit, PassesWhatFits) {
    EXPECT_EQ(To16Bit(-32768), -32768);
    EXPECT_EQ(To16Bit(32767), 32767);
}

TEST(To16Bit, RefusesWhatDoesNot) {
    for (const qint64 number : {-32769LL, 32768LL, 1LL << 40}) {
        try {
            To16Bit(number);
            ADD_FAILURE() << number << " was taken";
        } catch (const RuntimeError &error) {
            EXPECT_EQ(error.Number(), Overflow);
        }
    }
}

} // namespace
} // namespace varlo::test

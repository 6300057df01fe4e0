// What files are like on Windows alone.

#include "core/Literals.h"
#include "core/Patience.h"
#include "core/SystemFile.h"
#include "core/TextFile.h"
#include "support/ErrorOf.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <aclapi.h>
#include <sddl.h>
#include <thread>

#undef DeleteFile // a macro of the system's header

namespace varlo::test {
namespace {

using namespace std::chrono_literals;

class WindowsFilesTest : public testing::Test {
protected:
    QString Path(const QString &name) const { return folder_.filePath(name); }

    QTemporaryDir folder_;
};

// A program that holds a file open and lets others read at most.
class Holder {
public:
    explicit Holder(const QString &path)
        : handle_(::CreateFileW(reinterpret_cast<LPCWSTR>(QDir::toNativeSeparators(path).utf16()),
                                GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr)) {
        EXPECT_NE(handle_, INVALID_HANDLE_VALUE);
    }
    ~Holder() { LetGo(); }
    Holder(const Holder &) = delete;
    Holder &operator=(const Holder &) = delete;

    void LetGo() {
        if (handle_ != INVALID_HANDLE_VALUE)
            ::CloseHandle(handle_);
        handle_ = INVALID_HANDLE_VALUE;
    }

private:
    HANDLE handle_;
};

TEST_F(WindowsFilesTest, AFileThatIsLetGoInTimeIsReplaced) {
    WriteFile(Path(u"list"_s), "old");
    Holder scanner(Path(u"list"_s));
    EXPECT_TRUE(SystemFile::IsHeld(Path(u"list"_s)));
    std::thread end([&scanner] {
        std::this_thread::sleep_for(200ms);
        scanner.LetGo();
    });
    EXPECT_EQ(ErrorOf([&] { WriteFile(Path(u"list"_s), "new"); }), 0);
    end.join();
    EXPECT_EQ(ReadFile(Path(u"list"_s)), QByteArray("new"));
    EXPECT_EQ(QDir(folder_.path()).entryList(QDir::Files), QStringList{u"list"_s});
}

TEST_F(WindowsFilesTest, AFileThatStaysHeldIsReportedAfterASecondAndKept) {
    WriteFile(Path(u"list"_s), "old");
    const Holder backup(Path(u"list"_s));
    QElapsedTimer time;
    time.start();
    EXPECT_EQ(ErrorOf([&] { WriteFile(Path(u"list"_s), "new"); }), PermissionDenied);
    EXPECT_GE(time.elapsed(), kPatience.count());
    EXPECT_EQ(ErrorOf([&] { AppendLine(Path(u"list"_s), u"more"_s); }), PermissionDenied);
    EXPECT_EQ(ErrorOf([&] { DeleteFile(Path(u"list"_s)); }), PermissionDenied);
    EXPECT_EQ(ErrorOf([&] { RenamePath(Path(u"list"_s), Path(u"other"_s)); }), PermissionDenied);
    EXPECT_EQ(ReadFile(Path(u"list"_s)), QByteArray("old"));
    EXPECT_EQ(QDir(folder_.path()).entryList(QDir::Files), QStringList{u"list"_s})
        << "nothing half-written is left";
}

TEST_F(WindowsFilesTest, TheNameOfADeviceIsRefused) {
    for (const QString &name : {u"CON"_s, u"nul.vlo"_s, u"Com1.txt"_s}) {
        EXPECT_EQ(ErrorOf([&] { WriteFile(Path(name), "x"); }), PathFileAccess) << name.toStdString();
        EXPECT_EQ(ErrorOf([&] { AppendLine(Path(name), u"x"_s); }), PathFileAccess) << name.toStdString();
    }
    WriteFile(Path(u"list.vlo"_s), "x");
    EXPECT_EQ(ErrorOf([&] { RenamePath(Path(u"list.vlo"_s), Path(u"aux.vlo"_s)); }), PathFileAccess);
    EXPECT_EQ(QDir(folder_.path()).entryList(QDir::Files), QStringList{u"list.vlo"_s});
}

TEST_F(WindowsFilesTest, PathsBeyond260CharactersAreWrittenAndRead) {
    const QString deep = (u"deep/"_s + QString(50, u'x') + u'/').repeated(6);
    ASSERT_TRUE(QDir(folder_.path()).mkpath(deep));
    const QString path = Path(deep + u"list.vlo"_s);
    ASSERT_GT(path.size(), 300);
    WriteFile(path, "one\r\n");
    AppendLine(path, u"two"_s);
    EXPECT_EQ(ReadFile(path), QByteArray("one\r\ntwo\r\n"));
    DeleteFile(path);
    EXPECT_FALSE(QFile::exists(path));
}

TEST_F(WindowsFilesTest, LettersOfEveryAlphabetNameAFile) {
    const QString name = u"\u041F\u0440\u0438\u0432\u0435\u0442 \u65E5\u672C caf\u00E9.vlo"_s;
    WriteFile(Path(name), "x");
    AppendLine(Path(name), u"y"_s);
    EXPECT_EQ(QDir(folder_.path()).entryList(QDir::Files), QStringList{name});
    EXPECT_EQ(ReadFile(Path(name)), QByteArray("xy\r\n"));
}

QString AccessListOf(const QString &path) {
    QByteArray descriptor(65536, 0);
    DWORD size = 0;
    EXPECT_TRUE(::GetFileSecurityW(reinterpret_cast<LPCWSTR>(QDir::toNativeSeparators(path).utf16()),
                                   DACL_SECURITY_INFORMATION, descriptor.data(),
                                   static_cast<DWORD>(descriptor.size()), &size));
    LPWSTR text = nullptr;
    EXPECT_TRUE(::ConvertSecurityDescriptorToStringSecurityDescriptorW(
        descriptor.data(), SDDL_REVISION_1, DACL_SECURITY_INFORMATION, &text, nullptr));
    const QString list = QString::fromWCharArray(text);
    ::LocalFree(text);
    return list;
}

TEST_F(WindowsFilesTest, APrivateFileIsForNobodyElseAlsoAfterASecondWrite) {
    WriteFile(Path(u"open"_s), "x");
    WriteFile(Path(u"secret"_s), "x", FileAccess::OwnerOnly);
    WriteFile(Path(u"secret"_s), "y", FileAccess::OwnerOnly);
    EXPECT_TRUE(AccessListOf(Path(u"open"_s)).contains(u";;;WD)"_s))
        << "everybody, or this test shows nothing";
    const QString list = AccessListOf(Path(u"secret"_s));
    EXPECT_FALSE(list.contains(u";;;WD)"_s) || list.contains(u";;;BU)"_s)) << list.toStdString();
    EXPECT_EQ(ReadFile(Path(u"secret"_s)), QByteArray("y"));
}

} // namespace
} // namespace varlo::test

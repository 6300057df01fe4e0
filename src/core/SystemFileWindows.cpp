#include "core/DeviceNames.h"
#include "core/Literals.h"
#include "core/RuntimeError.h"
#include "core/SystemFile.h"

#include <QDir>
#include <QFile>
#include <QTemporaryFile>

#include <aclapi.h>
#include <array>
#include <io.h>
#include <memory>
#include <sddl.h>
#include <windows.h>

namespace varlo::SystemFile {

namespace {

constexpr DWORD kSharedByAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

using Freed = std::unique_ptr<void, decltype(&::LocalFree)>;

// The user of this program, as access lists name him; empty when the system does not tell.
QString UserName() {
    HANDLE token = nullptr;
    if (!::OpenProcessToken(::GetCurrentProcess(), TOKEN_QUERY, &token))
        return {};
    alignas(TOKEN_USER) std::array<char, sizeof(TOKEN_USER) + SECURITY_MAX_SID_SIZE> user{};
    DWORD size = 0;
    const bool told =
        ::GetTokenInformation(token, TokenUser, user.data(), static_cast<DWORD>(user.size()), &size) != 0;
    ::CloseHandle(token);
    LPWSTR text = nullptr;
    if (!told || !::ConvertSidToStringSidW(reinterpret_cast<TOKEN_USER *>(user.data())->User.Sid, &text))
        return {};
    const Freed freed(text, &::LocalFree);
    return QString::fromWCharArray(text);
}

// For the user, the system and its administrators, and not inherited from the folder.
QString PrivateList() {
    const QString user = UserName();
    return u"D:P(A;;FA;;;SY)(A;;FA;;;BA)"_s +
           (user.isEmpty() ? u"(A;;FA;;;OW)"_s : u"(A;;FA;;;%1)"_s.arg(user));
}

// The path in the form that has no limit of 260 characters.
QString LongForm(const QString &path) {
    const QString native = QDir::toNativeSeparators(QDir::cleanPath(QDir::current().absoluteFilePath(path)));
    return native.startsWith(u"\\\\"_s) ? u"\\\\?\\UNC"_s + native.sliced(1) : u"\\\\?\\"_s + native;
}

class Handle {
public:
    Handle(const QString &path, DWORD access, DWORD creation) {
        const QString native = LongForm(path);
        handle_ = ::CreateFileW(reinterpret_cast<LPCWSTR>(native.utf16()), access, kSharedByAll, nullptr,
                                creation, FILE_ATTRIBUTE_NORMAL, nullptr);
    }
    ~Handle() {
        if (IsOpen())
            ::CloseHandle(handle_);
    }
    Handle(const Handle &) = delete;
    Handle &operator=(const Handle &) = delete;

    bool IsOpen() const { return handle_ != INVALID_HANDLE_VALUE; }
    HANDLE Get() const { return handle_; }

private:
    HANDLE handle_ = INVALID_HANDLE_VALUE;
};

RuntimeError ErrorFor(DWORD code) {
    switch (code) {
    case ERROR_PATH_NOT_FOUND:
    case ERROR_BAD_NETPATH:
    case ERROR_BAD_NET_NAME:
        return RuntimeError(PathNotFound);
    case ERROR_FILE_NOT_FOUND:
        return RuntimeError(FileNotFound);
    case ERROR_DISK_FULL:
    case ERROR_HANDLE_DISK_FULL:
        return RuntimeError(DiskFull);
    case ERROR_ACCESS_DENIED:
    case ERROR_WRITE_PROTECT:
    case ERROR_SHARING_VIOLATION:
    case ERROR_LOCK_VIOLATION:
        return RuntimeError(PermissionDenied);
    default:
        return RuntimeError(DeviceIoError);
    }
}

} // namespace

// With the right to append alone every write goes to the end, also beside other programs that append.
qint64 Append(const QString &path, const QByteArray &bytes) {
    const Handle file(path, FILE_APPEND_DATA | FILE_READ_ATTRIBUTES | SYNCHRONIZE, OPEN_ALWAYS);
    if (!file.IsOpen())
        throw ErrorFor(::GetLastError());
    DWORD written = 0;
    const bool done =
        ::WriteFile(file.Get(), bytes.constData(), static_cast<DWORD>(bytes.size()), &written, nullptr) != 0;
    const DWORD code = done ? ERROR_DISK_FULL : ::GetLastError();
    if (written == bytes.size()) {
        LARGE_INTEGER size{};
        ::GetFileSizeEx(file.Get(), &size);
        return size.QuadPart;
    }
    if (written > 0) // a part: it would stand before the next line
        QFile::resize(path, QFileInfo(path).size() - written);
    throw ErrorFor(code);
}

// By its name, since a file open for writing may not change who may open it. A drive without such rights (a memory
// stick) refuses, and has nothing to refuse to others either. Every time: a replacement takes its rights from the folder.
void MakePrivate(QFileDevice &file, bool) {
    const auto handle = reinterpret_cast<HANDLE>(::_get_osfhandle(file.handle()));
    std::array<wchar_t, 32768> name{};
    if (::GetFinalPathNameByHandleW(handle, name.data(), static_cast<DWORD>(name.size()), 0) == 0)
        return;
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    if (!::ConvertStringSecurityDescriptorToSecurityDescriptorW(
            reinterpret_cast<LPCWSTR>(PrivateList().utf16()), SDDL_REVISION_1, &descriptor, nullptr))
        return;
    const Freed freed(descriptor, &::LocalFree);
    ::SetFileSecurityW(name.data(), DACL_SECURITY_INFORMATION | PROTECTED_DACL_SECURITY_INFORMATION,
                       descriptor);
}

bool IsHeld(const QString &path) {
    const Handle file(path, DELETE, OPEN_EXISTING);
    if (file.IsOpen())
        return false;
    const DWORD code = ::GetLastError();
    return code == ERROR_SHARING_VIOLATION || code == ERROR_LOCK_VIOLATION;
}

// The rights of a folder say little here: only making a file tells.
bool CanWriteIn(const QString &folder) {
    return QTemporaryFile(QDir(folder).filePath(u"varlo-pro-XXXXXX"_s)).open();
}

bool IsDevice(const QString &path) {
    return IsDeviceName(path.section(u'/', -1).section(u'\\', -1));
}

} // namespace varlo::SystemFile

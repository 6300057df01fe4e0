#include "core/AnsiText.h"

#include <array>

#ifdef Q_OS_WIN
#include <windows.h>
#endif

namespace varlo {

namespace {

// Code points of the Windows-1252 bytes 0x80 to 0x9F; all others are Latin-1.
constexpr std::array<char16_t, 32> kWindows1252{
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

#ifdef Q_OS_WIN

constexpr unsigned kWesternEurope = 1252;

// GetACP would name UTF-8, which the manifest makes this program's own; 0 stands for a language without any.
unsigned SystemCodePage() {
    DWORD page = 0;
    ::GetLocaleInfoEx(LOCALE_NAME_SYSTEM_DEFAULT, LOCALE_IDEFAULTANSICODEPAGE | LOCALE_RETURN_NUMBER,
                      reinterpret_cast<LPWSTR>(&page), sizeof page / sizeof(WCHAR));
    return page == 0 || page == CP_UTF8 ? kWesternEurope : page;
}

#endif

} // namespace

QString FromWindows1252(const QByteArray &bytes) {
    QString text = QString::fromLatin1(bytes);
    for (QChar &c : text)
        if (c.unicode() >= 0x80 && c.unicode() <= 0x9F)
            c = QChar(kWindows1252[c.unicode() - 0x80U]);
    return text;
}

#ifdef Q_OS_WIN

QString FromAnsi(const QByteArray &bytes) {
    const unsigned page = SystemCodePage();
    const QString text = page == kWesternEurope ? QString() : FromCodePage(bytes, page);
    return text.isNull() ? FromWindows1252(bytes) : text;
}

QString FromCodePage(const QByteArray &bytes, unsigned codePage) {
    const int size = static_cast<int>(bytes.size());
    const int needed =
        ::MultiByteToWideChar(codePage, MB_ERR_INVALID_CHARS, bytes.constData(), size, nullptr, 0);
    if (needed <= 0)
        return {};
    QString text(needed, Qt::Uninitialized);
    ::MultiByteToWideChar(codePage, MB_ERR_INVALID_CHARS, bytes.constData(), size,
                          reinterpret_cast<LPWSTR>(text.data()), needed);
    return text;
}

#else

QString FromAnsi(const QByteArray &bytes) {
    return FromWindows1252(bytes);
}

QString FromCodePage(const QByteArray &, unsigned) {
    return {};
}

#endif

} // namespace varlo

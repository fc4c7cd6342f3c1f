// SPDX-License-Identifier: MIT
#include "ConsoleInputWindows.h"

#include <algorithm>
#include <utility>

#define WIN32_LEAN_AND_MEAN
#include <windows.h>

namespace console {

namespace {

constexpr wchar_t endOfInput = 0x1a; // Ctrl+Z
constexpr DWORD unitsAtOnce = 1000;  // of which each is three bytes of UTF-8 at most

bool isFirstHalf(wchar_t unit)
{
    return unit >= 0xd800 && unit < 0xdc00;
}

} // namespace

ConsoleInput::int_type ConsoleInput::underflow()
{
    SecureZeroMemory(bytes.data(), bytes.size());
    int length = 0;
    do {
        length = read();
    } while (length == 0); // of half a character, or of a carriage return alone
    if (length < 0)
        return traits_type::eof();
    setg(bytes.data(), bytes.data(), bytes.data() + length);
    return traits_type::to_int_type(bytes.front());
}

int ConsoleInput::read()
{
    std::array<wchar_t, 1 + unitsAtOnce> units{pendingUnit};
    auto *end = units.data() + (std::exchange(pendingUnit, L'\0') != 0 ? 1 : 0);
    DWORD count = 0;
    if (!ReadConsoleW(handle, end, unitsAtOnce, &count, nullptr) || count == 0 ||
        (isAtLineStart && *end == endOfInput))
        return -1;
    end += count;
    isAtLineStart = end[-1] == L'\n';
    if (isFirstHalf(end[-1]))
        pendingUnit = *--end;
    end = std::remove(units.data(), end, L'\r');
    const int length = WideCharToMultiByte(CP_UTF8, 0, units.data(), static_cast<int>(end - units.data()),
                                           bytes.data(), static_cast<int>(bytes.size()), nullptr, nullptr);
    SecureZeroMemory(units.data(), sizeof units);
    return length;
}

} // namespace console

// SPDX-License-Identifier: MIT
#include "PathText.h"

#include <algorithm>
#include <cwctype>
#include <iterator>

namespace {

constexpr wchar_t separator = L';';
constexpr wchar_t quote = L'"';

// Where the entry that begins there ends: at a separator outside of quotes, or at the end of the path. A quote that is
// never closed is a letter like others, or all entries behind it would be a part of one.
std::size_t endOfEntry(std::wstring_view path, std::size_t begin)
{
    std::size_t at = begin;
    for (; at < path.size() && path[at] != separator; ++at) {
        if (path[at] != quote)
            continue;
        const std::size_t closing = path.find(quote, at + 1);
        if (closing != std::wstring_view::npos)
            at = closing;
    }
    return at;
}

// The text by which two ways to write a folder are compared.
std::wstring comparable(std::wstring_view entry)
{
    std::wstring folder;
    std::remove_copy(entry.begin(), entry.end(), std::back_inserter(folder), quote);
    std::transform(folder.begin(), folder.end(), folder.begin(), [](wchar_t letter) {
        return static_cast<wchar_t>(std::towlower(static_cast<std::wint_t>(letter)));
    });
    while (!folder.empty() && folder.back() == L'\\')
        folder.pop_back();
    return folder;
}

} // namespace

std::wstring withFolder(std::wstring_view path, std::wstring_view folder)
{
    std::wstring result(path);
    if (withoutFolder(path, folder) != path)
        return result;
    const bool endsBySeparator = !path.empty() && path.back() == separator;
    const bool needsQuotes = folder.find(separator) != std::wstring_view::npos;
    if (!path.empty() && !endsBySeparator)
        result += separator;
    if (needsQuotes)
        result += quote;
    result += folder;
    if (needsQuotes)
        result += quote;
    if (endsBySeparator)
        result += separator;
    return result;
}

std::wstring withoutFolder(std::wstring_view path, std::wstring_view folder)
{
    const std::wstring unwanted = comparable(folder);
    std::wstring result(path);
    std::size_t begin = 0;
    while (begin < result.size()) {
        const std::size_t end = endOfEntry(result, begin);
        const bool isLast = end == result.size();
        if (comparable(std::wstring_view(result).substr(begin, end - begin)) != unwanted) {
            begin = end + 1;
            continue;
        }
        // With the separator behind it, or where nothing is behind it, with the one in front.
        if (isLast && begin > 0)
            --begin;
        result.erase(begin, isLast ? std::wstring::npos : end + 1 - begin);
    }
    return result;
}

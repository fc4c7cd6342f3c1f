// SPDX-License-Identifier: MIT
// The text of a search path for programs, as Windows keeps it in the registry: folders between semicolons, and a folder
// with a semicolon in quotes. It is changed as a text, so that all else in it stays to the letter: variables that are not
// expanded, empty entries, the order. It may be as long as it likes.
#pragma once

#include <string>
#include <string_view>

/// \p path with \p folder behind its entries. A path that has it already stays as it is, and one that ended by a
/// semicolon does so again.
std::wstring withFolder(std::wstring_view path, std::wstring_view folder);

/// \p path without the entries that are \p folder, in small or large letters, with a backslash behind it or not, in quotes
/// or not. What withFolder() has added is gone to the letter.
std::wstring withoutFolder(std::wstring_view path, std::wstring_view folder);

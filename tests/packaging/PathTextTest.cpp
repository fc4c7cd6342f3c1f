// SPDX-License-Identifier: MIT
#include "PathText.h"

#include <gtest/gtest.h>

namespace {

// Each row: what stands there, and what it is with our folder.
TEST(PathTextTest, AFolderComesAndGoesAndAllElseStays)
{
    const std::wstring folder = L"C:\\Program Files\\Torvane";
    const std::wstring text3000 = L"%SystemRoot%;" + std::wstring(2975, L'x') + L";D:\\last one";
    const std::pair<std::wstring, std::wstring> rows[] = {
        {L"", folder},
        {L"C:\\a", L"C:\\a;" + folder},
        {L"C:\\a;", L"C:\\a;" + folder + L";"},
        {L";;%A%;\"C:\\b;c\"", L";;%A%;\"C:\\b;c\";" + folder},
        {L"\"C:\\never closed;C:\\d", L"\"C:\\never closed;C:\\d;" + folder},
        {L"C:\\Program Files\\Torvane 2", L"C:\\Program Files\\Torvane 2;" + folder},
        {text3000, text3000 + L";" + folder},
    };
    ASSERT_EQ(text3000.size(), 3000u);
    for (const auto &[path, extended] : rows) {
        EXPECT_EQ(withFolder(path, folder), extended);
        EXPECT_EQ(withFolder(extended, folder), extended);
        EXPECT_EQ(withoutFolder(extended, folder), path);
        EXPECT_EQ(withoutFolder(path, folder), path);
    }
}

TEST(PathTextTest, AFolderIsKnownHoweverItIsWritten)
{
    for (const std::wstring written :
         {L"c:\\torvane", L"C:\\Torvane\\", L"\"C:\\Torvane\"", L"C:\\TORVANE\\;C:\\Torvane"}) {
        EXPECT_EQ(withFolder(written, L"C:\\Torvane"), written);
        EXPECT_EQ(withoutFolder(written + L";E:\\", L"C:\\Torvane"), L"E:\\");
        EXPECT_EQ(withoutFolder(L"D:\\" + (L";" + written), L"C:\\Torvane"), L"D:\\");
    }
}

TEST(PathTextTest, AFolderWithASemicolonStandsInQuotes)
{
    EXPECT_EQ(withFolder(L"C:\\a", L"C:\\x;y"), L"C:\\a;\"C:\\x;y\"");
    EXPECT_EQ(withoutFolder(L"C:\\a;\"C:\\x;y\";y", L"C:\\x;y"), L"C:\\a;y");
}

} // namespace

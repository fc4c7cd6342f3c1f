// SPDX-License-Identifier: MIT
// Lines of input of any length, and what a terminal is shown of texts from outside.
#include "ConsoleIO.h"

#include "Capture.h"
#include "VisibleText.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace std::string_literals;

namespace {

TEST(ConsoleIO, OfALineOfInputTheRestIsDropped)
{
    const std::string longest(console::maxInputLineBytes, 'x');
    const struct
    {
        std::string input;
        std::vector<std::string> lines;
    } rows[] = {
        {"", {}},
        {"\n\r\na\0b\n"s, {"", "\r", "a\0b"s}},
        {"a\nb", {"a", "b"}},
        {longest + "\nb\n", {longest, "b"}},
        {longest + "y\nb\n", {longest, "b"}},
        {longest + longest + longest + "\n\nb", {longest, "", "b"}},
        {longest, {longest}},
        {longest + "y", {longest}},
    };
    for (const auto &row : rows) {
        const FeedInput input(row.input);
        std::vector<std::string> lines;
        while (const auto line = console::readLine())
            lines.push_back(*line);
        EXPECT_TRUE(lines == row.lines) << "row " << &row - rows;
    }
}

TEST(ConsoleIO, ATerminalIsShownNoControlBytes)
{
    const struct
    {
        std::string text;
        std::string shown;
    } rows[] = {
        {"SimCam G5 ~", "SimCam G5 ~"},
        {"a\nb\r\t\0"s, R"(a\x0ab\x0d\x09\x00)"},
        {"\x1b[2J\x7f", R"(\x1b[2J\x7f)"},
        {"back\\slash \\x0a", R"(back\slash \x0a)"},
        {"Tür € 😀", "Tür € 😀"},
        {"\xc2\x80\xc2\x9b\xc2\x9f\xc2\xa0", "\\xc2\\x80\\xc2\\x9b\\xc2\\x9f\xc2\xa0"},      // C1 controls
        {"\x9b\xff T\xfcr", R"(\x9b\xff T\xfcr)"},                                           // no UTF-8
        {"\xc1\x9b\xe0\x9f\xbf\xf0\x8f\xbf\xbf", R"(\xc1\x9b\xe0\x9f\xbf\xf0\x8f\xbf\xbf)"}, // overlong
        {"\xed\xa0\x80\xf4\x90\x80\x80", R"(\xed\xa0\x80\xf4\x90\x80\x80)"}, // surrogate, above U+10FFFF
        {"\xe2\x82", R"(\xe2\x82)"},
        {"\xe2\x82\n", R"(\xe2\x82\x0a)"},
        {"\xf0\x9f\x98"
         "a",
         R"(\xf0\x9f\x98a)"},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(console::visibleText(row.text), row.shown);
        EXPECT_EQ(console::visibleText(row.shown), row.shown);
    }
}

} // namespace

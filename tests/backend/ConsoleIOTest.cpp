// SPDX-License-Identifier: MIT
// Lines of input of any length, and what a terminal is shown of texts from outside.
#include "ConsoleIO.h"

#include "Capture.h"
#include "Terminal.h"
#include "VisibleText.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

using namespace std::string_literals;

namespace {

TEST(ConsoleIO, OfALineOfInputTheRestIsDropped)
{
    const std::string carriageReturn =
        console::lineEndPrefix.empty() ? "\r" : ""; // or it is of the line's end
    const std::string longest(console::maxInputLineBytes, 'x');
    const std::pair<std::string, std::vector<std::string>> rows[] = {
        {"\n\r\na\0b\nc"s, {"", carriageReturn, "a\0b"s, "c"}},
        {longest + "\nb\n", {longest, "b"}},
        {longest + "y\n\nb", {longest, "", "b"}},
        {longest + longest + longest, {longest}},
    };
    for (const auto &[text, expected] : rows) {
        const FeedInput input(text);
        std::vector<std::string> lines;
        while (const auto line = console::readLine())
            lines.push_back(*line);
        EXPECT_TRUE(lines == expected) << text.size();
    }
}

TEST(ConsoleIO, ATerminalIsShownNoControlBytes)
{
    const std::pair<std::string, std::string> rows[] = {
        {"back\\slash \\x0a ~ Tür € 😀", R"(back\slash \x0a ~ Tür € 😀)"},
        {"a\nb\r\t\0\x1b[2J\x7f"s, R"(a\x0ab\x0d\x09\x00\x1b[2J\x7f)"},
        {"\xc2\x80\xc2\x9b\xc2\x9f\xc2\xa0", "\\xc2\\x80\\xc2\\x9b\\xc2\\x9f\xc2\xa0"},      // C1 controls
        {"\x9b\xff T\xfcr", R"(\x9b\xff T\xfcr)"},                                           // no UTF-8
        {"\xc1\x9b\xe0\x9f\xbf\xf0\x8f\xbf\xbf", R"(\xc1\x9b\xe0\x9f\xbf\xf0\x8f\xbf\xbf)"}, // overlong
        {"\xed\xa0\x80\xf4\x90\x80\x80", R"(\xed\xa0\x80\xf4\x90\x80\x80)"}, // surrogate, above U+10FFFF
        {"\xe2\x82\n\xf0\x9f\x98", R"(\xe2\x82\x0a\xf0\x9f\x98)"},           // cut short
    };
    for (const auto &[text, shown] : rows) {
        EXPECT_EQ(console::visibleText(text), shown);
        EXPECT_EQ(console::visibleText(shown), shown);
    }
}

} // namespace

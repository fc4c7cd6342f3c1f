// SPDX-License-Identifier: MIT
// The rows of known-differences.txt: each side answers as it stands there.
#include "Comparison.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <regex>

namespace {

std::string byteAt(const std::string &name, int address, const std::string &mode)
{
    return "<IntReg Name=\"" + name + "\"><Address>" + std::to_string(address) +
           "</Address><Length>1</Length><AccessMode>" + mode + "</AccessMode><pPort>Device</pPort></IntReg>";
}

const std::string description =
    R"(<RegisterDescription ModelName="Known"><Port Name="Device"/>
<Integer Name="Limited"><Value>5</Value><Min>1</Min><Max>9</Max><Inc>2</Inc></Integer>
<Boolean Name="Bool"><pValue>One</pValue></Boolean>
<Enumeration Name="Enum"><EnumEntry Name="Off"><Value>0</Value></EnumEntry>
<EnumEntry Name="On"><Value>2</Value></EnumEntry><pValue>Two</pValue></Enumeration>)" +
    byteAt("Zero", 0x1000, "RW") + byteAt("One", 0x1001, "RW") + byteAt("Two", 0x1002, "RW") +
    byteAt("Three", 0x1003, "RW") + byteAt("ReadOnly", 0x1003, "RO");

const std::string symbols =
    R"(<pVariable Name="LIM">Limited</pVariable><pVariable Name="BOOL">Bool</pVariable>
<pVariable Name="ENUM">Enum</pVariable><pVariable Name="DECLARED.Max">Limited</pVariable>
<Constant Name="MINUS">-2</Constant><Expression Name="INNER">2*2</Expression>
<Expression Name="OUTER">INNER+1</Expression>)";

std::string nodesOf(const std::string &text)
{
    std::smatch parts;
    if (!std::regex_match(text, parts, std::regex{"(int|float): (.*)"}))
        return text;
    const std::string tag = parts[1] == "int" ? "IntSwissKnife" : "SwissKnife";
    const std::string fraction = parts[1] == "int" ? "" : "<Constant Name=\"C\">0.125</Constant>";
    return "<" + tag + " Name=\"N\">" + symbols + fraction + "<Formula><![CDATA[" + parts[2].str() +
           "]]></Formula></" + tag + ">";
}

std::string withoutWords(const std::string &answer)
{
    return answer.empty() ? "dies" : answer.starts_with(refusal) ? std::string{refusal} : answer;
}

TEST(KnownDifferences, BothSidesAnswerAsEver)
{
    std::ifstream file{TORVANE_DIFFERENTIAL "/known-differences.txt"};
    const std::regex row{"(\\w+) ?(\\S*) ; (.*) ; (.*) ; (.*)"};
    std::smatch columns;
    std::size_t rows = 0;
    for (std::string line; std::getline(file, line);) {
        if (line.empty() || line.starts_with('#'))
            continue;
        ASSERT_TRUE(std::regex_match(line, columns, row)) << line;
        Questionnaire asked{description + nodesOf(columns[3]) + "</RegisterDescription>",
                            {},
                            {{columns[1], "N", columns[2]}}};
        for (std::uint8_t place = 0; place < 16; ++place)
            asked.memory[0x1000U + place] = place;
        EXPECT_EQ(withoutWords(answersOfTorvane(asked).front()), columns[4]) << line;
        EXPECT_THAT(columns[5].str() + " or ",
                    testing::HasSubstr(withoutWords(answersOfAravis(asked).front()) + " or "))
            << line;
        ++rows;
    }
    EXPECT_GE(rows, 55U);
}

} // namespace

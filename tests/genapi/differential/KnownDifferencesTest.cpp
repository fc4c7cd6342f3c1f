// SPDX-License-Identifier: MIT
// The rows of known-differences.txt: each side answers as it stands there.
#include "Sides.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <sstream>

namespace {

const std::string description = R"(<RegisterDescription ModelName="Known">
<Port Name="Device"/>
<IntReg Name="Zero"><Address>0x1010</Address><Length>1</Length><AccessMode>RW</AccessMode><pPort>Device</pPort></IntReg>
<IntReg Name="One"><Address>0x1011</Address><Length>1</Length><AccessMode>RW</AccessMode><pPort>Device</pPort></IntReg>
<IntReg Name="Two"><Address>0x1012</Address><Length>1</Length><AccessMode>RW</AccessMode><pPort>Device</pPort></IntReg>
<IntReg Name="Three"><Address>0x1013</Address><Length>1</Length><AccessMode>RW</AccessMode><pPort>Device</pPort></IntReg>
<IntReg Name="ReadOnly"><Address>0x1013</Address><Length>1</Length><pPort>Device</pPort></IntReg>
<Integer Name="Limited"><Value>5</Value><Min>1</Min><Max>9</Max><Inc>2</Inc></Integer>
<Boolean Name="Bool"><pValue>One</pValue></Boolean>
<Enumeration Name="Enum"><EnumEntry Name="Off"><Value>0</Value></EnumEntry>
<EnumEntry Name="On"><Value>2</Value></EnumEntry><pValue>Two</pValue></Enumeration>
)";

const std::string symbols =
    R"(<pVariable Name="LIM">Limited</pVariable><pVariable Name="BOOL">Bool</pVariable>
<pVariable Name="ENUM">Enum</pVariable><pVariable Name="DECLARED.Max">Limited</pVariable>
<Constant Name="MINUS">-2</Constant><Expression Name="INNER">2*2</Expression><Expression Name="OUTER">INNER+1</Expression>)";

std::string nodesOf(const std::string &text)
{
    const bool isInteger = text.starts_with("int:");
    if (!isInteger && !text.starts_with("float:"))
        return text;
    const std::string tag = isInteger ? "IntSwissKnife" : "SwissKnife";
    return "<" + tag + " Name=\"N\">" + symbols + (isInteger ? "" : "<Constant Name=\"C\">0.125</Constant>") +
           "<Formula><![CDATA[" + text.substr(text.find(' ') + 1) + "]]></Formula></" + tag + ">";
}

std::string withoutWords(const std::string &answer)
{
    return answer.empty() ? "dies" : answer.starts_with(refusal) ? std::string{refusal} : answer;
}

TEST(KnownDifferences, BothSidesAnswerAsEver)
{
    std::ifstream file{TORVANE_DIFFERENTIAL "/known-differences.txt"};
    std::size_t rows = 0;
    for (std::string line; std::getline(file, line);) {
        if (line.empty() || line.starts_with('#'))
            continue;
        std::vector<std::string> columns;
        for (std::size_t end = 0; end != std::string::npos; line.erase(0, end + 3)) {
            end = line.find(" ; ");
            columns.push_back(line.substr(0, end));
            if (end == std::string::npos)
                break;
        }
        ASSERT_EQ(columns.size(), 4U) << columns.front();
        Questionnaire asked{
            description + nodesOf(columns[1]) + "</RegisterDescription>", {}, {{"", "", "N", ""}}};
        std::istringstream{columns[0]} >> asked.questions[0].action >> asked.questions[0].kind >>
            asked.questions[0].value;
        for (std::uint8_t place = 0; place < 20; ++place)
            asked.memory[0x1000U + place] = place < 16 ? place : static_cast<std::uint8_t>(place - 16);
        EXPECT_EQ(withoutWords(answersOfTorvane(asked).front()), columns[2]) << columns[1];
        EXPECT_EQ(withoutWords(answersOfAravis(asked).answers.front()), columns[3]) << columns[1];
        ++rows;
    }
    EXPECT_GE(rows, 70U);
}

} // namespace

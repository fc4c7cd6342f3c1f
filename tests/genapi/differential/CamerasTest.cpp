// SPDX-License-Identifier: MIT
// Cameras as one meets them: everything that their descriptions name is asked of both sides, and written.
#include "Comparison.h"

#include <gmock/gmock.h>
#include <pugixml.hpp>

#include <fstream>
#include <sstream>

namespace {

/// For numbers: one that fits many, one at the edge and one that fits nowhere. The last is for Booleans.
constexpr const char *writtenValues[] = {"16", "1000.25", "-1e9", "true"};

/// Constants without limits stay as they are: other nodes take them for addresses and lengths.
bool isForWriting(pugi::xml_node element)
{
    return !element.child("Inc") && (!element.child("Value") || element.child("Max"));
}

/// All is read, written, and read again, with the selectors that are constants where the writes left them.
Questionnaire cameraOf(const std::string &name)
{
    const std::string path = TORVANE_DIFFERENTIAL "/cameras/" + name;
    std::stringstream text;
    text << std::ifstream{path + ".memory"}.rdbuf() << '\n' << std::ifstream{path + ".xml"}.rdbuf();
    Questionnaire result = readQuestionnaire(text);
    pugi::xml_document document;
    EXPECT_TRUE(document.load_string(result.description.c_str()));
    std::vector<Question> reads;
    std::vector<Question> writes;
    for (pugi::xpath_node found : document.select_nodes(
             "//*[@Name][pPort|pValue|Value|Formula|LSB|Bit|pIndex][not(self::EnumEntry)]")) {
        const pugi::xml_node element = found.node();
        const std::string node = element.attribute("Name").value();
        reads.insert(reads.end(), {{"mode", node, ""}, {"get", node, ""}});
        for (const auto &[limits, action] :
             {std::pair{"Min|pMin", "min"}, {"Max|pMax", "max"}, {"Inc", "inc"}}) {
            if (element.select_node(limits))
                reads.push_back({action, node, ""});
        }
        for (pugi::xml_node entry : element.children("EnumEntry"))
            writes.push_back({"set", node, entry.attribute("Name").value()});
        if (!isForWriting(element))
            continue;
        for (const char *const value : writtenValues)
            writes.push_back({"set", node, value});
    }
    for (const std::vector<Question> &questions : {reads, writes, reads})
        result.questions.insert(result.questions.end(), questions.begin(), questions.end());
    return result;
}

TEST(Cameras, ReadAndWriteAsTheOracleSays)
{
    Comparison comparison;
    for (const char *const camera : {"gige", "usb3"})
        comparison.compare(camera, cameraOf(camera));
    EXPECT_THAT(comparison.differences, testing::IsEmpty());
    EXPECT_GE(comparison.values, 150U);
}

} // namespace

// SPDX-License-Identifier: MIT
// Cameras as one meets them: everything that their descriptions name is asked of both sides, and written.
#include "Comparison.h"

#include <gtest/gtest.h>
#include <pugixml.hpp>

#include <fstream>
#include <iostream>
#include <map>
#include <sstream>

namespace {

const std::map<std::string, std::string> kinds{
    {"Integer", "integer"},       {"IntReg", "integer"},
    {"MaskedIntReg", "integer"},  {"StructEntry", "integer"},
    {"IntSwissKnife", "integer"}, {"IntConverter", "integer"},
    {"Float", "float"},           {"FloatReg", "float"},
    {"SwissKnife", "float"},      {"Converter", "float"},
    {"Boolean", "boolean"},       {"String", "string"},
    {"StringReg", "string"},      {"Register", "register"},
    {"Command", "command"},       {"Enumeration", "enumeration"},
};

/// What is tried on each node of a kind; of numbers one that fits many, one at the edge and one that fits nowhere.
const std::map<std::string, std::vector<std::string>> written{
    {"integer", {"16", "1000", "-1"}},
    {"float", {"2", "1000.25", "-1e9"}},
    {"boolean", {"true", "false"}},
    {"string", {"name"}},
    {"command", {""}},
};

/// Constants without limits stay as they are: other nodes take them for addresses and lengths.
bool isForWriting(pugi::xml_node element)
{
    return !element.child("Inc") && (!element.child("Value") || element.child("Max"));
}

void askAllOf(pugi::xml_node element, const std::string &kind, std::vector<Question> &reads,
              std::vector<Question> &writes)
{
    const std::string name = element.attribute("Name").value();
    reads.push_back({"mode", kind, name, ""});
    if (kind != "command")
        reads.push_back({"get", kind, name, ""});
    for (const auto &[child, action] : {std::pair{"Min", "min"}, {"Max", "max"}, {"Inc", "inc"}}) {
        if (element.child(child) || element.child(("p" + std::string{child}).c_str()))
            reads.push_back({action, kind, name, ""});
    }
    for (pugi::xml_node entry : element.children("EnumEntry"))
        writes.push_back({"set", kind, name, entry.attribute("Name").value()});
    if (const auto values = written.find(kind); values != written.end() && isForWriting(element)) {
        for (const std::string &value : values->second)
            writes.push_back({"set", kind, name, value});
    }
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
    std::vector<Question> writes;
    for (pugi::xpath_node found : document.select_nodes("//*[@Name]")) {
        if (const auto kind = kinds.find(found.node().name()); kind != kinds.end())
            askAllOf(found.node(), kind->second, result.questions, writes);
    }
    const std::vector<Question> reads = result.questions;
    result.questions.insert(result.questions.end(), writes.begin(), writes.end());
    result.questions.insert(result.questions.end(), reads.begin(), reads.end());
    return result;
}

TEST(Cameras, ReadAndWriteAsTheOracleSays)
{
    Comparison comparison;
    for (const char *const camera : {"gige", "usb3"})
        comparison.compare(camera, cameraOf(camera));
    std::cout << comparison.summary() << std::endl;
    EXPECT_EQ(comparison.differences(), std::vector<std::string>{});
    EXPECT_GE(comparison.values(), 200U);
    EXPECT_EQ(comparison.crashes(), 0);
}

} // namespace

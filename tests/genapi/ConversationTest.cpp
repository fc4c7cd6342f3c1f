// SPDX-License-Identifier: MIT
// Holds the cameras in conversations/ to what stands there of them.
#include "Conversation.h"

#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <optional>

namespace {

/// Goes through one file, line by line.
class Conversation
{
public:
    void hold(const std::string &line)
    {
        const std::size_t blank = std::min(line.find(' '), line.size());
        const std::string word = line.substr(0, blank);
        if (line.empty() || line.front() == '#')
            return;
        if (line.front() == '<')
            addNodes(line);
        else if (word == "every")
            common += line.substr(blank);
        else if (word.ends_with(':'))
            templates[word] += line.substr(blank);
        else
            expect(word, line);
    }
    std::size_t questions = 0;

private:
    void addNodes(const std::string &line)
    {
        if (camera)
            nodes.clear();
        camera.reset();
        nodes += line;
    }

    /// A refusal twice: it leaves the node map as it was.
    void expect(const std::string &word, const std::string &line)
    {
        const std::size_t end = std::min(line.find(" ; "), line.size());
        const std::string expected = end < line.size() ? line.substr(end + 3) : "";
        std::string question = line.substr(0, end);
        if (const auto found = templates.find(word + ":"); found != templates.end()) {
            std::string filled = found->second;
            addNodes(filled.replace(filled.find('*'), 1, question.substr(word.size())));
            question = "get X";
        }
        if (!camera)
            camera.emplace(common + nodes);
        EXPECT_EQ(answer(*camera, question), expected) << line;
        if (expected.starts_with("Node '")) {
            EXPECT_EQ(answer(*camera, question), expected) << line << ", once more";
        }
        ++questions;
    }

    std::string common;                           ///< nodes of all cameras
    std::map<std::string, std::string> templates; ///< by their word and its colon
    std::string nodes;
    std::optional<Camera> camera;
};

class Conversations : public testing::TestWithParam<const char *>
{};

TEST_P(Conversations, AreHeldAsTheyStand)
{
    const std::string name = std::string{GetParam()} + ".txt";
    std::ifstream file{TORVANE_CONVERSATIONS "/" + name};
    Conversation conversation;
    int number = 0;
    for (std::string line; std::getline(file, line);) {
        const testing::ScopedTrace place{name.c_str(), ++number, ""};
        conversation.hold(line);
    }
    EXPECT_GT(conversation.questions, 20U);
}

INSTANTIATE_TEST_SUITE_P(Of, Conversations,
                         testing::Values("access", "enumerations", "faults", "formulas", "numbers",
                                         "registers"),
                         [](const auto &info) { return std::string{info.param}; });

} // namespace

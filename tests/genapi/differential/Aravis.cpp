// SPDX-License-Identifier: MIT
// The oracle's side: each questionnaire goes through files to a process of the oracle.
#include "Comparison.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

std::vector<std::string> answersOfAravis(const Questionnaire &questionnaire)
{
    const std::string asked = testing::TempDir() + "oracle-" + std::to_string(getpid());
    const std::string answered = asked + "-answers";
    std::ofstream questions{asked, std::ios::binary};
    write(questions, questionnaire);
    questions.close();

    std::vector<std::string> answers;
    const std::string command =
        "'" TORVANE_ARAVIS_ORACLE "' < '" + asked + "' > '" + answered + "' 2> /dev/null";
    const bool hasLived = std::system(command.c_str()) == EXIT_SUCCESS;
    std::ifstream lines{answered};
    for (std::string line; std::getline(lines, line);)
        answers.push_back(line);
    EXPECT_EQ(hasLived, answers.size() == questionnaire.questions.size());
    answers.resize(questionnaire.questions.size());
    std::filesystem::remove(asked);
    std::filesystem::remove(answered);
    return answers;
}

// SPDX-License-Identifier: MIT
// See the header.
#include "Comparison.h"

#include <algorithm>

namespace {

constexpr std::size_t shownDifferences = 20;

/// The line of the node, as far as a message can bear it.
std::string elementOf(const std::string &description, const std::string &node)
{
    const std::size_t name = std::min(description.find("Name='" + node + "'"), // generated, or by hand
                                      description.find("Name=\"" + node + "\""));
    if (name == std::string::npos)
        return "";
    const std::size_t start = description.rfind('\n', name) + 1;
    return description.substr(start, description.find('\n', name) - start).substr(0, 900);
}

} // namespace

void Comparison::compare(const std::string &camera, const Questionnaire &questionnaire)
{
    const std::vector<std::string> ours = answersOfTorvane(questionnaire);
    const std::vector<std::string> theirs = answersOfAravis(questionnaire);
    for (std::size_t place = 0; place < ours.size(); ++place) {
        const Question &question = questionnaire.questions[place];
        const bool isRefused = ours[place].starts_with(refusal);
        if (isRefused ? theirs[place].starts_with(refusal) : ours[place] == theirs[place])
            values += !isRefused && question.action == "get" ? 1 : 0;
        else if (differences.size() < shownDifferences)
            differences.push_back(camera + ": " + question.text() + "\n  ours:   " + ours[place] +
                                  "\n  theirs: " + theirs[place] + "\n  " +
                                  elementOf(questionnaire.description, question.node));
    }
}

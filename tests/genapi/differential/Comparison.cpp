// SPDX-License-Identifier: MIT
// See the header.
#include "Comparison.h"

#include "Sides.h"

namespace {

constexpr std::size_t shownDifferences = 20;

bool isRefusal(const std::string &answer)
{
    return answer.starts_with(refusal);
}

/// The line of the node, as far as a message can bear it.
std::string elementOf(const std::string &description, const std::string &node)
{
    const std::size_t name = description.find("Name=\"" + node + "\"");
    if (name == std::string::npos)
        return "";
    return description.substr(description.rfind('<', name), 900)
        .substr(0, description.find('\n', name) - name + 20);
}

} // namespace

void Comparison::compare(const std::string &camera, const Questionnaire &questionnaire)
{
    const std::vector<std::string> ours = answersOfTorvane(questionnaire);
    const OracleAnswers theirs = answersOfAravis(questionnaire);
    crashes_ += theirs.crashes;
    ++descriptions;
    for (std::size_t place = 0; place < ours.size(); ++place) {
        const std::string &our = ours[place];
        const std::string &their = theirs.answers[place];
        if (their.empty()) // it died of this question
            continue;
        const bool bothRefuse = isRefusal(our) && isRefusal(their);
        if (our == their || bothRefuse) {
            ++answers;
            refusals += bothRefuse ? 1 : 0;
            values_ += !bothRefuse && questionnaire.questions[place].action == "get" ? 1 : 0;
            continue;
        }
        if (++differenceCount <= shownDifferences)
            differences_.push_back(camera + ": " + questionnaire.questions[place].text() +
                                   "\n  ours:   " + our + "\n  theirs: " + their + "\n  " +
                                   elementOf(questionnaire.description, questionnaire.questions[place].node));
    }
}

std::string Comparison::summary() const
{
    return std::to_string(descriptions) + " descriptions, " + std::to_string(answers) + " equal answers (" +
           std::to_string(values_) + " values read, " + std::to_string(refusals) + " refusals), " +
           std::to_string(differenceCount) + " differences, " + std::to_string(crashes_) +
           " crashes of the oracle";
}

// SPDX-License-Identifier: MIT
// The two sides, our node map in this process and the oracle in its own, and the comparison of what they answer.
#pragma once

#include "Questionnaire.h"

#include <string>
#include <vector>

/// One answer for each question, in order.
std::vector<std::string> answersOfTorvane(const Questionnaire &questionnaire);
/// The same, empty from the question on that ends the oracle.
std::vector<std::string> answersOfAravis(const Questionnaire &questionnaire);

/// Puts questionnaires to both sides. Two refusals are alike, whatever their words.
struct Comparison
{
    /// \param camera  what the differences call it
    void compare(const std::string &camera, const Questionnaire &questionnaire);

    /// Features that both sides read, with one value. Bounds, access modes and writes are not counted here.
    std::size_t values = 0;
    /// With camera, question, both answers and the element of the node; the first ones only.
    std::vector<std::string> differences;
};

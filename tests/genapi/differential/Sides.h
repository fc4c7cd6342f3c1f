// SPDX-License-Identifier: MIT
// The two sides of the comparison: our node map, in this process, and the oracle, in its own.
#pragma once

#include "Questionnaire.h"

#include <string>
#include <vector>

/// One answer for each question, in order.
std::vector<std::string> answersOfTorvane(const Questionnaire &questionnaire);

struct OracleAnswers
{
    std::vector<std::string> answers; ///< as many as there are questions; an empty one where it died
    int crashes = 0;
};

/// Starts the oracle, and again behind each question that ends it.
OracleAnswers answersOfAravis(const Questionnaire &questionnaire);

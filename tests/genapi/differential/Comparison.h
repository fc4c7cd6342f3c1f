// SPDX-License-Identifier: MIT
// Puts questionnaires to both sides, counts what they agree on and collects where they differ.
#pragma once

#include "Questionnaire.h"

#include <string>
#include <vector>

class Comparison
{
public:
    /// \param camera  what the differences call it
    void compare(const std::string &camera, const Questionnaire &questionnaire);

    /// Features that both sides read, with one value. Bounds, access modes and writes are not counted here.
    std::size_t values() const { return values_; }
    int crashes() const { return crashes_; }
    /// With camera, question, both answers and the element of the node; the first ones only.
    const std::vector<std::string> &differences() const { return differences_; }
    /// The counts, for the log.
    std::string summary() const;

private:
    std::size_t descriptions = 0;
    std::size_t answers = 0;
    std::size_t refusals = 0;
    std::size_t differenceCount = 0;
    std::size_t values_ = 0;
    int crashes_ = 0;
    std::vector<std::string> differences_;
};

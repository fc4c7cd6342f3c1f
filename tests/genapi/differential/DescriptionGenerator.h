// SPDX-License-Identifier: MIT
// Random cameras over the whole grammar of descriptions: nodes that refer to one another, a memory that fits them,
// and the questions to ask.
#pragma once

#include "Questionnaire.h"

/// The same camera for the same seed.
/// \param count  nodes of random kinds, besides some dozens that they build on
Questionnaire generatedCamera(std::uint64_t seed, int count);

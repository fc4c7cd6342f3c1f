// SPDX-License-Identifier: MIT
// What is wrong with a producer that could not be used: told from its file and from what the loader and the binding say.
#pragma once

#include "Tree.h"

#include <string>

namespace fleet {

enum class ProducerState
{
    Ok,
    NoLibrary,       // the file is something else
    OtherBits,       // 32-bit, where the program has 64
    Truncated,       // cut short, as by a broken copy
    MissingFunction, // of those that its GenTL version promises
    NotLoaded,       // the loader's reason says more
    NoCameras,       // it works, and sees none
    Failed           // it was loaded, and then failed
};

struct ProducerVerdict
{
    ProducerState state = ProducerState::Ok;
    std::string function; ///< the one that is missing
    std::string advice;   ///< a sentence; empty where all is well
};

ProducerVerdict judgeProducer(const Producer &producer);

const char *wordOf(ProducerState state);

} // namespace fleet

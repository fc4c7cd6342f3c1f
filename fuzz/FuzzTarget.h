// SPDX-License-Identifier: MIT
// What each fuzz target has: the entry, and a way to tell that something is wrong which is no crash by itself.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <string>

/// Runs the target on one input. Called by libFuzzer, or by main.cpp for the files of the corpus.
/// \return 0
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size);

/// Ends the process when \p holds is false, which makes the input a finding.
inline void require(bool holds, const std::string &fault)
{
    if (holds)
        return;
    std::cerr << fault << std::endl;
    std::abort();
}

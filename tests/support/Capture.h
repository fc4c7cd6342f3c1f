// SPDX-License-Identifier: MIT
// The standard streams of the process for the time of a scope.
#pragma once

#include "TemporaryFolder.h"

#include <cstdio>
#include <iostream>
#include <sstream>
#include <string>
#include <string_view>

/// Catches standard output, at the level of the descriptor: std::cout as well as stdio and whatever a loaded
/// module prints.
class CaptureOutput
{
public:
    CaptureOutput();
    CaptureOutput(const CaptureOutput &) = delete;
    CaptureOutput &operator=(const CaptureOutput &) = delete;
    ~CaptureOutput();

    /// Everything printed since the beginning.
    std::string text();

private:
    const TemporaryFolder folder{};
    const std::string path = (folder.path() / "output").string();
    std::FILE *file;
    int before;
};

/// Feeds std::cin from a text, whose end is the end of the input. The terminal of whoever runs the test is out of the way.
class FeedInput
{
public:
    explicit FeedInput(std::string_view text);
    FeedInput(const FeedInput &) = delete;
    FeedInput &operator=(const FeedInput &) = delete;
    ~FeedInput();

private:
    std::istringstream text;
    std::streambuf *before;
    int descriptorBefore;
};

// SPDX-License-Identifier: MIT
// The standard streams of the process for the time of a scope, at the level of descriptors, so that std::cout
// and std::cin are met as well as stdio and whatever a loaded module prints.
#pragma once

#include <cstdio>
#include <string>
#include <string_view>

/// Catches standard output.
class CaptureOutput
{
public:
    CaptureOutput();
    CaptureOutput(const CaptureOutput &) = delete;
    CaptureOutput &operator=(const CaptureOutput &) = delete;
    ~CaptureOutput();

    /// Everything printed since the beginning or the last call.
    std::string text();

private:
    std::FILE *file;
    int before;
    long position = 0;
};

/// Feeds standard input from a text, whose end is the end of the input.
class FeedInput
{
public:
    explicit FeedInput(std::string_view text);
    FeedInput(const FeedInput &) = delete;
    FeedInput &operator=(const FeedInput &) = delete;
    ~FeedInput();

private:
    int before;
};

// SPDX-License-Identifier: MIT
// A file or standard input as the buffer of a stream, for what is read before a run begins: secrets, serial numbers. An
// interruption ends the wait for it, and what has passed through is wiped.
#pragma once

#include "Input.h"

#include <istream>
#include <streambuf>
#include <string>

namespace fleet {

class InputBuffer : public std::streambuf
{
public:
    /// \param name  "-" is standard input
    /// \throws UsageError  it can't be read
    explicit InputBuffer(const std::string &name);
    ~InputBuffer() override;

    /// What it is called in a sentence.
    const std::string &title() const { return title_; }

private:
    /// \throws UsageError  it can't be read
    /// \throws Interrupted
    int_type underflow() override;

    const std::string title_;
    platform::Input input;
    std::string bytes;
};

/// A stream over an InputBuffer that lets its exceptions through.
class InputStream : public std::istream
{
public:
    /// \param buffer  outlives this object
    explicit InputStream(InputBuffer &buffer) : std::istream(&buffer) { exceptions(badbit); }
};

} // namespace fleet

// SPDX-License-Identifier: MIT
// Where the back end's lines go. Standard output is the default; who works through many cameras takes the lines of each
// for its own.
#pragma once

#include <string_view>

namespace console {

/// Takes whole messages, each with its line end.
class LineSink
{
public:
    LineSink() = default;
    LineSink(const LineSink &) = delete;
    LineSink &operator=(const LineSink &) = delete;
    virtual ~LineSink() = default;

    virtual void write(std::string_view text) = 0;
};

/// As long as it lives, what the back end prints on this thread goes to a sink, and then to the one before it again.
class SinkScope
{
public:
    /// \param sink  not owned; outlives this object
    explicit SinkScope(LineSink &sink);
    SinkScope(const SinkScope &) = delete;
    SinkScope &operator=(const SinkScope &) = delete;
    ~SinkScope();

private:
    LineSink *const previous;
};

} // namespace console

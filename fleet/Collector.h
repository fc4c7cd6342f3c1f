// SPDX-License-Identifier: MIT
// The back end's lines about one camera or producer, kept apart from the results: they are its reason.
#pragma once

#include "LineSink.h"

#include <string>
#include <string_view>

namespace fleet {

/// Takes all that the back end prints on this thread as long as it lives.
class Collector : private console::LineSink
{
public:
    Collector() : scope(*this) {}

    /// Whether a line has told of a failure.
    bool hasError() const;
    /// What has been said so far, as one sentence or several on one line; the lines' own marks and indents are left out.
    std::string text() const;

private:
    void write(std::string_view text) override { lines += text; }

    std::string lines;
    console::SinkScope scope;
};

} // namespace fleet

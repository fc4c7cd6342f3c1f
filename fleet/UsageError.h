// SPDX-License-Identifier: MIT
// What ends a run before anything is written because it was called wrongly: status 2.
#pragma once

#include <stdexcept>

namespace fleet {

/// The text is a sentence for the user, without the program's name, and holds no secret.
class UsageError : public std::runtime_error
{
    using std::runtime_error::runtime_error;
};

} // namespace fleet

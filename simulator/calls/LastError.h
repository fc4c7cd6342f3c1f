// SPDX-License-Identifier: MIT
// The last failed call of each thread, as GCGetLastError tells it.
#pragma once

#include "GenTL.h"

#include <array>
#include <cstddef>
#include <string_view>

namespace simulator {

/// A plain array holds the text: a thread-local object with a destructor would keep the module mapped after
/// it was closed, until its threads end.
struct LastError
{
    GC_ERROR code = GC_ERR_SUCCESS;
    std::size_t length = 0; ///< bytes of text, without a terminator
    std::array<char, 1024> buffer{};

    std::string_view text() const { return {buffer.data(), length}; }
};

/// The record of the calling thread; code 0 as long as no call of it has failed. A success doesn't clear it.
const LastError &lastError() noexcept;

/// Records a failure for the calling thread. A text over 1024 bytes is cut.
void rememberError(GC_ERROR code, std::string_view text) noexcept;

} // namespace simulator

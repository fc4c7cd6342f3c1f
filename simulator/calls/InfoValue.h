// SPDX-License-Identifier: MIT
// The answer of an info query: a data type and the bytes that go to the caller's buffer.
#pragma once

#include "GenTL.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace simulator {

struct InfoValue
{
    INFO_DATATYPE type;
    std::string bytes; ///< as they stand in the caller's buffer; texts with their terminator

    static InfoValue text(std::string_view value);
    static InfoValue int32(std::int32_t value);
    static InfoValue uint32(std::uint32_t value);
    static InfoValue uint64(std::uint64_t value);
    static InfoValue size(std::size_t value);
    static InfoValue boolean(bool value);
    static InfoValue buffer(std::string value);
};

/// How the value stands in the call log: a text in quotes, a number in decimal, a buffer as bytes.
std::string describe(const InfoValue &value);

/// \p text in double quotes, with backslashes before quotes and backslashes, and control bytes as \xNN.
std::string quoted(std::string_view text);

/// "[01 00 ff]"; of more than 64 bytes the first 16, and "... N bytes".
std::string hexBytes(const void *data, std::size_t size);

/// Gives \p value to the caller of a query: the size alone when \p buffer is null, else the bytes.
/// \param size  in: bytes of \p buffer; out: bytes needed or used
/// \throws GenTLError  GC_ERR_INVALID_PARAMETER without a place for the size, GC_ERR_BUFFER_TOO_SMALL
void deliver(const std::string &bytes, void *buffer, std::size_t *size);

} // namespace simulator

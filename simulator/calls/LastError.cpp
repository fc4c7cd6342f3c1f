// SPDX-License-Identifier: MIT
#include "LastError.h"

#include <algorithm>

namespace simulator {

namespace {

thread_local LastError record;

} // namespace

const LastError &lastError() noexcept
{
    return record;
}

void rememberError(GC_ERROR code, std::string_view text) noexcept
{
    record.code = code;
    record.length = std::min(text.size(), record.buffer.size());
    std::copy_n(text.data(), record.length, record.buffer.data());
}

} // namespace simulator

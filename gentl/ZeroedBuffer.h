// SPDX-License-Identifier: MIT
// A block of zero bytes whose length a producer dictates. The system hands such blocks out zeroed and without
// touching them, so that an absurd length costs address space, not memory, until the producer fills it.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <memory>
#include <new>

namespace GenICam_Interfaces {

class ZeroedBuffer
{
public:
    /// \throws std::bad_alloc  there is no room for \p size bytes
    explicit ZeroedBuffer(std::size_t size)
        : size_(size), bytes(std::calloc(std::max<std::size_t>(size, 1), 1))
    {
        if (!bytes)
            throw std::bad_alloc();
    }

    [[nodiscard]] char *data() const { return static_cast<char *>(bytes.get()); }
    [[nodiscard]] std::size_t size() const { return size_; }

private:
    struct Free
    {
        void operator()(void *block) const { std::free(block); }
    };

    std::size_t size_;
    std::unique_ptr<void, Free> bytes;
};

} // namespace GenICam_Interfaces

// SPDX-License-Identifier: MIT
// The device of the description's fuzzer: a small memory that repeats over all addresses, so that whatever address
// a description makes up reads something and keeps what is written.
#pragma once

#include "CPortImpl.h"
#include "FuzzTarget.h"

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

class RegisterSpace : public GenApi_3_2_TVN::CPortImpl
{
public:
    /// What an access throws that a device would refuse: no exception of the layer, and none of the library.
    struct Refusal
    {};

    /// \param content  fills the memory, from address 0 on, over and over; empty leaves zeros
    explicit RegisterSpace(std::string_view content) : memory(4096)
    {
        for (std::size_t place = 0; !content.empty() && place < memory.size(); ++place)
            memory[place] = static_cast<std::uint8_t>(content[place % content.size()]);
    }

    void Read(void *buffer, std::int64_t address, std::int64_t length) override
    {
        requireServed(address, length);
        for (std::int64_t place = 0; place < length; ++place)
            static_cast<std::uint8_t *>(buffer)[place] = at(address + place);
    }
    void Write(const void *buffer, std::int64_t address, std::int64_t length) override
    {
        requireServed(address, length);
        for (std::int64_t place = 0; place < length; ++place)
            at(address + place) = static_cast<const std::uint8_t *>(buffer)[place];
    }
    GenApi_3_2_TVN::EAccessMode GetAccessMode() const override { return GenApi_3_2_TVN::RW; }

private:
    /// Served are accesses of at most 64 KiB below 2^32.
    static void requireServed(std::int64_t address, std::int64_t length)
    {
        require(length > 0, "an access of no bytes");
        if (address < 0 || address >> 32 != 0 || length > 0x10000)
            throw Refusal{};
    }
    std::uint8_t &at(std::int64_t address)
    {
        return memory[static_cast<std::size_t>(address) % memory.size()];
    }

    std::vector<std::uint8_t> memory;
};

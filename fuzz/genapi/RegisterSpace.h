// SPDX-License-Identifier: MIT
// The device of the description's fuzzer: a small memory that repeats over all addresses, so that whatever address
// a description makes up reads something and keeps what is written.
#pragma once

#include "CPortImpl.h"

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
    explicit RegisterSpace(std::string_view content);

    /// Served are accesses of at most 64 KiB below 2^32.
    void Read(void *buffer, std::int64_t address, std::int64_t length) override;
    void Write(const void *buffer, std::int64_t address, std::int64_t length) override;
    GenApi_3_2_TVN::EAccessMode GetAccessMode() const override { return GenApi_3_2_TVN::RW; }

private:
    static void requireServed(std::int64_t address, std::int64_t length);
    std::uint8_t &at(std::int64_t address);

    std::vector<std::uint8_t> memory;
};

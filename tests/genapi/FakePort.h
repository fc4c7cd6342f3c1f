// SPDX-License-Identifier: MIT
// The device of these tests: a register space in memory that counts and records what reaches it.
#pragma once

#include "CPortImpl.h"
#include "IPortStacked.h"

#include <cstdint>
#include <cstring>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

class FakePort : public GenApi_3_2_TVN::CPortImpl
{
public:
    /// Bytes that no test has set are zero.
    void set(std::uint64_t address, const std::vector<std::uint8_t> &bytes)
    {
        for (std::size_t place = 0; place < bytes.size(); ++place)
            memory[address + place] = bytes[place];
    }
    std::vector<std::uint8_t> get(std::uint64_t address, std::size_t length)
    {
        std::vector<std::uint8_t> bytes(length);
        for (auto byte = memory.lower_bound(address); byte != memory.end(); ++byte) {
            if (byte->first - address >= length)
                break;
            bytes[byte->first - address] = byte->second;
        }
        return bytes;
    }

    void Read(void *buffer, std::int64_t address, std::int64_t length) override
    {
        record("R", address, length);
        const auto bytes = get(static_cast<std::uint64_t>(address), static_cast<std::size_t>(length));
        std::memcpy(buffer, bytes.data(), bytes.size());
    }
    void Write(const void *buffer, std::int64_t address, std::int64_t length) override
    {
        record("W", address, length);
        const auto *const first = static_cast<const std::uint8_t *>(buffer);
        set(static_cast<std::uint64_t>(address), {first, first + length});
    }
    GenApi_3_2_TVN::EAccessMode GetAccessMode() const override { return accessMode; }

    GenApi_3_2_TVN::EAccessMode accessMode = GenApi_3_2_TVN::RW;
    std::string failure;               ///< thrown as std::runtime_error by every access, unless empty
    std::vector<std::string> accesses; ///< such as "R 256 4"

private:
    void record(const char *kind, std::int64_t address, std::int64_t length)
    {
        accesses.push_back(std::string{kind} + " " + std::to_string(static_cast<std::uint64_t>(address)) +
                           " " + std::to_string(length));
        if (!failure.empty())
            throw std::runtime_error(failure);
    }

    std::map<std::uint64_t, std::uint8_t> memory;
};

/// A device that offers stacks as well. The layer has no use for them, so they do nothing.
class FakeStackedPort : public FakePort, public GenApi_3_2_TVN::IPortStacked
{
public:
    void ReadStacked(const GenApi_3_2_TVN::PortAccess *, std::size_t) override {}
    void WriteStacked(const GenApi_3_2_TVN::PortAccess *, std::size_t) override {}
};

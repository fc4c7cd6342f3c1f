// SPDX-License-Identifier: MIT
// A camera of any size for the benchmarks of the node map: categories of features with the texts that real
// descriptions carry, over registers, swiss knives, converters and enumerations.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

struct GeneratedCamera
{
    /// \param size  bytes that the description has at least; at most one feature more
    explicit GeneratedCamera(std::size_t size);

    /// Those with an integer behind a swiss knife over a register, numbered from 0.
    std::size_t featureCount = 0;
    static std::string featureName(std::size_t number);

    std::string description;
};

/// Reads the camera's registers, the same for every implementation: each byte tells its address.
void readRegisters(std::uint64_t address, void *buffer, std::size_t length);

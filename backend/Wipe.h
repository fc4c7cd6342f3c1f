// SPDX-License-Identifier: MIT
// Overwriting what held a password, in a way that the compiler keeps although nobody reads it again. It shortens the
// time in which a password stands in memory; copies that a library has made stay.
#pragma once

#include <string>
#include <vector>

/// Overwrites all storage of \p text with zeros, spare capacity included, and empties it. Thread: any, for a text of
/// its own.
void wipe(std::string &text) noexcept;
/// The same for bytes.
void wipe(std::vector<char> &bytes) noexcept;

/// Wipes a text or bytes at the end of its scope, however that is left.
template <class Bytes>
class WipeAtEnd
{
public:
    /// \param bytes  not owned; outlives this object
    explicit WipeAtEnd(Bytes &bytes) : bytes(bytes) {}
    WipeAtEnd(const WipeAtEnd &) = delete;
    WipeAtEnd &operator=(const WipeAtEnd &) = delete;
    ~WipeAtEnd() { wipe(bytes); }

private:
    Bytes &bytes;
};

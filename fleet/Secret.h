// SPDX-License-Identifier: MIT
// A password on its way from where it is kept to the camera that it is meant for. The type keeps it from getting
// anywhere else by accident: it has no stream operator and no implicit text, it is copied only by a word of its own,
// and it is wiped at its end.
#pragma once

#include "Wipe.h"

#include <string>
#include <utility>

namespace fleet {

/// Bytes, without an encoding. Thread: any, one at a time.
class Secret
{
public:
    Secret() = default;
    /// Takes the bytes over and wipes what is left of \p bytes.
    explicit Secret(std::string &&bytes) : bytes(std::move(bytes)) { wipe(bytes); }
    Secret(const Secret &) = delete;
    Secret &operator=(const Secret &) = delete;
    Secret(Secret &&other) noexcept : bytes(std::move(other.bytes)) { wipe(other.bytes); }
    Secret &operator=(Secret &&other) noexcept
    {
        if (this != &other) {
            wipe(bytes);
            bytes = std::move(other.bytes);
            wipe(other.bytes); // a short text is copied by a move
        }
        return *this;
    }
    ~Secret() { wipe(bytes); }

    Secret copy() const { return Secret(std::string(bytes)); }
    bool isEmpty() const { return bytes.empty(); }
    /// The bytes, for the camera or a comparison; whoever copies them wipes the copy.
    const std::string &reveal() const { return bytes; }

    friend bool operator==(const Secret &one, const Secret &other) { return one.bytes == other.bytes; }

private:
    std::string bytes;
};

} // namespace fleet

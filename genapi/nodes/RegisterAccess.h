// SPDX-License-Identifier: MIT
// What all kinds that lie in a register do for a call from outside that wants its bytes.
#pragma once

#include "IRegister.h"
#include "Register.h"

namespace GenApi_3_2_TVN {

/// A base beside the one of the kind's value.
class RegisterAccess : public IRegister
{
public:
    /// \param owner  the node that this is a base of; its own base Node is made before
    explicit RegisterAccess(Node *owner) : bytes{*owner}, owner{*owner} {}

    void Set(const std::uint8_t *from, std::int64_t length, bool verify) override;
    void Get(std::uint8_t *to, std::int64_t length, bool verify, bool ignoreCache) override;
    std::int64_t GetLength() override;
    std::int64_t GetAddress() override;

protected:
    Register bytes;

private:
    void requireLength(std::int64_t length) const;

    Node &owner;
};

} // namespace GenApi_3_2_TVN

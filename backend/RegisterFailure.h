// SPDX-License-Identifier: MIT
// A password register that could not be read or written, for those who have to know why.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>

class RegisterFailure : public std::runtime_error
{
public:
    /// \param code  GenTL's, of the failed call; 0 where no call was made
    RegisterFailure(const std::string &text, std::int32_t code, bool isWrite)
        : std::runtime_error(text), code(code), isWrite_(isWrite)
    {}

    bool isWrite() const noexcept { return isWrite_; }
    /// The camera itself says that it has no register there (GC_ERR_INVALID_ADDRESS).
    bool isNoSuchRegister() const noexcept { return code == -1015; }
    /// The camera does not take what was written (GC_ERR_ACCESS_DENIED, GC_ERR_INVALID_VALUE), as some answer a wrong
    /// password.
    bool isRefusal() const noexcept { return code == -1005 || code == -1019; }

private:
    std::int32_t code;
    bool isWrite_;
};

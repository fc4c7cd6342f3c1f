// SPDX-License-Identifier: MIT
// The text type of the GenApi interfaces. Node names, values and descriptions travel in it, also those that
// hold zero bytes: its length counts, not the first zero.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace GenICam_3_2_TVN {

/// A byte text with a length of its own. No encoding is assumed or checked; descriptions deliver UTF-8.
class gcstring
{
public:
    gcstring() = default;

    /// \param cText  text that ends at its first zero byte; null is the empty text
    gcstring(const char *cText) : text{cText != nullptr ? cText : ""} {}

    /// \param bytes  \p length bytes, zero bytes among them kept; may be null when \p length is 0
    gcstring(const char *bytes, std::size_t length)
        : text{length != 0 ? std::string(bytes, length) : std::string{}}
    {}

    explicit gcstring(std::string_view bytes) : text{bytes} {}

    /// The bytes with a zero behind them; valid until the text changes or goes.
    const char *c_str() const noexcept { return text.c_str(); }

    /// In bytes, without the closing zero.
    std::size_t length() const noexcept { return text.size(); }
    std::size_t size() const noexcept { return text.size(); }
    bool empty() const noexcept { return text.empty(); }

    /// All bytes, zero bytes included; valid as c_str() is.
    explicit operator std::string_view() const noexcept { return text; }

    bool operator==(const gcstring &other) const noexcept = default;

    /// \param cText  ends at its first zero byte, so it never equals a text that holds one; null is empty
    bool operator==(const char *cText) const noexcept
    {
        return text == (cText != nullptr ? std::string_view{cText} : std::string_view{});
    }

private:
    std::string text;
};

using gcstring_vector = std::vector<gcstring>;

} // namespace GenICam_3_2_TVN

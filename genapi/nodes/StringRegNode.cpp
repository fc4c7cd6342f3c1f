// SPDX-License-Identifier: MIT
// See the header.
#include "StringRegNode.h"

#include <algorithm>
#include <vector>

namespace GenApi_3_2_TVN {

std::string StringRegNode::readText(Reading reading)
{
    std::vector<std::uint8_t> all(static_cast<std::size_t>(bytes.readTextLength()));
    if (all.empty())
        return {};
    bytes.readOrdered(reading, all);
    return std::string{all.begin(), std::find(all.begin(), all.end(), std::uint8_t{0})};
}

void StringRegNode::writeText(const std::string &newText)
{
    std::vector<std::uint8_t> all(newText.begin(), newText.end());
    all.resize(std::max(all.size(), static_cast<std::size_t>(bytes.readTextLength())), 0);
    if (!all.empty())
        bytes.writeOrdered(all);
}

} // namespace GenApi_3_2_TVN

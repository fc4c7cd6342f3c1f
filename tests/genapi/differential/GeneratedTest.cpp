// SPDX-License-Identifier: MIT
// Generated cameras of fixed seeds: the node map and the oracle agree on every answer.
#include "Comparison.h"
#include "DescriptionGenerator.h"

#include <gmock/gmock.h>

namespace {

constexpr std::uint64_t descriptionsPerShare = 15;
constexpr int nodesPerDescription = 100;
constexpr std::size_t valuesPerShare = 1850;

/// Shares of the seeds, so that several processes can work at them.
class Generated : public testing::TestWithParam<std::uint64_t>
{};

TEST_P(Generated, CamerasReadAndWriteAsTheOracleSays)
{
    Comparison comparison;
    const std::uint64_t first = GetParam() * descriptionsPerShare;
    for (std::uint64_t seed = first; seed < first + descriptionsPerShare; ++seed)
        comparison.compare("seed " + std::to_string(seed), generatedCamera(seed, nodesPerDescription));
    EXPECT_THAT(comparison.differences, testing::IsEmpty());
    EXPECT_GE(comparison.values, valuesPerShare);
}

INSTANTIATE_TEST_SUITE_P(Share, Generated, testing::Range<std::uint64_t>(0, 16));

} // namespace

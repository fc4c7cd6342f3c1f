// SPDX-License-Identifier: MIT
// What the file of a producer states of itself is looked at before the loader of Linux believes it.
#include "LoadFixture.h"

#include <fstream>

using testing::HasSubstr;

namespace {

using ModuleFileTest = LoadTest;

TEST_F(ModuleFileTest, ATruncatedProducerIsNotMapped)
{
    const auto fault = [](std::uintmax_t size) {
        const std::string copy = "cut-to-" + std::to_string(size) + ".cti";
        std::filesystem::copy_file(Simulator::cti(), copy);
        std::filesystem::resize_file(copy, size);
        return loadFailure(copy);
    };
    EXPECT_EQ(fault(63),
              "Loading cti cut-to-63.cti failed! Code: cut-to-63.cti: the file is truncated, it has 63 of "
              "at least 64 bytes.");
    EXPECT_THAT(fault(100), HasSubstr("truncated, it has 100 of")) << "within the program headers";

    // Whatever is left of it, the process lives; behind the last segment nothing is missed.
    const std::uintmax_t size = std::filesystem::file_size(Simulator::cti());
    bool isWhole = false;
    for (std::uintmax_t part = 1; part <= 16; ++part) {
        const std::string failure = fault(size * part / 16);
        isWhole = isWhole || failure == "no exception";
        EXPECT_EQ(failure.find("the file is truncated") == std::string::npos, isWhole) << failure;
    }
    EXPECT_TRUE(isWhole);
}

TEST_F(ModuleFileTest, HeadersAreNotBelieved)
{
    const auto fault = [](const std::string &copy, std::streamoff place, const std::string &bytes) {
        std::filesystem::copy_file(Simulator::cti(), copy);
        std::fstream(copy, std::ios::in | std::ios::out | std::ios::binary).seekp(place) << bytes;
        return loadFailure(copy);
    };
    const std::string absurd(8, '\xff');
    const auto toTheLastByte = HasSubstr("of at least 18446744073709551615 bytes");
    EXPECT_THAT(fault("headers.cti", 32, absurd), toTheLastByte);
    EXPECT_THAT(fault("segment.cti", 64 + 32, absurd), toTheLastByte) << "the length of the first one";
    EXPECT_THAT(fault("class.cti", 4, "\1"), HasSubstr("wrong ELF class")) << "in the loader's words";
}

} // namespace

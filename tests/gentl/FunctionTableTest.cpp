// SPDX-License-Identifier: MIT
// The members of GenTL_Interface: which of them a producer's version brings, that each reaches its own
// function, and the made-up error of an absent one.
#include "GenTL_Interface.h"
#include "Script.h"
#include "Simulator.h"

#include <gmock/gmock.h>

#include <array>
#include <map>
#include <thread>
#include <tuple>
#include <utility>
#include <vector>

using GenICam_Interfaces::GenTL_Interface;

namespace {

constexpr GC_ERROR missing = GenTL_Interface::functionMissingCode;
const std::string lacks = "The instrumented TL does not implement ";

/// What GCGetLastError tells on the calling thread: its result, code and text.
std::tuple<GC_ERROR, GC_ERROR, std::string> lastErrorOf(const GenTL_Interface &gentl)
{
    std::array<char, 100> text{};
    std::size_t size = text.size();
    GC_ERROR code = 4711;
    const GC_ERROR result = gentl.GCGetLastError(&code, text.data(), &size);
    return {result, code, text.data()};
}

/// A name, and the call of the member of that name with nothing.
using Member = std::pair<std::string, GC_ERROR (*)(const GenTL_Interface &)>;

template <template <class> class Kind, class... Arguments>
GC_ERROR callWithNothing(const Kind<GC_ERROR (*)(Arguments...)> &function)
{
    return function(Arguments{}...);
}

template <auto member>
GC_ERROR call(const GenTL_Interface &gentl)
{
    return callWithNothing(gentl.*member);
}

#define MEMBER(name) Member(#name, call<&GenTL_Interface::name>)

/// All but GCGetLastError, by the function types of GenTL.h.
const std::vector<Member> members{
#include "Members.inc"
};

/// The minor versions that brought functions after 1.0.
const std::map<std::string, std::uint32_t> laterFunctions{
    {"GCGetNumPortURLs", 1},    {"GCGetPortURLInfo", 1},     {"GCReadPortStacked", 1},
    {"GCWritePortStacked", 1},  {"DSGetBufferChunkData", 3}, {"IFGetParentTL", 4},
    {"DevGetParentIF", 4},      {"DSGetParentDev", 4},       {"DSGetNumBufferParts", 5},
    {"DSGetBufferPartInfo", 5},
};

TEST(VersionTest, DecidesWhichMembersReachTheirFunctions)
{
    using Version = std::pair<std::uint32_t, std::uint32_t>;
    // A claim, the queries of it that are not implemented, what is known of it, and the last group that is looked up.
    const std::tuple<const char *, std::vector<TL_INFO_CMD>, Version, std::uint32_t> rows[] = {
        {"0.9", {}, {0, 9}, 0},
        {"1.0", {}, {1, 0}, 0},
        {"1.2", {}, {1, 2}, 2},
        {"1.3", {}, {1, 3}, 3},
        {"1.5", {}, {1, 5}, 5},
        {"1.6", {}, {1, 6}, 6},
        {"2.1", {}, {2, 1}, 1}, // only the minor number counts
        {"1.5", {TL_INFO_GENTL_VER_MAJOR}, {0, 5}, 4},
        {"1.5", {TL_INFO_GENTL_VER_MINOR}, {1, 0}, 4},
        {"1.5", {TL_INFO_GENTL_VER_MAJOR, TL_INFO_GENTL_VER_MINOR}, {0, 0}, 4},
    };
    for (const auto &[claimed, refused, known, lastMinor] : rows) {
        SCOPED_TRACE(std::string(claimed) + ", refused: " + std::to_string(refused.size()));
        Simulator simulator("[producer]\nversion = \"" + std::string(claimed) + "\"\n");
        for (const TL_INFO_CMD command : refused)
            simulator.failNth("GCGetInfo", GC_ERR_NOT_IMPLEMENTED, 1, 0,
                              "command = " + std::to_string(command) + "\n");
        const GenTL_Interface gentl(Simulator::cti());
        EXPECT_EQ(gentl.genTLVersionKnown(), refused.empty());
        EXPECT_EQ(gentl.genTLVersionMajor(), known.first);
        EXPECT_EQ(gentl.genTLVersionMinor(), known.second);
        EXPECT_EQ(gentl.getGenTLVersionString(),
                  refused.empty() ? std::string("V") + claimed : "V (query not implemented)");
        for (const auto &[name, callMember] : members) {
            const auto later = laterFunctions.find(name);
            const bool present = later == laterFunctions.end() || later->second <= lastMinor;
            simulator.clearLog();
            EXPECT_EQ(callMember(gentl) != missing, present) << name;
            EXPECT_EQ(simulator.calls(name).size(), present ? 1U : 0U) << name;
            if (!present) {
                EXPECT_EQ(lastErrorOf(gentl), std::tuple(0, 4711, lacks + name + "()!"));
            }
        }
    }
}

/// Over a producer that does not tell its version, and has neither streams nor the functions of 1.4.
class MadeUpErrorTest : public testing::Test
{
protected:
    MadeUpErrorTest() { *torvaneTestScript() = Script(); }

    GC_ERROR callAbsent() const { return gentl.DSGetParentDev(nullptr, nullptr); }

    const GenTL_Interface gentl{scriptedProducer()};
    const std::tuple<GC_ERROR, GC_ERROR, std::string> fromProducer{0, GC_ERR_IO, "the link is down"};
    const std::tuple<GC_ERROR, GC_ERROR, std::string> madeUp{0, 4711, lacks + "DSGetParentDev()!"};
};

TEST_F(MadeUpErrorTest, BelongsToItsThreadUntilAPlainFunctionIsCalled)
{
    EXPECT_EQ(lastErrorOf(gentl), fromProducer);
    EXPECT_EQ(callAbsent(), -2147483648);
    EXPECT_EQ(lastErrorOf(gentl), madeUp); // the code stays what it was before the call
    std::thread([&] { EXPECT_EQ(lastErrorOf(gentl), fromProducer); }).join();
    INFO_DATATYPE type = INFO_DATATYPE_UNKNOWN;
    std::size_t size = 0;
    gentl.GCGetPortURLInfo(nullptr, 0, 0, &type, nullptr, &size);
    EXPECT_EQ(lastErrorOf(gentl), madeUp); // an optional function that is there leaves it in place
    EXPECT_EQ(gentl.DSClose(nullptr), missing);
    EXPECT_EQ(lastErrorOf(gentl), fromProducer); // an absent plain function makes none up

    callAbsent();
    EXPECT_NE(failureOf([] { GenTL_Interface("/nowhere/x.cti"); }), "no exception");
    EXPECT_EQ(lastErrorOf(gentl), fromProducer); // a construction begins with none, come what may
}

TEST_F(MadeUpErrorTest, ChecksItsArguments)
{
    callAbsent();
    const std::string expected = std::get<2>(madeUp);
    GC_ERROR code = 4711;
    std::array<char, 100> text{};
    std::size_t size = 10;
    EXPECT_EQ(gentl.GCGetLastError(nullptr, text.data(), &size), GC_ERR_INVALID_PARAMETER);
    EXPECT_EQ(gentl.GCGetLastError(&code, text.data(), nullptr), GC_ERR_INVALID_PARAMETER);
    EXPECT_EQ(gentl.GCGetLastError(&code, text.data(), &size), GC_ERR_BUFFER_TOO_SMALL);
    EXPECT_EQ(size, 10U);
    size = expected.size();
    EXPECT_EQ(gentl.GCGetLastError(&code, text.data(), &size), GC_ERR_BUFFER_TOO_SMALL);
    EXPECT_EQ(gentl.GCGetLastError(&code, nullptr, &size),
              GC_ERR_SUCCESS); // without a buffer no size is small
    EXPECT_EQ(size, expected.size() + 1);
    size = 0; // no limit
    EXPECT_EQ(gentl.GCGetLastError(&code, text.data(), &size), GC_ERR_SUCCESS);
    EXPECT_EQ(text.data(), expected);
    EXPECT_EQ(size, expected.size() + 1);
    EXPECT_EQ(code, 4711);
}

} // namespace

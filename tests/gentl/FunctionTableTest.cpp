// SPDX-License-Identifier: MIT
// The members of GenTL_Interface: each reaches its own function with its arguments, and the made-up error
// of an absent one.
#include "GenTL_Interface.h"
#include "Script.h"

#include <gmock/gmock.h>

#include <array>
#include <optional>
#include <thread>
#include <tuple>
#include <utility>

using GenICam_Interfaces::GenTL_Interface;

namespace {

constexpr GC_ERROR missing = GenTL_Interface::functionMissingCode;

class FunctionTableTest : public ::testing::Test
{
protected:
    FunctionTableTest() { script = Script(); }

    /// What GCGetLastError tells on the calling thread: its result, code and text.
    std::tuple<GC_ERROR, GC_ERROR, std::string> lastError() const
    {
        std::array<char, 100> text{};
        std::size_t size = text.size();
        GC_ERROR code = 4711;
        const GC_ERROR result = gentl->GCGetLastError(&code, text.data(), &size);
        return {result, code, text.data()};
    }

    /// A producer without version query, with what it has.
    void loadUnversioned(const std::string &variant)
    {
        script.majorCode = script.minorCode = GC_ERR_NOT_IMPLEMENTED;
        gentl.emplace(producerPath(variant));
    }

    Script &script = *torvaneTestScript();
    std::optional<GenTL_Interface> gentl;
    const std::tuple<GC_ERROR, GC_ERROR, std::string> fromProducer{0, GC_ERR_IO, "the link is down"};
    const std::tuple<GC_ERROR, GC_ERROR, std::string> madeUp{
        0, 4711, "The instrumented TL does not implement GCGetPortURLInfo()!"};
};

template <class Argument>
Argument argumentOf(std::uintptr_t number)
{
    if constexpr (std::is_pointer_v<Argument>)
        return reinterpret_cast<Argument>(number);
    else
        return static_cast<Argument>(number);
}

/// Calls \p function with the arguments 1, 2, 3 ... and returns what the producer saw.
template <template <class> class Kind, class... Arguments>
std::string callThrough(const Kind<GC_ERROR (*)(Arguments...)> &function)
{
    Script &script = *torvaneTestScript();
    script.calls.clear();
    script.recordedCode = script.recordedCode - 1;
    const auto callNumbered = [&]<std::size_t... index>(std::index_sequence<index...>)
    {
        return function(argumentOf<Arguments>(index + 1)...);
    };
    EXPECT_EQ(callNumbered(std::index_sequence_for<Arguments...>{}), script.recordedCode);
    return script.calls.size() == 1 ? script.calls[0] : std::to_string(script.calls.size()) + " calls";
}

TEST_F(FunctionTableTest, EachMemberReachesItsFunctionWithItsArguments)
{
    gentl.emplace(producerPath("full"));
    const GenTL_Interface &g = *gentl;
    script.recordsOnly = true;
    EXPECT_EQ(callThrough(g.GCGetInfo), "GCGetInfo(1, 2, 3, 4)");
    EXPECT_EQ(callThrough(g.GCInitLib), "GCInitLib()");
    EXPECT_EQ(callThrough(g.GCCloseLib), "GCCloseLib()");
    EXPECT_EQ(callThrough(g.GCReadPort), "GCReadPort(1, 2, 3, 4)");
    EXPECT_EQ(callThrough(g.GCWritePort), "GCWritePort(1, 2, 3, 4)");
    EXPECT_EQ(callThrough(g.GCGetPortURL), "GCGetPortURL(1, 2, 3)");
    EXPECT_EQ(callThrough(g.GCGetPortInfo), "GCGetPortInfo(1, 2, 3, 4, 5)");
    EXPECT_EQ(callThrough(g.GCRegisterEvent), "GCRegisterEvent(1, 2, 3)");
    EXPECT_EQ(callThrough(g.GCUnregisterEvent), "GCUnregisterEvent(1, 2)");
    EXPECT_EQ(callThrough(g.EventGetData), "EventGetData(1, 2, 3, 4)");
    EXPECT_EQ(callThrough(g.EventGetDataInfo), "EventGetDataInfo(1, 2, 3, 4, 5, 6, 7)");
    EXPECT_EQ(callThrough(g.EventGetInfo), "EventGetInfo(1, 2, 3, 4, 5)");
    EXPECT_EQ(callThrough(g.EventFlush), "EventFlush(1)");
    EXPECT_EQ(callThrough(g.EventKill), "EventKill(1)");
    EXPECT_EQ(callThrough(g.TLOpen), "TLOpen(1)");
    EXPECT_EQ(callThrough(g.TLClose), "TLClose(1)");
    EXPECT_EQ(callThrough(g.TLGetInfo), "TLGetInfo(1, 2, 3, 4, 5)");
    EXPECT_EQ(callThrough(g.TLGetNumInterfaces), "TLGetNumInterfaces(1, 2)");
    EXPECT_EQ(callThrough(g.TLGetInterfaceID), "TLGetInterfaceID(1, 2, 3, 4)");
    EXPECT_EQ(callThrough(g.TLGetInterfaceInfo), "TLGetInterfaceInfo(1, 2, 3, 4, 5, 6)");
    EXPECT_EQ(callThrough(g.TLOpenInterface), "TLOpenInterface(1, 2, 3)");
    EXPECT_EQ(callThrough(g.TLUpdateInterfaceList), "TLUpdateInterfaceList(1, 2, 3)");
    EXPECT_EQ(callThrough(g.IFClose), "IFClose(1)");
    EXPECT_EQ(callThrough(g.IFGetInfo), "IFGetInfo(1, 2, 3, 4, 5)");
    EXPECT_EQ(callThrough(g.IFGetNumDevices), "IFGetNumDevices(1, 2)");
    EXPECT_EQ(callThrough(g.IFGetDeviceID), "IFGetDeviceID(1, 2, 3, 4)");
    EXPECT_EQ(callThrough(g.IFUpdateDeviceList), "IFUpdateDeviceList(1, 2, 3)");
    EXPECT_EQ(callThrough(g.IFGetDeviceInfo), "IFGetDeviceInfo(1, 2, 3, 4, 5, 6)");
    EXPECT_EQ(callThrough(g.IFOpenDevice), "IFOpenDevice(1, 2, 3, 4)");
    EXPECT_EQ(callThrough(g.DevGetPort), "DevGetPort(1, 2)");
    EXPECT_EQ(callThrough(g.DevGetNumDataStreams), "DevGetNumDataStreams(1, 2)");
    EXPECT_EQ(callThrough(g.DevGetDataStreamID), "DevGetDataStreamID(1, 2, 3, 4)");
    EXPECT_EQ(callThrough(g.DevOpenDataStream), "DevOpenDataStream(1, 2, 3)");
    EXPECT_EQ(callThrough(g.DevGetInfo), "DevGetInfo(1, 2, 3, 4, 5)");
    EXPECT_EQ(callThrough(g.DevClose), "DevClose(1)");
    EXPECT_EQ(callThrough(g.DSAnnounceBuffer), "DSAnnounceBuffer(1, 2, 3, 4, 5)");
    EXPECT_EQ(callThrough(g.DSAllocAndAnnounceBuffer), "DSAllocAndAnnounceBuffer(1, 2, 3, 4)");
    EXPECT_EQ(callThrough(g.DSFlushQueue), "DSFlushQueue(1, 2)");
    EXPECT_EQ(callThrough(g.DSStartAcquisition), "DSStartAcquisition(1, 2, 3)");
    EXPECT_EQ(callThrough(g.DSStopAcquisition), "DSStopAcquisition(1, 2)");
    EXPECT_EQ(callThrough(g.DSGetInfo), "DSGetInfo(1, 2, 3, 4, 5)");
    EXPECT_EQ(callThrough(g.DSGetBufferID), "DSGetBufferID(1, 2, 3)");
    EXPECT_EQ(callThrough(g.DSClose), "DSClose(1)");
    EXPECT_EQ(callThrough(g.DSRevokeBuffer), "DSRevokeBuffer(1, 2, 3, 4)");
    EXPECT_EQ(callThrough(g.DSQueueBuffer), "DSQueueBuffer(1, 2)");
    EXPECT_EQ(callThrough(g.DSGetBufferInfo), "DSGetBufferInfo(1, 2, 3, 4, 5, 6)");
    EXPECT_EQ(callThrough(g.GCGetNumPortURLs), "GCGetNumPortURLs(1, 2)");
    EXPECT_EQ(callThrough(g.GCGetPortURLInfo), "GCGetPortURLInfo(1, 2, 3, 4, 5, 6)");
    EXPECT_EQ(callThrough(g.GCReadPortStacked), "GCReadPortStacked(1, 2, 3)");
    EXPECT_EQ(callThrough(g.GCWritePortStacked), "GCWritePortStacked(1, 2, 3)");
    EXPECT_EQ(callThrough(g.DSGetBufferChunkData), "DSGetBufferChunkData(1, 2, 3, 4)");
    EXPECT_EQ(callThrough(g.IFGetParentTL), "IFGetParentTL(1, 2)");
    EXPECT_EQ(callThrough(g.DevGetParentIF), "DevGetParentIF(1, 2)");
    EXPECT_EQ(callThrough(g.DSGetParentDev), "DSGetParentDev(1, 2)");
    EXPECT_EQ(callThrough(g.DSGetNumBufferParts), "DSGetNumBufferParts(1, 2, 3)");
    EXPECT_EQ(callThrough(g.DSGetBufferPartInfo), "DSGetBufferPartInfo(1, 2, 3, 4, 5, 6, 7)");
}

TEST_F(FunctionTableTest, AnAbsentOptionalFunctionMakesUpAnErrorOfItsThread)
{
    loadUnversioned("lacks-much");
    EXPECT_EQ(lastError(), fromProducer);
    EXPECT_EQ(gentl->GCGetPortURLInfo(nullptr, 0, 0, nullptr, nullptr, nullptr), -2147483648);
    EXPECT_EQ(lastError(), madeUp); // the code stays what it was before the call
    std::thread([&] { EXPECT_EQ(lastError(), fromProducer); }).join();
    EXPECT_EQ(lastError(), madeUp);
    gentl->EventKill(nullptr);
    EXPECT_EQ(lastError(), fromProducer);
}

TEST_F(FunctionTableTest, EachAbsentOptionalFunctionIsNamed)
{
    loadUnversioned("lacks-much");
    const auto textAfter = [&](GC_ERROR code) {
        EXPECT_EQ(code, missing);
        return std::get<2>(lastError());
    };
    const std::string lacks = "The instrumented TL does not implement ";
    const GenTL_Interface &g = *gentl;
    EXPECT_EQ(textAfter(g.GCGetNumPortURLs(nullptr, nullptr)), lacks + "GCGetNumPortURLs()!");
    EXPECT_EQ(textAfter(g.GCReadPortStacked(nullptr, nullptr, nullptr)), lacks + "GCReadPortStacked()!");
    EXPECT_EQ(textAfter(g.GCWritePortStacked(nullptr, nullptr, nullptr)), lacks + "GCWritePortStacked()!");
    EXPECT_EQ(textAfter(g.DSGetBufferChunkData(nullptr, nullptr, nullptr, nullptr)),
              lacks + "DSGetBufferChunkData()!");
    EXPECT_EQ(textAfter(g.IFGetParentTL(nullptr, nullptr)), lacks + "IFGetParentTL()!");
    EXPECT_EQ(textAfter(g.DevGetParentIF(nullptr, nullptr)), lacks + "DevGetParentIF()!");
    EXPECT_EQ(textAfter(g.DSGetParentDev(nullptr, nullptr)), lacks + "DSGetParentDev()!");
    EXPECT_EQ(textAfter(g.DSGetNumBufferParts(nullptr, nullptr, nullptr)), lacks + "DSGetNumBufferParts()!");
    EXPECT_EQ(textAfter(g.DSGetBufferPartInfo(nullptr, nullptr, 0, 0, nullptr, nullptr, nullptr)),
              lacks + "DSGetBufferPartInfo()!");
}

TEST_F(FunctionTableTest, APresentOptionalFunctionLeavesTheMadeUpErrorInPlace)
{
    loadUnversioned("full"); // all but the group 1.5
    EXPECT_EQ(gentl->DSGetNumBufferParts(nullptr, nullptr, nullptr), missing);
    EXPECT_EQ(gentl->IFGetParentTL(nullptr, nullptr), GC_ERR_SUCCESS);
    EXPECT_EQ(std::get<2>(lastError()), "The instrumented TL does not implement DSGetNumBufferParts()!");
    EXPECT_NE(failureOf([] { GenTL_Interface("/nowhere/x.cti"); }), "no exception");
    EXPECT_EQ(lastError(), fromProducer); // a construction begins with no error on its thread, come what may
}

TEST_F(FunctionTableTest, TheMadeUpErrorChecksItsArguments)
{
    loadUnversioned("lacks-much");
    gentl->GCGetPortURLInfo(nullptr, 0, 0, nullptr, nullptr, nullptr);
    GC_ERROR code = 4711;
    std::array<char, 59> text{};
    std::size_t size = 10;
    EXPECT_EQ(gentl->GCGetLastError(nullptr, text.data(), &size), GC_ERR_INVALID_PARAMETER);
    EXPECT_EQ(gentl->GCGetLastError(&code, text.data(), nullptr), GC_ERR_INVALID_PARAMETER);
    EXPECT_EQ(gentl->GCGetLastError(&code, text.data(), &size), GC_ERR_BUFFER_TOO_SMALL);
    EXPECT_EQ(size, 10U);
    size = 58;
    EXPECT_EQ(gentl->GCGetLastError(&code, text.data(), &size), GC_ERR_BUFFER_TOO_SMALL);
    EXPECT_EQ(gentl->GCGetLastError(&code, nullptr, &size),
              GC_ERR_SUCCESS); // without a buffer no size is small
    EXPECT_EQ(size, 59U);
    size = 0; // no limit
    EXPECT_EQ(gentl->GCGetLastError(&code, text.data(), &size), GC_ERR_SUCCESS);
    EXPECT_STREQ(text.data(), "The instrumented TL does not implement GCGetPortURLInfo()!");
    EXPECT_EQ(size, 59U);
    EXPECT_EQ(code, 4711);
}

TEST_F(FunctionTableTest, AnAbsentPlainFunctionAnswersWithoutAMadeUpError)
{
    loadUnversioned("lacks-much");
    EXPECT_EQ(gentl->DSQueueBuffer(nullptr, nullptr), missing);
    EXPECT_EQ(gentl->DSClose(nullptr), missing);
    EXPECT_EQ(lastError(), fromProducer);
}

} // namespace

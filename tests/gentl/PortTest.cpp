// SPDX-License-Identifier: MIT
// A GenTL port as a GenApi port: access modes and their queries, reads, writes, and the texts of failures.
#include "GenTL_Interface.h"
#include "GenTL_PortInterfaceBase.h"
#include "Script.h"

#include <gmock/gmock.h>

#include <memory>
#include <optional>

using namespace GenICam_Interfaces;
using namespace GenApi_3_2_TVN;
using ::testing::ElementsAre;
using ::testing::ElementsAreArray;

namespace {

class PortTest : public ::testing::Test
{
protected:
    PortTest()
    {
        script = Script();
        gentl = std::make_shared<GenTL_Interface>(producerPath("full"));
        port.emplace(handle, gentl);
        script.calls.clear();
    }

    std::string createFailure()
    {
        script.calls.clear();
        return failureOf([&] { GenTL_PortInterfaceBase(handle, gentl); });
    }

    Script &script = *torvaneTestScript();
    const PORT_HANDLE handle = reinterpret_cast<PORT_HANDLE>(7); // as the script notes it
    std::shared_ptr<GenTL_Interface> gentl;
    std::optional<GenTL_PortInterfaceBase> port;
    const std::vector<std::string> questions{"GCGetPortInfo(7, 8, 11, 1)", "GCGetPortInfo(7, 7, 11, 1)",
                                             "GCGetPortInfo(7, 10, 11, 1)", "GCGetPortInfo(7, 9, 11, 1)"};
};

struct AccessRow
{
    const char *name;
    bool8_t read, write, ni, na;
    EAccessMode mode;
    std::size_t queries;
};

class AccessModeTest : public PortTest, public ::testing::WithParamInterface<AccessRow>
{};

TEST_P(AccessModeTest, AsksNoMoreThanItNeeds)
{
    const AccessRow &row = GetParam();
    script.rights = {{PORT_INFO_ACCESS_READ, row.read},
                     {PORT_INFO_ACCESS_WRITE, row.write},
                     {PORT_INFO_ACCESS_NI, row.ni},
                     {PORT_INFO_ACCESS_NA, row.na}};
    EXPECT_EQ(port->GetAccessMode(), row.mode);
    EXPECT_THAT(script.calls, ElementsAreArray(questions.data(), row.queries));
}

INSTANTIATE_TEST_SUITE_P(Rights, AccessModeTest,
                         ::testing::Values(AccessRow{"ReadWrite", 1, 1, 0, 0, RW, 2},
                                           AccessRow{"AnyNonzeroIsYes", 0x80, 2, 1, 1, RW, 2},
                                           AccessRow{"ReadOnly", 1, 0, 1, 1, RO, 2},
                                           AccessRow{"WriteOnly", 0, 1, 1, 1, WO, 2},
                                           AccessRow{"NotImplemented", 0, 0, 1, 1, NI, 3},
                                           AccessRow{"NotAvailable", 0, 0, 0, 1, NA, 4},
                                           AccessRow{"None", 0, 0, 0, 0, _UndefinedAccesMode, 4}),
                         [](const auto &row) { return std::string(row.param.name); });

TEST_F(PortTest, AFailedQuestionNamesItselfButForTheLast)
{
    script.rights.clear();
    const auto textWhen = [&](PORT_INFO_CMD question) {
        script.portInfoCodes = {{question, GC_ERR_ERROR}};
        return createFailure();
    };
    const std::string end = " failed with code -1010! Message: the link is down ";
    EXPECT_EQ(textWhen(PORT_INFO_ACCESS_WRITE), "GCGetPortInfo(PORT_INFO_ACCESS_WRITE)" + end);
    EXPECT_THAT(script.calls, ElementsAre(questions[0], "GCGetLastError(1028)"));
    EXPECT_EQ(textWhen(PORT_INFO_ACCESS_READ), "GCGetPortInfo(PORT_INFO_ACCESS_READ)" + end);
    EXPECT_EQ(textWhen(PORT_INFO_ACCESS_NI), "GCGetPortInfo(PORT_INFO_ACCESS_NI)" + end);
    EXPECT_EQ(textWhen(PORT_INFO_ACCESS_NA), "GCGetPortInfo(PORT_INFO_ACCESS_NI)" + end);
    EXPECT_THAT(script.calls,
                ElementsAre(questions[0], questions[1], questions[2], questions[3], "GCGetLastError(1028)"));
}

TEST_F(PortTest, ReadsAndWritesAreOneRequestEach)
{
    script.memory = "0123456789";
    std::string buffer(8, '?');
    port->Read(buffer.data(), 0x50001000, 8);
    EXPECT_EQ(buffer, "01234567");
    port->Write("hunter22", -16, 8); // addresses from 2^63 up come as negative numbers
    EXPECT_EQ(script.written, "hunter22");
    EXPECT_THAT(script.calls,
                ElementsAre("GCReadPort(7, 1342181376, 8)", "GCWritePort(7, 18446744073709551600, 8)"));
}

TEST_F(PortTest, AShortReadIsNoFailureAndLeavesTheRest)
{
    script.memory = "ab";
    std::string buffer(4, '?');
    EXPECT_NO_THROW(port->Read(buffer.data(), 0, 4));
    EXPECT_EQ(buffer, "ab??");
}

TEST_F(PortTest, AFailedAccessCarriesTheProducersLastError)
{
    script.portCode = GC_ERR_TIMEOUT;
    char byte = 0;
    const auto read = [&] { port->Read(&byte, 0, 1); };
    const auto write = [&] { port->Write(&byte, 0, 1); };
    EXPECT_EQ(failureOf(read), "GCReadPort failed with code -1010! Message: the link is down ");
    EXPECT_EQ(failureOf(write), "GCWritePort failed with code -1010! Message: the link is down ");

    script.lastErrorText = std::string(1027, 'x'); // fits to the byte
    EXPECT_EQ(failureOf(read), "GCReadPort failed with code -1010! Message: " + script.lastErrorText + " ");
    script.lastErrorText += 'x';
    EXPECT_EQ(failureOf(read),
              "GCReadPort failed with code -1011 and GCGetLastError failed with code -1016! ");
    script.lastErrorResult = GC_ERR_ERROR;
    EXPECT_EQ(failureOf(write),
              "GCWritePort failed with code -1011 and GCGetLastError failed with code -1001! ");
    EXPECT_EQ(failureOf([&] { port->reportGenTLError("DevClose", -1006, "Give up."); }),
              "DevClose failed with code -1006 and GCGetLastError failed with code -1001! Give up.");
}

TEST_F(PortTest, ThePortNameIsAskedForInTwoSteps)
{
    script.portName = std::string("Cam\0hidden", 10);
    EXPECT_EQ(port->getPortName(), "Cam");
    EXPECT_THAT(script.calls, ElementsAre("GCGetPortInfo(7, 12, 1, 0)", "GCGetPortInfo(7, 12, 1, 11)"));
    script.portInfoCodes = {{PORT_INFO_PORTNAME, GC_ERR_ERROR}};
    EXPECT_EQ(failureOf([&] { static_cast<void>(port->getPortName()); }),
              "GCGetPortInfo(PORT_INFO_PORTNAME) failed with code -1010! Message: the link is down ");
}

} // namespace

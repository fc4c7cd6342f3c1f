// SPDX-License-Identifier: MIT
// A GenTL port as a GenApi port: access modes and their queries, reads, writes, and the texts of failures.
#include "GenTL_Interface.h"
#include "GenTL_PortInterfaceBase.h"
#include "Script.h"

#include <gmock/gmock.h>

using namespace GenICam_Interfaces;
using namespace GenApi_3_2_TVN;
using ::testing::ElementsAre;
using ::testing::ElementsAreArray;

namespace {

class PortTest : public ::testing::Test
{
protected:
    PortTest() { script.calls.clear(); }

    Script &script = *torvaneTestScript() = Script();
    const PORT_HANDLE handle = reinterpret_cast<PORT_HANDLE>(7); // as the script notes it
    const std::shared_ptr<GenTL_Interface> gentl = std::make_shared<GenTL_Interface>(scriptedProducer());
    GenTL_PortInterfaceBase port{handle, gentl};
    const std::vector<std::string> questions{"GCGetPortInfo(7, 8, 11, 1)", "GCGetPortInfo(7, 7, 11, 1)",
                                             "GCGetPortInfo(7, 10, 11, 1)", "GCGetPortInfo(7, 9, 11, 1)"};
};

TEST_F(PortTest, TheAccessModeIsAskedForNoFurtherThanNeeded)
{
    const struct
    {
        bool8_t read, write, ni, na;
        EAccessMode mode;
        std::size_t queries;
    } rows[] = {
        {1, 1, 0, 0, RW, 2},
        {0x80, 2, 1, 1, RW, 2}, // any number but 0 is yes
        {1, 0, 1, 1, RO, 2},
        {0, 1, 1, 1, WO, 2},
        {0, 0, 1, 1, NI, 3},
        {0, 0, 0, 1, NA, 4},
        {0, 0, 0, 0, _UndefinedAccesMode, 4},
    };
    for (const auto &[read, write, ni, na, mode, queries] : rows) {
        script.rights = {{PORT_INFO_ACCESS_READ, read},
                         {PORT_INFO_ACCESS_WRITE, write},
                         {PORT_INFO_ACCESS_NI, ni},
                         {PORT_INFO_ACCESS_NA, na}};
        script.calls.clear();
        EXPECT_EQ(port.GetAccessMode(), mode);
        EXPECT_THAT(script.calls, ElementsAreArray(questions.data(), queries)) << "for mode " << mode;
    }
}

TEST_F(PortTest, AFailedQuestionNamesItselfButForTheLast)
{
    script.rights.clear();
    const auto textWhen = [&](PORT_INFO_CMD question) {
        script.refusedPortInfo = question;
        script.calls.clear();
        return failureOf([&] { GenTL_PortInterfaceBase(handle, gentl); });
    };
    const std::string end = " failed with code -1010! Message: the link is down ";
    EXPECT_EQ(textWhen(PORT_INFO_ACCESS_WRITE), "GCGetPortInfo(PORT_INFO_ACCESS_WRITE)" + end);
    EXPECT_THAT(script.calls, ElementsAre(questions[0], "GCGetLastError(1028)"));
    EXPECT_EQ(textWhen(PORT_INFO_ACCESS_READ), "GCGetPortInfo(PORT_INFO_ACCESS_READ)" + end);
    EXPECT_EQ(textWhen(PORT_INFO_ACCESS_NI), "GCGetPortInfo(PORT_INFO_ACCESS_NI)" + end);
    EXPECT_EQ(textWhen(PORT_INFO_ACCESS_NA), "GCGetPortInfo(PORT_INFO_ACCESS_NI)" + end);
}

TEST_F(PortTest, ReadsAndWritesAreOneRequestEach)
{
    std::string buffer(8, '?');
    port.Write("hunter22", -16, 8); // addresses from 2^63 up come as negative numbers
    port.Read(buffer.data(), 0x50001000, 8);
    EXPECT_EQ(buffer, "hunter22");
    EXPECT_THAT(script.calls,
                ElementsAre("GCWritePort(7, 18446744073709551600, 8)", "GCReadPort(7, 1342181376, 8)"));
    script.memory = "ab"; // a short read is no failure
    port.Read(buffer.data(), 0, 4);
    EXPECT_EQ(buffer, "abnter22");
}

TEST_F(PortTest, AFailedAccessCarriesTheProducersLastError)
{
    script.portCode = GC_ERR_TIMEOUT;
    char byte = 0;
    const auto read = [&] { port.Read(&byte, 0, 1); };
    const auto write = [&] { port.Write(&byte, 0, 1); };
    EXPECT_EQ(failureOf(read), "GCReadPort failed with code -1010! Message: the link is down ");
    EXPECT_EQ(failureOf(write), "GCWritePort failed with code -1010! Message: the link is down ");

    script.lastErrorText = std::string(1028, 'x'); // a byte too long, with its zero
    EXPECT_EQ(failureOf(read),
              "GCReadPort failed with code -1011 and GCGetLastError failed with code -1016! ");
    EXPECT_EQ(failureOf([&] { port.reportGenTLError("DevClose", -1006, "Give up."); }),
              "DevClose failed with code -1006 and GCGetLastError failed with code -1016! Give up.");
}

} // namespace

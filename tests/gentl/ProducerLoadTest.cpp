// SPDX-License-Identifier: MIT
// Loading a producer: the calls, the failures with their whole texts, and how long the module stays.
#include "GenTL_Interface.h"
#include "Script.h"
#include "Simulator.h"

#include <gmock/gmock.h>
#include <sys/stat.h>

#include <filesystem>
#include <fstream>

using GenICam_Interfaces::GenTL_Interface;
using testing::HasSubstr;

namespace {

std::string loadFailure(const std::string &path)
{
    return failureOf([&] { GenTL_Interface gentl(path); });
}

class ProducerLoadTest : public testing::Test
{
protected:
    ProducerLoadTest() { std::filesystem::current_path(simulator.folder()); }

    Simulator simulator;
};

TEST_F(ProducerLoadTest, AFileThatCannotBeLoadedIsNamedAsGiven)
{
    const std::string noFile = ": cannot open shared object file: No such file or directory.";
    EXPECT_EQ(loadFailure("/nowhere/x.cti"),
              "Loading cti /nowhere/x.cti failed! Code: /nowhere/x.cti" + noFile);
    EXPECT_EQ(loadFailure("x.cti"), "Loading cti x.cti failed! Code: ./x.cti" + noFile);
    EXPECT_EQ(loadFailure(""), "Loading cti  failed! Code: ./: cannot read file data: Is a directory.");
}

TEST_F(ProducerLoadTest, TheLibraryIsInitialisedForTheVersionQueryAlone)
{
    const char *const initialise = "GCInitLib() = 0";
    const char *const close = "GCCloseLib() = 0";
    const struct
    {
        const char *copy; // of the producer for this row: what failed stays loaded, in whatever state
        std::string failures;
        const char *text;
        std::vector<std::string> calls;
    } rows[] = {
        {"whole.cti", "", "no exception", {initialise, "GCGetInfo(9) = 0 1", "GCGetInfo(10) = 0 5", close}},
        {"refusing.cti",
         "[[failure]]\nfunction = \"GCInitLib\"\ncode = -1004\n",
         "Initializing refusing.cti failed! Code: -1004.",
         {"GCInitLib() = -1004"}},
        {"no-major.cti", // and the failure of the close behind it is ignored
         "[[failure]]\nfunction = \"GCGetInfo\"\n[[failure]]\nfunction = \"GCCloseLib\"\n",
         "Querying no-major.cti for TL_INFO_GENTL_VER_MAJOR failed! Code: -1001.",
         {initialise, "GCGetInfo(9) = -1001", "GCCloseLib() = -1001"}},
        {"no-minor.cti",
         "[[failure]]\nfunction = \"GCGetInfo\"\ncommand = 10\n",
         "Querying no-minor.cti for TL_INFO_GENTL_VER_MINOR failed! Code: -1001.",
         {initialise, "GCGetInfo(9) = 0 1", "GCGetInfo(10) = -1001", close}},
        {"unclosed.cti",
         "[[failure]]\nfunction = \"GCCloseLib\"\ncode = -1022\n",
         "Closing unclosed.cti failed! Code: -1022.",
         {initialise, "GCGetInfo(9) = 0 1", "GCGetInfo(10) = 0 5", "GCCloseLib() = -1022"}},
    };
    for (const auto &[copy, failures, text, calls] : rows) {
        simulator.configure(failures);
        simulator.clearLog();
        std::filesystem::copy_file(Simulator::cti(), copy);
        EXPECT_EQ(loadFailure(copy), text);
        EXPECT_EQ(simulator.calls(), calls) << copy;
        EXPECT_EQ(isLoaded(simulator.folder() / copy), text != std::string("no exception")) << copy;
    }
}

TEST_F(ProducerLoadTest, AProducerMustExportWhatItsVersionAsksFor)
{
    const auto failure = [](const std::string &path, const std::string &function,
                            const std::string &version) {
        return "Computing address for function " + function + " of cti " + path + " failed! Code: " + path +
               ": undefined symbol: " + function + ". Cti claims to support GenTL " + version + ".";
    };
    const std::string noPartInfo = Simulator::cti("gentl_lacks_DSGetBufferPartInfo");
    EXPECT_EQ(loadFailure(noPartInfo), failure(noPartInfo, "DSGetBufferPartInfo", "V1.5"));
    simulator.configure("[producer]\nversion = \"1.4\"\n");
    EXPECT_EQ(loadFailure(noPartInfo), "no exception");
    simulator.configure("[producer]\nversion = \"1.0\"\n");
    const std::string noClose = Simulator::cti("gentl_lacks_DSClose");
    EXPECT_EQ(loadFailure(noClose), failure(noClose, "DSClose", "V1.0"));

    simulator.clearLog();
    for (const std::string function : {"GCGetInfo", "GCGetLastError", "GCInitLib", "GCCloseLib"}) {
        const std::string path = Simulator::cti("gentl_lacks_" + function);
        EXPECT_EQ(loadFailure(path), failure(path, function, "V (query not implemented)"));
    }
    EXPECT_THAT(simulator.calls(), testing::IsEmpty()) << "these are required before any call";
}

TEST_F(ProducerLoadTest, WhatIsNoRegularFileIsNotOpened)
{
    ASSERT_EQ(mkfifo("pipe.cti", 0600), 0);
    std::filesystem::create_symlink("/dev/zero", "device.cti");
    std::filesystem::create_directory("folder.cti");
    for (const std::string name : {"pipe.cti", "device.cti", "folder.cti"})
        EXPECT_EQ(loadFailure(name),
                  "Loading cti " + name + " failed! Code: " + name + ": not a regular file.");
}

TEST_F(ProducerLoadTest, ATruncatedProducerIsNotMapped)
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

TEST_F(ProducerLoadTest, HeadersAreNotBelieved)
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

// SPDX-License-Identifier: MIT
// Loading a producer: the calls, the failures with their whole texts, and how long the module stays.
#include "LoadFixture.h"
#include "LoadedModule.h"
#include "System.h"

#include <tuple>

namespace {

using ProducerLoadTest = LoadTest;

TEST_F(ProducerLoadTest, AFileThatCannotBeLoadedIsNamedAsGiven)
{
    const auto refusal = [](const std::string &path, const std::string &code) {
        return "Loading cti " + path + " failed! Code: " + code + ".";
    };
    const std::string nowhere = (simulator.folder() / "nowhere.cti").string();
    EXPECT_EQ(loadFailure(nowhere), refusal(nowhere, testsystem::missingFileCode(nowhere)));
    EXPECT_EQ(loadFailure("x.cti"), refusal("x.cti", testsystem::missingFileCode("./x.cti")));
    EXPECT_EQ(loadFailure(""), refusal("", testsystem::directoryCode("./")));
}

TEST_F(ProducerLoadTest, TheLibraryIsInitialisedForTheVersionQueryAlone)
{
    const char *const initialise = "GCInitLib() = 0";
    const char *const close = "GCCloseLib() = 0";
    // Each row has a copy of the producer: what failed stays loaded, in whatever state.
    const std::tuple<const char *, std::string, const char *, std::vector<std::string>> rows[] = {
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
        EXPECT_EQ(testsystem::isLoaded((simulator.folder() / copy).string()),
                  text != std::string("no exception"))
            << copy;
    }
}

TEST_F(ProducerLoadTest, AProducerMustExportWhatItsVersionAsksFor)
{
    const auto failure = [](const std::string &path, const std::string &function,
                            const std::string &version) {
        return "Computing address for function " + function + " of cti " + path +
               " failed! Code: " + testsystem::missingSymbolCode(path, function) +
               ". Cti claims to support GenTL " + version + ".";
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

// It is a module but no producer, which is told only when all that it needs has been loaded.
TEST_F(ProducerLoadTest, WhatAProducerNeedsIsFoundBesideIt)
{
    namespace fs = std::filesystem;
    const fs::path from = fs::path(NEIGHBOURED_PRODUCER).parent_path();
    fs::copy(from, "vendor");
    EXPECT_THAT(loadFailure("vendor/gentl_neighboured.cti"),
                testing::StartsWith("Computing address for function"));
}

TEST_F(ProducerLoadTest, WhatIsNoRegularFileIsNotOpened)
{
    for (const std::string &name : testsystem::makeIrregularFiles())
        EXPECT_EQ(loadFailure(name),
                  "Loading cti " + name + " failed! Code: " + name + ": not a regular file.");
}

} // namespace

// SPDX-License-Identifier: MIT
// Loading a producer: its version and what follows from it, the failures with their whole texts, and how
// long the module stays.
#include "GenTL_Interface.h"
#include "Script.h"
#include "TemporaryFolder.h"

#include <gmock/gmock.h>

using GenICam_Interfaces::GenTL_Interface;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

constexpr GC_ERROR missing = GenTL_Interface::functionMissingCode;

class ProducerLoadTest : public ::testing::Test
{
protected:
    ProducerLoadTest() { script = Script(); }

    static std::string loadFailure(const std::string &variant)
    {
        return failureOf([&] { GenTL_Interface gentl(producerPath(variant)); });
    }

    Script &script = *torvaneTestScript();
};

/// The groups of later versions whose functions reach the producer.
std::string groupsOf(const GenTL_Interface &gentl)
{
    const auto group = [](const char *name, std::initializer_list<GC_ERROR> codes) -> std::string {
        const auto absent = std::count(codes.begin(), codes.end(), missing);
        if (absent == 0)
            return name;
        return absent == static_cast<std::ptrdiff_t>(codes.size()) ? "" : std::string(name) + "in part ";
    };
    torvaneTestScript()->recordsOnly = true;
    return group("1.1 ", {gentl.GCGetNumPortURLs(nullptr, nullptr),
                          gentl.GCGetPortURLInfo(nullptr, 0, 0, nullptr, nullptr, nullptr),
                          gentl.GCReadPortStacked(nullptr, nullptr, nullptr),
                          gentl.GCWritePortStacked(nullptr, nullptr, nullptr)}) +
           group("1.3 ", {gentl.DSGetBufferChunkData(nullptr, nullptr, nullptr, nullptr)}) +
           group("1.4 ", {gentl.IFGetParentTL(nullptr, nullptr), gentl.DevGetParentIF(nullptr, nullptr),
                          gentl.DSGetParentDev(nullptr, nullptr)}) +
           group("1.5 ", {gentl.DSGetNumBufferParts(nullptr, nullptr, nullptr),
                          gentl.DSGetBufferPartInfo(nullptr, nullptr, 0, 0, nullptr, nullptr, nullptr)});
}

struct VersionRow
{
    const char *name;
    std::uint32_t major;
    std::uint32_t minor;
    GC_ERROR majorCode;
    GC_ERROR minorCode;
    const char *version;
    const char *groups;
    std::uint32_t knownMajor;
    std::uint32_t knownMinor;
};

class VersionTest : public ProducerLoadTest, public ::testing::WithParamInterface<VersionRow>
{};

TEST_P(VersionTest, DecidesWhichGroupsAreLookedUp)
{
    const VersionRow &row = GetParam();
    script.major = row.major;
    script.minor = row.minor;
    script.majorCode = row.majorCode;
    script.minorCode = row.minorCode;
    const GenTL_Interface gentl(producerPath("full"));
    EXPECT_EQ(gentl.getGenTLVersionString(), row.version);
    EXPECT_EQ(groupsOf(gentl), row.groups);
    EXPECT_EQ(gentl.genTLVersionKnown(), row.majorCode == 0 && row.minorCode == 0);
    EXPECT_EQ(gentl.genTLVersionMajor(), row.knownMajor);
    EXPECT_EQ(gentl.genTLVersionMinor(), row.knownMinor);
}

constexpr const char *unknown = "V (query not implemented)";
constexpr GC_ERROR notImplemented = GC_ERR_NOT_IMPLEMENTED;

INSTANTIATE_TEST_SUITE_P(
    Versions, VersionTest,
    ::testing::Values(VersionRow{"V0_9", 0, 9, 0, 0, "V0.9", "", 0, 9},
                      VersionRow{"V1_0", 1, 0, 0, 0, "V1.0", "", 1, 0},
                      VersionRow{"V1_1", 1, 1, 0, 0, "V1.1", "1.1 ", 1, 1},
                      VersionRow{"V1_2", 1, 2, 0, 0, "V1.2", "1.1 ", 1, 2},
                      VersionRow{"V1_3", 1, 3, 0, 0, "V1.3", "1.1 1.3 ", 1, 3},
                      VersionRow{"V1_4", 1, 4, 0, 0, "V1.4", "1.1 1.3 1.4 ", 1, 4},
                      VersionRow{"V1_5", 1, 5, 0, 0, "V1.5", "1.1 1.3 1.4 1.5 ", 1, 5},
                      VersionRow{"V1_6", 1, 6, 0, 0, "V1.6", "1.1 1.3 1.4 1.5 ", 1, 6},
                      VersionRow{"V2_0", 2, 0, 0, 0, "V2.0", "", 2, 0},
                      VersionRow{"V2_1", 2, 1, 0, 0, "V2.1", "1.1 ", 2, 1},
                      VersionRow{"NoMajor", 1, 5, notImplemented, 0, unknown, "1.1 1.3 1.4 ", 0, 5},
                      VersionRow{"NoMinor", 1, 5, 0, notImplemented, unknown, "1.1 1.3 1.4 ", 1, 0},
                      VersionRow{"Neither", 1, 5, notImplemented, notImplemented, unknown, "1.1 1.3 1.4 ", 0,
                                 0}),
    [](const auto &row) { return std::string(row.param.name); });

TEST_F(ProducerLoadTest, TheLibraryIsInitialisedForTheVersionQueryAlone)
{
    script.majorCode = notImplemented; // does not prevent the second query
    {
        const GenTL_Interface gentl(producerPath("full"));
    }
    EXPECT_THAT(script.calls,
                ElementsAre("GCInitLib()", "GCGetInfo(9, 0, 4)", "GCGetInfo(10, 0, 4)", "GCCloseLib()"));
}

TEST_F(ProducerLoadTest, AFileThatCannotBeLoadedIsNamedAsGiven)
{
    EXPECT_EQ(failureOf([] { GenTL_Interface("/nowhere/x.cti"); }),
              "Loading cti /nowhere/x.cti failed! Code: /nowhere/x.cti: cannot open shared object file: "
              "No such file or directory.");
    EXPECT_EQ(failureOf([] { GenTL_Interface("x.cti"); }),
              "Loading cti x.cti failed! Code: ./x.cti: cannot open shared object file: "
              "No such file or directory.");
    EXPECT_EQ(failureOf([] { GenTL_Interface(""); }),
              "Loading cti  failed! Code: ./: cannot read file data: Is a directory.");
}

TEST_F(ProducerLoadTest, ANameWithoutAFolderIsAFileOfTheCurrentDirectory)
{
    const TemporaryFolder folder;
    std::filesystem::copy_file(producerPath("full"), folder.path() + "/here.cti");
    std::filesystem::current_path(folder.path());
    EXPECT_EQ(GenTL_Interface("here.cti").getGenTLVersionString(), "V1.5");
    std::filesystem::current_path("/");
}

TEST_F(ProducerLoadTest, ARefusingProducerIsReportedAndClosedOnlyWhereItWasOpen)
{
    const std::string full = producerPath("full");
    script.initCode = GC_ERR_RESOURCE_IN_USE;
    EXPECT_EQ(loadFailure("full"), "Initializing " + full + " failed! Code: -1004.");
    EXPECT_THAT(script.calls, ElementsAre("GCInitLib()"));

    script = Script();
    script.majorCode = GC_ERR_ERROR;
    script.closeCode = GC_ERR_BUSY; // ignored behind a failed query
    EXPECT_EQ(loadFailure("full"), "Querying " + full + " for TL_INFO_GENTL_VER_MAJOR failed! Code: -1001.");
    EXPECT_THAT(script.calls, ElementsAre("GCInitLib()", "GCGetInfo(9, 0, 4)", "GCCloseLib()"));

    script = Script();
    script.minorCode = GC_ERR_ERROR;
    EXPECT_EQ(loadFailure("full"), "Querying " + full + " for TL_INFO_GENTL_VER_MINOR failed! Code: -1001.");
    EXPECT_EQ(script.calls.back(), "GCCloseLib()");

    script = Script();
    script.closeCode = GC_ERR_BUSY;
    EXPECT_EQ(loadFailure("full"), "Closing " + full + " failed! Code: -1022.");
}

std::string addressFailure(const std::string &variant, const std::string &function,
                           const std::string &version)
{
    const std::string path = producerPath(variant);
    return "Computing address for function " + function + " of cti " + path + " failed! Code: " + path +
           ": undefined symbol: " + function + ". Cti claims to support GenTL " + version + ".";
}

TEST_F(ProducerLoadTest, AProducerMustExportWhatItsVersionAsksFor)
{
    EXPECT_EQ(loadFailure("lacks-part-info"),
              addressFailure("lacks-part-info", "DSGetBufferPartInfo", "V1.5"));
    script.minor = 4;
    EXPECT_EQ(loadFailure("lacks-part-info"), "no exception");
    script.minor = 0;
    EXPECT_EQ(loadFailure("lacks-much"), addressFailure("lacks-much", "DSClose", "V1.0"));
}

TEST_F(ProducerLoadTest, TheFirstFourFunctionsAreRequiredBeforeAnyCall)
{
    for (const std::string function : {"GCGetInfo", "GCGetLastError", "GCInitLib", "GCCloseLib"})
        EXPECT_EQ(loadFailure("lacks-" + function), addressFailure("lacks-" + function, function, unknown));
    EXPECT_THAT(script.calls, IsEmpty());
}

TEST_F(ProducerLoadTest, TheModuleGoesWithItsObjectButStaysAfterAFailure)
{
    const TemporaryFolder folder; // a copy, which no other test has left in this process
    const std::string path = folder.path() + "/copy.cti";
    std::filesystem::copy_file(producerPath("full"), path);
    {
        const GenTL_Interface gentl(path);
        EXPECT_TRUE(isLoaded(path));
    }
    EXPECT_FALSE(isLoaded(path));

    script.initCode = GC_ERR_ERROR;
    EXPECT_EQ(failureOf([&] { GenTL_Interface gentl(path); }),
              "Initializing " + path + " failed! Code: -1001.");
    EXPECT_TRUE(isLoaded(path));
}

} // namespace

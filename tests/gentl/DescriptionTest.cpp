// SPDX-License-Identifier: MIT
// The load of a description through a port: where it is looked for, each way to fail, and the node map.
#include "GenTL_Interface.h"
#include "GenTL_PortInterface.h"
#include "GenericException.h"
#include "IInteger.h"
#include "INode.h"
#include "Script.h"
#include "TemporaryFolder.h"

#include <gmock/gmock.h>

#include <new>

using namespace GenICam_Interfaces;
using GenICam_3_2_TVN::PropertyException;
using ::testing::ElementsAre;
using ::testing::Property;
using ::testing::StartsWith;
using ::testing::StrEq;
using ::testing::Throws;

/// An allocation that is too large gives null, as it does without the sanitizer.
extern "C" const char *__asan_default_options()
{
    return "allocator_may_return_null=1";
}

namespace {

const std::string description =
    R"(<RegisterDescription ModelName="M" VendorName="V" StandardNameSpace="None" SchemaMajorVersion="1"
  SchemaMinorVersion="1" SchemaSubMinorVersion="0" MajorVersion="1" MinorVersion="0" SubMinorVersion="0"
  ProductGuid="0" VersionGuid="0" xmlns="http://www.genicam.org/GenApi/Version_1_1">
  <Category Name="Root"><pFeature>LockState</pFeature></Category>
  <IntReg Name="LockState"><Address>0x50001000</Address><Length>4</Length><AccessMode>RO</AccessMode>
  <pPort>Device</pPort><Cachable>NoCache</Cachable></IntReg>
  <Port Name="Device"/></RegisterDescription>)";

class DescriptionTest : public ::testing::Test
{
protected:
    DescriptionTest()
    {
        script = Script();
        script.lastErrorText = "refused";
        script.memory = description;
        script.urlAnswers = {{URL_INFO_URL, "Local:camera.xml;1000;200"},
                             {URL_INFO_SCHEME, URL_SCHEME_LOCAL},
                             {URL_INFO_FILE_REGISTER_ADDRESS, std::uint64_t{0x1000}},
                             {URL_INFO_FILE_SIZE, std::uint64_t{description.size()}},
                             {URL_INFO_FILENAME, "camera.xml"}};
    }

    std::unique_ptr<GenTL_PortInterface> open(const std::string &path = producerPath("full"))
    {
        auto gentl = std::make_shared<GenTL_Interface>(path);
        script.calls.clear();
        return std::make_unique<GenTL_PortInterface>(handle, std::move(gentl), 0);
    }

    std::string openFailure(const std::string &path = producerPath("full"))
    {
        return failureOf([&] { open(path); });
    }

    Script &script = *torvaneTestScript();
    const PORT_HANDLE handle = reinterpret_cast<PORT_HANDLE>(7);
};

TEST_F(DescriptionTest, AnOpenedPortReachesItsFeaturesByName)
{
    const auto port = open();
    EXPECT_THAT(script.calls,
                ElementsAre("GCGetPortInfo(7, 8, 11, 1)", "GCGetPortInfo(7, 7, 11, 1)",
                            "GCGetPortURLInfo(7, 0, 0, 1, 512)", "GCGetPortURLInfo(7, 0, 9, 5, 4)",
                            "GCGetPortURLInfo(7, 0, 7, 8, 8)", "GCGetPortURLInfo(7, 0, 8, 8, 8)",
                            "GCGetPortURLInfo(7, 0, 10, 1, 256)",
                            "GCReadPort(7, 4096, " + std::to_string(description.size()) + ")",
                            "GCGetPortInfo(7, 12, 1, 0)", "GCGetPortInfo(7, 12, 1, 7)"));
    EXPECT_EQ(port->nodeMapRef._GetDeviceName(), "Device");
    EXPECT_EQ(port->getNode("Gain"), nullptr);

    auto *lockState = dynamic_cast<GenApi_3_2_TVN::IInteger *>(port->getNode("LockState"));
    ASSERT_NE(lockState, nullptr);
    script.memory = std::string("\3\0\0\0", 4);
    EXPECT_EQ(lockState->GetValue(false, false), 3);
    EXPECT_EQ(script.calls.back(), "GCReadPort(7, 1342181376, 4)");
    script.portCode = GC_ERR_TIMEOUT; // passes through the node map as what it is
    EXPECT_EQ(failureOf([&] { lockState->GetValue(false, false); }),
              "GCReadPort failed with code -1010! Message: refused ");
}

TEST_F(DescriptionTest, APortKeepsItsProducerLoaded)
{
    const TemporaryFolder folder;
    const std::string path = folder.path() + "/copy.cti";
    std::filesystem::copy_file(producerPath("full"), path);
    auto port = open(path);
    EXPECT_TRUE(isLoaded(path));
    port.reset();
    EXPECT_FALSE(isLoaded(path));
    script.memory = "no description";
    openFailure(path); // unwinds all that was built
    EXPECT_FALSE(isLoaded(path));

    GenTL_Interface gentl(producerPath("full"));
    script.memory = description;
    EXPECT_NE(GenTL_PortInterface(handle, &gentl, 0).getNode("LockState"), nullptr);
}

struct UrlRow
{
    const char *name;
    std::string url;
    std::string failure;  ///< whole, but that each ends in the URL's detail
    std::string lastCall; ///< the last of the load
};

/// A producer that answers URL_INFO_URL alone: the rest comes from the text. The read fails at the end.
class UrlTest : public DescriptionTest, public ::testing::WithParamInterface<UrlRow>
{};

TEST_P(UrlTest, TellsWhatTheProducerDoesNot)
{
    const UrlRow &row = GetParam();
    script.urlAnswers = {{URL_INFO_URL, row.url}};
    script.portCode = GC_ERR_IO;
    for (const GC_ERROR code : {GC_ERR_NOT_IMPLEMENTED, GC_ERR_ERROR}) { // any refusal leads to the text
        script.urlCode = code;
        EXPECT_EQ(openFailure(), row.failure) << code;
        std::erase(script.calls, "GCGetLastError(1028)");
        EXPECT_EQ(script.calls.back(), row.lastCall) << code;
    }
}

const std::string readFailed = "GCReadPort failed with code -1010! Message: refused ";
const std::string schemeQuery = "GCGetPortURLInfo(7, 0, 9, 5, 4)";
const std::string addressQuery = "GCGetPortURLInfo(7, 0, 7, 8, 8)";
const std::string lengthQuery = "GCGetPortURLInfo(7, 0, 8, 8, 8)";
const std::string nameQuery = "GCGetPortURLInfo(7, 0, 10, 1, 256)";

std::string queryFailed(const std::string &query, const std::string &detail)
{
    return "GCGetPortURLInfo(0," + query + ") failed with code -1010! Message: refused " + detail;
}

UrlRow noScheme(const char *name, const std::string &url)
{
    return {name, url, queryFailed("URL_INFO_SCHEME", "Fetching the scheme from the URL string failed also."),
            schemeQuery};
}

UrlRow noValue(const char *name, const std::string &url, const std::string &query, const std::string &what,
               const std::string &lastCall)
{
    return {name, url,
            queryFailed(query, "Fetching the " + what + " from the URL string '" + url + "' failed also."),
            lastCall};
}

UrlRow noAddress(const char *name, const std::string &url)
{
    return noValue(name, url, "URL_INFO_FILE_REGISTER_ADDRESS", "address", addressQuery);
}

UrlRow noLength(const char *name, const std::string &url)
{
    return noValue(name, url, "URL_INFO_FILE_SIZE", "length", lengthQuery);
}

UrlRow noName(const char *name, const std::string &url)
{
    return noValue(name, url, "URL_INFO_FILENAME", "filename", nameQuery);
}

UrlRow invalid(const char *name, const std::string &url, const std::string &length,
               const std::string &fileName)
{
    return {name, url,
            "The GenTL reports invalid URL port information: XML file size: " + length +
                ", XML file name: '" + fileName + "'.",
            nameQuery};
}

const std::string name255(255, 'n');

INSTANTIATE_TEST_SUITE_P(
    Urls, UrlTest,
    ::testing::Values(
        UrlRow{"Zip", "local:///camera.zip;F0F00000;3BF", readFailed, "GCReadPort(7, 4042260480, 959)"},
        UrlRow{"Query", "local:camera.xml;1000;200?SchemaVersion=1.0.0", readFailed,
               "GCReadPort(7, 4096, 512)"},
        UrlRow{"Prefix", "local:camera.xml;0x1000;0x200", readFailed, "GCReadPort(7, 4096, 512)"},
        UrlRow{"LeadingBlank", "local:camera.xml; 1000; 200", readFailed, "GCReadPort(7, 4096, 512)"},
        UrlRow{"DigitsThenText", "local:camera.xml;12XY;20", readFailed, "GCReadPort(7, 18, 32)"},
        UrlRow{"LastAddress", "local:camera.xml;FFFFFFFFFFFFFFFF;1", readFailed,
               "GCReadPort(7, 18446744073709551615, 1)"},
        UrlRow{"LongestName", "local:" + name255 + ";1000;200", readFailed, "GCReadPort(7, 4096, 512)"},
        noAddress("NoDigit", "local:camera.xml;XY;20"), noAddress("TwoPieces", "local:camera.xml;1000"),
        noAddress("FourPieces", "local:camera.xml;1000;200;"),
        noAddress("TooManyBits", "local:camera.xml;10000000000000000;20"),
        noLength("EmptyLength", "local:camera.xml;1000;"),
        noLength("OnlyAQuery", "local:camera.xml;1000;?a=1"), noName("Drive", "local:C:/camera.xml;1000;200"),
        noName("NameOf256", "local:n" + name255 + ";1000;200"),
        noScheme("MixedCase", "Local:camera.xml;1000;200"), noScheme("NoScheme", "camera.xml;1000;200"),
        noScheme("OtherScheme", "ftp:camera.xml;1000;200"), noScheme("Empty", ""),
        invalid("OnlySlashes", "local:///;1000;200", "512", ""),
        invalid("NoBytes", "local:///camera.xml;1000;0", "0", "camera.xml"),
        UrlRow{"Http", "http:camera.xml;1000;200", "URL scheme 1 not supported.", nameQuery},
        UrlRow{"File", "file:camera.xml;1000;200", "URL scheme 2 not supported.", nameQuery}),
    [](const auto &row) { return std::string(row.param.name); });

TEST_F(DescriptionTest, AUrlThatSaysLocalOverrulesTheProducersScheme)
{
    script.urlAnswers[URL_INFO_SCHEME] = URL_SCHEME_FILE;
    script.urlAnswers[URL_INFO_URL] = "local:camera.xml;1000;200";
    EXPECT_EQ(openFailure(), "no exception");
    script.urlAnswers[URL_INFO_SCHEME] = URL_SCHEME_HTTP;
    script.urlAnswers[URL_INFO_URL] = "file:///c:/camera.xml"; // whose scheme is the one that is named
    EXPECT_EQ(openFailure(), "URL scheme 2 not supported.");
    script.urlAnswers[URL_INFO_URL] = "Local:camera.xml;1000;200";
    EXPECT_EQ(openFailure(), "URL scheme 1 not supported.");
    script.urlAnswers[URL_INFO_SCHEME] = URL_SCHEME_LOCAL; // is believed whatever the text says
    script.urlAnswers[URL_INFO_URL] = "http://camera.xml";
    EXPECT_EQ(openFailure(), "no exception");
}

TEST_F(DescriptionTest, WithoutAUrlNothingElseIsAsked)
{
    script.urlAnswers.erase(URL_INFO_URL);
    EXPECT_EQ(openFailure(), queryFailed("URL_INFO_URL", ""));
    EXPECT_THAT(script.calls, ElementsAre("GCGetPortInfo(7, 8, 11, 1)", "GCGetPortInfo(7, 7, 11, 1)",
                                          "GCGetPortURLInfo(7, 0, 0, 1, 512)", "GCGetLastError(1028)"));
}

TEST_F(DescriptionTest, TheGivenUrlIsTakenAndNoOther)
{
    const auto gentl = std::make_shared<GenTL_Interface>(producerPath("full"));
    script.urlAnswers.clear();
    script.calls.clear();
    EXPECT_EQ(failureOf([&] { GenTL_PortInterface(handle, gentl, 4294967295U); }),
              "GCGetPortURLInfo(4294967295,URL_INFO_URL) failed with code -1010! Message: refused ");
    EXPECT_THAT(script.calls,
                ElementsAre("GCGetPortInfo(7, 8, 11, 1)", "GCGetPortInfo(7, 7, 11, 1)",
                            "GCGetPortURLInfo(7, 4294967295, 0, 1, 512)", "GCGetLastError(1028)"));
}

TEST_F(DescriptionTest, AnOldProducerIsNotAsked)
{
    for (const auto &[major, minor] : {std::pair{1U, 0U}, std::pair{0U, 9U}}) {
        script.major = major;
        script.minor = minor;
        EXPECT_EQ(openFailure(),
                  "GenTL_PortInterface requires a GenTL_Interface that supportes at least GenTL "
                  "version 1.1! GenTL_Interface reports to support GenTL V" +
                      std::to_string(major) + "." + std::to_string(minor) + ".");
        EXPECT_EQ(script.calls.back(), "GCGetPortInfo(7, 7, 11, 1)");
    }
}

TEST_F(DescriptionTest, AnAbsentUrlQueryIsReportedWithTheCodeZero)
{
    const std::string absent =
        "GCGetPortURLInfo(0,URL_INFO_URL) failed with code 0! Message: The instrumented TL "
        "does not implement GCGetPortURLInfo()! ";
    script.major = 2; // new enough, and yet without the functions of 1.1
    script.minor = 0;
    EXPECT_EQ(openFailure(), absent);
    script.majorCode = script.minorCode = GC_ERR_NOT_IMPLEMENTED;
    EXPECT_EQ(openFailure(producerPath("lacks-much")), absent);
    EXPECT_EQ(openFailure(), "no exception");
}

TEST_F(DescriptionTest, TheNameDecidesWhetherItIsZipped)
{
    const std::string zipFailed = "Loading xml from zip file failed by GenICam exception. Msg: ";
    for (const char *plain : {"camera.xml", "x.ZIP", "zip"}) {
        script.urlAnswers[URL_INFO_FILENAME] = plain;
        EXPECT_EQ(openFailure(), "no exception") << plain;
    }
    for (const char *zipped : {"camera.zip", "x.zip.xml", ".zip"}) {
        script.urlAnswers[URL_INFO_FILENAME] = zipped;
        EXPECT_THAT(openFailure(), StartsWith(zipFailed)) << zipped;
    }
    script.urlAnswers[URL_INFO_FILENAME] = "camera.xml";
    script.memory = std::string(description.size(), 'x');
    EXPECT_THAT(openFailure(), StartsWith("Loading xml from string data failed by GenICam exception. Msg: "));
}

TEST_F(DescriptionTest, WhatTheProducerDeliveredCountsButNotMoreThanWasAskedFor)
{
    script.urlAnswers[URL_INFO_FILE_SIZE] = std::uint64_t{description.size() + 1000};
    EXPECT_EQ(openFailure(), "no exception"); // the zero bytes behind it do not belong to it
    script.claimedSize = 20;
    EXPECT_THAT(openFailure(), StartsWith("Loading xml from string data failed by GenICam exception. Msg: "));
    script.urlAnswers[URL_INFO_FILE_SIZE] = std::uint64_t{description.size()};
    script.claimedSize = ~std::size_t{0};
    EXPECT_EQ(openFailure(), "no exception");
}

TEST_F(DescriptionTest, AnAbsurdSizeIsAnAllocationFailure)
{
    script.urlAnswers[URL_INFO_FILE_SIZE] = std::uint64_t{1} << 63;
    EXPECT_THROW(open(), std::bad_alloc);
}

TEST_F(DescriptionTest, APortNameWithoutANodeCannotBeConnected)
{
    script.portName = "TLDevice";
    EXPECT_EQ(openFailure(), "Connecting NodeMapRef with port failed!");
    script.portInfoCodes = {{PORT_INFO_PORTNAME, GC_ERR_ERROR}};
    EXPECT_EQ(openFailure(), "GCGetPortInfo(PORT_INFO_PORTNAME) failed with code -1010! Message: refused ");
}

TEST_F(DescriptionTest, WhatConnectingThrowsPassesUnchanged)
{
    const std::string port = R"(<Port Name="Device"/>)";
    script.memory.insert(script.memory.find(port), port); // loads, but the name finds no single node
    script.urlAnswers[URL_INFO_FILE_SIZE] = std::uint64_t{script.memory.size()};
    EXPECT_THAT([&] { open(); },
                Throws<PropertyException>(Property(&PropertyException::GetDescription,
                                                   StrEq("Node 'Device' is defined more than once"))));
}

} // namespace

// SPDX-License-Identifier: MIT
// The load of a description through a port: where it is looked for, each way to fail, and the node map.
#include "GenTL_Interface.h"
#include "GenTL_PortInterface.h"
#include "IInteger.h"
#include "INode.h"
#include "LoadedModule.h"
#include "Script.h"
#include "Simulator.h"
#include "TemporaryFolder.h"

#include <gmock/gmock.h>

using namespace GenICam_Interfaces;
using namespace std::string_literals;
using ::testing::ElementsAre;
using ::testing::StartsWith;

namespace {

const std::string description =
    R"(<RegisterDescription ModelName="M" VendorName="V">
  <Category Name="Root"><pFeature>LockState</pFeature></Category>
  <IntReg Name="LockState"><Address>0x50001000</Address><Length>4</Length><AccessMode>RO</AccessMode>
  <pPort>Device</pPort><Cachable>NoCache</Cachable></IntReg>
  <Port Name="Device"/></RegisterDescription>)";

class DescriptionTest : public ::testing::Test
{
protected:
    DescriptionTest()
    {
        script.memory = description;
        script.portName = std::string("Device\0hidden", 13);
        script.urlAnswers = {{URL_INFO_URL, "Local:camera.xml;1000;200"},
                             {URL_INFO_SCHEME, URL_SCHEME_LOCAL},
                             {URL_INFO_FILE_REGISTER_ADDRESS, std::uint64_t{0x1000}},
                             {URL_INFO_FILE_SIZE, std::uint64_t{description.size()}},
                             {URL_INFO_FILENAME, "camera.xml"}};
    }

    std::unique_ptr<GenTL_PortInterface> open(const std::string &path = scriptedProducer(),
                                              std::uint32_t url = 0)
    {
        auto gentl = std::make_shared<GenTL_Interface>(path);
        script.calls.clear();
        return std::make_unique<GenTL_PortInterface>(handle, std::move(gentl), url);
    }

    std::string openFailure(std::uint32_t url = 0)
    {
        return failureOf([&] { open(scriptedProducer(), url); });
    }

    /// That of a producer that answers URL_INFO_URL alone: the rest comes from the text.
    std::string openFailureOf(const std::string &url)
    {
        script.urlAnswers = {{URL_INFO_URL, url}};
        return openFailure();
    }

    Script &script = *torvaneTestScript() = Script();
    const PORT_HANDLE handle = reinterpret_cast<PORT_HANDLE>(7);
};

const std::string refused = " failed with code -1010! Message: the link is down ";

TEST_F(DescriptionTest, AnOpenedPortReachesItsFeaturesByName)
{
    const auto port = open();
    EXPECT_THAT(script.calls,
                ElementsAre("GCGetPortInfo(7, 8, 11, 1)", "GCGetPortInfo(7, 7, 11, 1)",
                            "GCGetPortURLInfo(7, 0, 0, 1, 512)", "GCGetPortURLInfo(7, 0, 9, 5, 4)",
                            "GCGetPortURLInfo(7, 0, 7, 8, 8)", "GCGetPortURLInfo(7, 0, 8, 8, 8)",
                            "GCGetPortURLInfo(7, 0, 10, 1, 256)",
                            "GCReadPort(7, 4096, " + std::to_string(description.size()) + ")",
                            "GCGetPortInfo(7, 12, 1, 0)", "GCGetPortInfo(7, 12, 1, 14)"));
    EXPECT_EQ(port->nodeMapRef._GetDeviceName(), "Device");
    EXPECT_EQ(port->getNode("Gain"), nullptr);

    auto *lockState = dynamic_cast<GenApi_3_2_TVN::IInteger *>(port->getNode("LockState"));
    ASSERT_NE(lockState, nullptr);
    script.memory = std::string("\3\0\0\0", 4);
    EXPECT_EQ(lockState->GetValue(false, false), 3);
    EXPECT_EQ(script.calls.back(), "GCReadPort(7, 1342181376, 4)");
    script.portCode = GC_ERR_TIMEOUT; // passes through the node map as what it is
    EXPECT_EQ(failureOf([&] { lockState->GetValue(false, false); }), "GCReadPort" + refused);
}

TEST_F(DescriptionTest, APortKeepsItsProducerLoaded)
{
    const TemporaryFolder folder{};
    const std::string path = (folder.path() / "copy.cti").string();
    std::filesystem::copy_file(scriptedProducer(), path);
    auto port = open(path);
    EXPECT_TRUE(testsystem::isLoaded(path));
    port.reset();
    EXPECT_FALSE(testsystem::isLoaded(path));
    script.memory = "no description";
    failureOf([&] { open(path); }); // unwinds all that was built
    EXPECT_FALSE(testsystem::isLoaded(path));

    GenTL_Interface gentl(scriptedProducer());
    script.memory = description;
    EXPECT_NE(GenTL_PortInterface(handle, &gentl, 0).getNode("LockState"), nullptr);
}

TEST_F(DescriptionTest, TheUrlTellsWhatTheProducerDoesNot)
{
    const std::pair<std::string, const char *> rows[] = {
        {"local:///camera.zip;F0F00000;3BF", "GCReadPort(7, 4042260480, 959)"},
        {"local:camera.xml;1000;200?SchemaVersion=1.0.0", "GCReadPort(7, 4096, 512)"},
        {"local:camera.xml;0x1000;0x200", "GCReadPort(7, 4096, 512)"},
        {"local:camera.xml; 1000; 200", "GCReadPort(7, 4096, 512)"},
        {"local:camera.xml;12XY;20", "GCReadPort(7, 18, 32)"},
        {"local:camera.xml;FFFFFFFFFFFFFFFF;1", "GCReadPort(7, 18446744073709551615, 1)"},
        {"local:" + std::string(255, 'n') + ";1000;200", "GCReadPort(7, 4096, 512)"},
    };
    script.portCode = GC_ERR_IO;
    for (const auto &[url, read] : rows) {
        for (const GC_ERROR code : {GC_ERR_NOT_IMPLEMENTED, GC_ERR_ERROR}) { // any refusal leads to the text
            script.urlCode = code;
            EXPECT_EQ(openFailureOf(url), "GCReadPort" + refused) << url;
            EXPECT_THAT(script.calls, testing::Contains(read)) << url;
        }
    }
}

TEST_F(DescriptionTest, TheUrlDoesNotTell)
{
    const auto refusedFor = [](const char *query, const std::string &detail) {
        return std::string("GCGetPortURLInfo(0,URL_INFO_") + query + ")" + refused + "Fetching the " +
               detail + "failed also.";
    };
    const auto of = [](const std::string &url) { return " from the URL string '" + url + "' "; };
    for (const char *url :
         {"Local:camera.xml;1000;200", "camera.xml;1000;200", "ftp:camera.xml;1000;200", ""})
        EXPECT_EQ(openFailureOf(url), refusedFor("SCHEME", "scheme from the URL string "));
    for (const char *url : {"local:camera.xml;XY;20", "local:camera.xml;1000", "local:camera.xml;1000;200;",
                            "local:camera.xml;10000000000000000;20"})
        EXPECT_EQ(openFailureOf(url), refusedFor("FILE_REGISTER_ADDRESS", "address" + of(url)));
    for (const char *url : {"local:camera.xml;1000;", "local:camera.xml;1000;?a=1"})
        EXPECT_EQ(openFailureOf(url), refusedFor("FILE_SIZE", "length" + of(url)));
    for (const std::string &url :
         {"local:C:/camera.xml;1000;200"s, "local:" + std::string(256, 'n') + ";1000;200"})
        EXPECT_EQ(openFailureOf(url), refusedFor("FILENAME", "filename" + of(url)));

    const std::string invalid = "The GenTL reports invalid URL port information: XML file size: ";
    EXPECT_EQ(openFailureOf("local:///;1000;200"), invalid + "512, XML file name: ''.");
    EXPECT_EQ(openFailureOf("local:///camera.xml;1000;0"), invalid + "0, XML file name: 'camera.xml'.");
    EXPECT_EQ(openFailureOf("http:camera.xml;1000;200"), "URL scheme 1 not supported.");
}

TEST_F(DescriptionTest, WhatTheProducerTellsOfIt)
{
    const std::string none = "no exception";
    const std::string zipFailed = "Loading xml from zip file failed by GenICam exception. Msg: ";
    const auto answers = script.urlAnswers;
    const std::pair<decltype(script.urlAnswers), std::string> rows[] = {
        // A URL that says local overrules another scheme, and one that says something else is named by that.
        {{{URL_INFO_SCHEME, URL_SCHEME_FILE}, {URL_INFO_URL, "local:camera.xml;1000;200"}}, none},
        {{{URL_INFO_SCHEME, URL_SCHEME_HTTP}, {URL_INFO_URL, "file:///c:/camera.xml"}},
         "URL scheme 2 not supported."},
        {{{URL_INFO_SCHEME, URL_SCHEME_HTTP}}, "URL scheme 1 not supported."},
        {{{URL_INFO_URL, "http://camera.xml"}}, none},
        // The name decides whether it is zipped.
        {{{URL_INFO_FILENAME, "x.ZIP"}}, none},
        {{{URL_INFO_FILENAME, "zip"}}, none},
        {{{URL_INFO_FILENAME, "x.zip.xml"}}, zipFailed},
        {{{URL_INFO_FILENAME, ".zip"}}, zipFailed},
        {{{URL_INFO_FILE_SIZE, std::uint64_t{1} << 63}},
         "Loading xml from string data failed by GenICam exception. Msg: The description is larger than 32 "
         "MiB"},
        // The zero bytes behind what was delivered do not belong to it.
        {{{URL_INFO_FILE_SIZE, std::uint64_t{description.size() + 1000}}}, none},
    };
    for (const auto &row : rows) {
        script.urlAnswers = row.first;
        script.urlAnswers.insert(answers.begin(), answers.end());
        EXPECT_THAT(openFailure(), StartsWith(row.second)) << "row " << &row - rows;
    }
}

TEST_F(DescriptionTest, TheGivenUrlIsTakenAndNothingElseIsAskedWithoutIt)
{
    script.urlAnswers.erase(URL_INFO_URL);
    EXPECT_EQ(openFailure(4294967295U), "GCGetPortURLInfo(4294967295,URL_INFO_URL)" + refused);
    EXPECT_THAT(script.calls,
                ElementsAre("GCGetPortInfo(7, 8, 11, 1)", "GCGetPortInfo(7, 7, 11, 1)",
                            "GCGetPortURLInfo(7, 4294967295, 0, 1, 512)", "GCGetLastError(1028)"));
}

TEST_F(DescriptionTest, TheVersionDecidesWhetherAProducerIsAsked)
{
    const std::string tooOld =
        "GenTL_PortInterface requires a GenTL_Interface that supportes at least GenTL version "
        "1.1! GenTL_Interface reports to support GenTL V";
    const std::pair<std::string, std::string> rows[] = {
        {"0.9", tooOld + "0.9."},
        {"1.0", tooOld + "1.0."},
        // New enough, and yet without the functions of 1.1, whose made-up error has no code.
        {"2.0", "GCGetPortURLInfo(0,URL_INFO_URL) failed with code 0! Message: The instrumented TL does not "
                "implement GCGetPortURLInfo()! "},
    };
    for (const auto &[version, failure] : rows) {
        const Simulator simulator("[producer]\nversion = \"" + version + "\"\n");
        const auto gentl = std::make_shared<GenTL_Interface>(Simulator::cti());
        TL_HANDLE tl = nullptr;
        gentl->GCInitLib();
        gentl->TLOpen(&tl);
        EXPECT_EQ(failureOf([&] { GenTL_PortInterface(tl, gentl, 0); }), failure);
        EXPECT_THAT(simulator.calls().back(), StartsWith("GCGetPortInfo"));
        gentl->GCCloseLib();
    }
}

TEST_F(DescriptionTest, AProducerIsBelievedLessButNotMoreThanWasAskedFor)
{
    script.claimedSize = ~std::size_t{0};
    EXPECT_EQ(openFailure(), "no exception");
    script.claimedSize = 20;
    EXPECT_THAT(openFailure(), StartsWith("Loading xml from string data failed by GenICam exception. Msg: "));
}

TEST_F(DescriptionTest, APortNameWithoutANodeCannotBeConnected)
{
    script.portName = "TLDevice";
    EXPECT_EQ(openFailure(), "Connecting NodeMapRef with port failed!");
    script.refusedPortInfo = PORT_INFO_PORTNAME;
    EXPECT_EQ(openFailure(), "GCGetPortInfo(PORT_INFO_PORTNAME)" + refused);
}

} // namespace

// SPDX-License-Identifier: MIT
// Features by name: which kinds have a value, how values are converted, and who hears of a failure.
#include "RemoteNode.h"

#include "BackEndFixture.h"
#include "GenericException.h"

#include <gmock/gmock.h>

#include <limits>
#include <stdexcept>
#include <tuple>
#include <variant>

using GenICam_3_2_TVN::GenericException;

namespace {

constexpr const char *features = R"(
    <Category Name="Root"><pFeature>Number</pFeature></Category>
    <Integer Name="Number"><Value>-5</Value></Integer>
    <Boolean Name="Switch"><Value>1</Value></Boolean>
    <String Name="Label"><Value>two words</Value></String>
    <IntReg Name="Raw"><Address>0x50001000</Address><Length>4</Length><pPort>Device</pPort></IntReg>
    <IntReg Name="Nowhere"><Address>0x7fff0000</Address><Length>4</Length><AccessMode>RW</AccessMode>
        <pPort>Device</pPort></IntReg>
    <Integer Name="Lost"><pValue>Nowhere</pValue></Integer>
    <Command Name="Run"><pValue>Nowhere</pValue><CommandValue>1</CommandValue></Command>
    <Integer Name="Twice"><Value>1</Value></Integer>
    <Integer Name="Twice"><Value>2</Value></Integer>
    <Float Name="Gain"><Value>-2.5</Value></Float>
    <Float Name="Circle"><pValue>Circle</pValue></Float>
    )";

class RemoteNodeTest : public BackEndTest
{
protected:
    RemoteNodeTest()
    {
        describe(features, "type = \"U3V\"\n");
        camera = select();
    }

    Device *camera = nullptr;
};

TEST_F(RemoteNodeTest, ValuesByKind)
{
    const std::tuple<const char *, std::int64_t, double, const char *> rows[] = {
        {"Number", -5, -5.0, "-5"},
        {"Switch", 1, 1.0, "1"},
        {"Gain", -2, -2.5, "-2.500000"},
        {"Label", RemoteNode::NoInteger, RemoteNode::NoDouble, "two words"},
        {"Root", RemoteNode::NoInteger, RemoteNode::NoDouble, ""},
        {"Raw", RemoteNode::NoInteger, RemoteNode::NoDouble, ""}, // an integer register is no "Integer"
    };
    for (const auto &[name, integer, number, text] : rows) {
        const RemoteNode node = camera->remoteNode(name);
        EXPECT_EQ(node.valueAsInteger(), integer) << name;
        EXPECT_EQ(node.valueAsDouble(), number) << name;
        EXPECT_EQ(node.valueAsString(), text) << name;
    }
    EXPECT_EQ(RemoteNode::NoDouble, std::numeric_limits<double>::min());
}

TEST_F(RemoteNodeTest, WritesAreConvertedByKind)
{
    const struct
    {
        const char *name;
        std::variant<std::int32_t, std::int64_t, double> value;
        const char *expected;
    } rows[] = {
        {"Number", std::int64_t{1} << 40, "1099511627776"},
        {"Number", 3.9, "3"},
        {"Number", 18446744073709549568.0, "-2048"}, // the bits of an unsigned value
        {"Number", 1e300, "-1"},                     // clamped to all bits
        {"Number", -1e300, "-9223372036854775808"},
        {"Number", std::numeric_limits<double>::quiet_NaN(), "0"},
        {"Switch", -1, "0"},
        {"Switch", 0.5, "1"},
        {"Gain", -7, "-7.000000"},
        {"Label", 1.5, "1.500000"},
        {"Root", 1, ""},
    };
    for (const auto &row : rows) {
        std::visit([&](auto value) { camera->remoteNode(row.name).setValue(value); }, row.value);
        EXPECT_EQ(camera->remoteNode(row.name).valueAsString(), row.expected) << row.name;
    }
}

TEST_F(RemoteNodeTest, AFailingLookupLeavesTheObjectAsItWas)
{
    RemoteNode node = camera->remoteNode("Number");
    EXPECT_THAT(printedBy([&] { node.lookup("Twice"); }),
                testing::MatchesRegex("WARNING: Getting the remote device node 'Twice' failed!\n"
                                      "         Msg: .*'Twice'.*\n"));
    EXPECT_EQ(node.valueAsInteger(), -5);

    EXPECT_EQ(printedBy([&] { node.lookup("Absent"); }),
              "ERROR: Could not open the remote device node 'Absent'!\n");
    EXPECT_THROW(node.valueAsInteger(), GenericException) << "no node, but still the kind of the one before";
    node.setPort(nullptr);
    EXPECT_EQ(node.valueAsInteger(), RemoteNode::NoInteger) << "a node goes with its port";
}

TEST_F(RemoteNodeTest, FailuresGoToTheCallerButForCommands)
{
    EXPECT_THROW(camera->remoteNode("Lost").valueAsInteger(), std::runtime_error) << "of the port";
    EXPECT_THROW(camera->remoteNode("Circle").valueAsString(), GenericException) << "of GenApi";
    simulator.clearLog();
    EXPECT_EQ(printedBy([this] {
                  camera->remoteNode("Run").execute();
                  camera->remoteNode("Number").execute();
                  RemoteNode(nullptr).execute();
                  EXPECT_EQ(RemoteNode(nullptr, "Number").valueAsString(), "");
              }),
              "Cannot execute feature Number because it is not a command!\n"
              "Cannot execute feature  because it is not a command!\n");
    EXPECT_EQ(simulator.calls("GCWritePort").size(), 1u) << "it failed, and nobody hears of it";
}

TEST_F(RemoteNodeTest, AClosedDeviceIsNotAsked)
{
    RemoteNode lost = camera->remoteNode("Lost");
    camera->close(true);
    simulator.clearLog();
    EXPECT_THROW(lost.valueAsInteger(), std::runtime_error);
    EXPECT_THROW(lost.setValue(std::int64_t{1}), std::runtime_error);
    EXPECT_FALSE(camera->readPasswordSupport());
    EXPECT_TRUE(simulator.calls().empty());
}

} // namespace

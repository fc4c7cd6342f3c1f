// SPDX-License-Identifier: MIT
// What registers of all kinds share beyond their value: raw bytes, structures, swapped ports, and when a cached
// value ends by itself.
#include "Camera.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>

using namespace GenApi_3_2_TVN;
using testing::ElementsAre;

namespace {

std::string reg(const std::string &name, std::uint64_t address, const std::string &more = "")
{
    return element("IntReg", name, at(address, 1, more));
}

TEST(Register, GivesAndTakesItsBytes)
{
    Camera camera{constant("Size", "3") +
                  element("Register", "Table",
                          "<Address>0x8000000000000000</Address><pLength>Size</pLength>" + readWrite +
                              "<pPort>Device</pPort>") +
                  element("StringReg", "Text", at(16, 4))};
    const CRegisterPtr table = camera.registerOf("Table");
    EXPECT_EQ(table->GetLength(), 3);
    EXPECT_EQ(static_cast<std::uint64_t>(table->GetAddress()), 0x8000000000000000U);
    const std::array<std::uint8_t, 4> written{1, 2, 3, 4};
    table->Set(written.data(), 3);
    EXPECT_THAT(camera.port.get(0x8000000000000000U, 4), ElementsAre(1, 2, 3, 0));
    std::array<std::uint8_t, 4> bytes{};
    table->Get(bytes.data(), 3);
    EXPECT_THAT(bytes, ElementsAre(1, 2, 3, 0));
    for (const std::int64_t length : {-1, 0, 2, 4}) {
        const std::string text = "Node 'Table': " + std::to_string(length) + " bytes for a register of 3";
        EXPECT_EQ(refusal([&] { table->Set(written.data(), length); }), text);
        EXPECT_EQ(refusal([&] { table->Get(bytes.data(), length); }), text);
    }
    camera.port.set(16, {'a', 0, 'b', 'c'});
    camera.registerOf("Text")->Get(bytes.data(), 4);
    EXPECT_THAT(bytes, ElementsAre('a', 0, 'b', 'c')) << "every kind that lies in a register has its bytes";
    EXPECT_EQ(refusal([&] { camera.registerOf("Text")->Set(bytes.data(), 4); }),
              "Node 'Text': can only be read");
}

/// A device whose byte at 64 holds 200 once it has been read.
class GrowingPort : public FakePort
{
public:
    void Read(void *buffer, std::int64_t address, std::int64_t length) override
    {
        FakePort::Read(buffer, address, length);
        if (address == 64)
            set(64, {200});
    }
};

TEST(Register, IsNoLongerThanItWasWhenItWasAsked)
{
    GrowingPort port;
    const std::string place = "<Address>0</Address><pLength>Size</pLength><pPort>Device</pPort>";
    Camera camera{reg("Size", 64, "<Cachable>NoCache</Cachable>") + element("Register", "Table", place) +
                  element("IntReg", "Whole", place) + element("FloatReg", "Real", place) +
                  element("IntReg", "Back", place + bigEndian) + element("StringReg", "Text", place)};
    camera.nodeMap._Connect(static_cast<IPort *>(&port));
    port.set(0, {0, 0, 0x80, 0x3f, 1});
    std::array<std::uint8_t, 4> bytes{};
    port.set(64, {4});
    camera.registerOf("Table")->Get(bytes.data(), 4);
    EXPECT_THAT(bytes, ElementsAre(0, 0, 0x80, 0x3f));
    EXPECT_EQ(refusal([&] { camera.registerOf("Table")->Get(bytes.data(), 4); }),
              "Node 'Table': 4 bytes for a register of 200");
    port.set(64, {3});
    EXPECT_EQ(camera.value("Whole"), 0x800000);
    port.set(64, {3});
    EXPECT_EQ(camera.value("Back"), 0x80);
    port.set(64, {4});
    EXPECT_EQ(camera.real("Real")->GetValue(), 1);
    port.set(0, {'a', 'b', 'c'});
    port.set(64, {2});
    EXPECT_EQ(camera.text("Text"), "ab");
}

TEST(Register, EntriesOfAStructureAreFieldsOfOneRegister)
{
    Camera camera{constant("Where", "8") + constant("IsThere", "1") +
                  "<StructReg Comment='no name'><pAddress>Where</pAddress>" +
                  element("IntSwissKnife", "Offset", "<Formula>8</Formula>") + "<Length>2</Length>" +
                  readWrite + bigEndian +
                  "<Cachable>NoCache</Cachable><pIsAvailable>IsThere</pIsAvailable><pPort>Device</pPort>" +
                  element("StructEntry", "Top", "<Bit>0</Bit>") +
                  element("StructEntry", "Low", "<LSB>15</LSB><MSB>12</MSB><Sign>Signed</Sign>") +
                  element("StructEntry", "Fixed",
                          "<LSB>11</LSB><MSB>8</MSB><AccessMode>RO</AccessMode>"
                          "<Cachable>WriteThrough</Cachable>") +
                  "</StructReg>"};
    camera.port.set(16, {0x80, 0x5f});
    EXPECT_EQ(camera.value("Top"), 1);
    EXPECT_EQ(camera.value("Low"), -1);
    EXPECT_EQ(camera.integer("Low")->GetInc(), 1);
    EXPECT_EQ(camera.value("Fixed"), 5);
    EXPECT_EQ(camera.value("Offset"), 8) << "its formula is found by name";
    camera.integer("Low")->SetValue(-8);
    EXPECT_THAT(camera.port.get(16, 2), ElementsAre(0x80, 0x58));
    EXPECT_EQ(camera.node("Fixed")->GetAccessMode(), RO);
    camera.port.set(16, {0, 0x60});
    camera.value("Fixed");
    camera.port.set(16, {0, 0x70});
    EXPECT_EQ(camera.value("Fixed"), 6) << "cached, as it says";
    EXPECT_EQ(camera.value("Top"), 0) << "not cached, as the structure says";
    camera.integer("IsThere")->SetValue(0);
    EXPECT_EQ(camera.node("Top")->GetAccessMode(), NA);
}

TEST(Register, APortThatSwapsBytesChangesTheOrderAndNotTheBits)
{
    const std::string place = "<Address>0</Address><Length>4</Length>" + readWrite + "<pPort>Turned</pPort>";
    Camera camera{element("Port", "Turned", "<SwapEndianess>Yes</SwapEndianess>") +
                  element("IntReg", "Whole", place) + element("FloatReg", "Real", place) +
                  element("IntReg", "Back", place + bigEndian) +
                  element("MaskedIntReg", "Field", place + "<LSB>0</LSB><MSB>7</MSB>")};
    camera.nodeMap._Connect(&camera.port, "Turned");
    camera.port.set(0, {0x3f, 0x80, 0, 1});
    EXPECT_EQ(camera.value("Whole"), 0x3f800001);
    EXPECT_EQ(camera.value("Back"), 0x0100803f);
    EXPECT_EQ(camera.value("Field"), 1);
    EXPECT_EQ(camera.real("Real")->GetValue(), 0x1.000002p0);
    camera.integer("Field")->SetValue(2);
    EXPECT_THAT(camera.port.get(0, 4), ElementsAre(0x3f, 0x80, 0, 2));
}

TEST(Cache, EndsWhenAReadFindsAnInvalidatorChanged)
{
    Camera camera{reg("Live", 0, "<Cachable>NoCache</Cachable>") + reg("Kept", 2) +
                  reg("Dependent", 1, "<pInvalidator>Live</pInvalidator>")};
    EXPECT_EQ(camera.value("Live") + camera.value("Kept") + camera.value("Dependent"), 0);
    camera.port.set(1, {5, 5});
    camera.value("Live");
    EXPECT_EQ(camera.value("Dependent"), 0) << "nothing has changed";
    camera.port.set(0, {1});
    camera.value("Live");
    EXPECT_EQ(camera.value("Dependent"), 5);
    EXPECT_EQ(camera.value("Kept"), 0);
}

TEST(Cache, EndsWhenAnInvalidatorIsReadOfWhichNothingWasKnown)
{
    Camera camera{reg("Live", 0) + reg("Dependent", 1, "<pInvalidator>Live</pInvalidator>")};
    EXPECT_EQ(camera.value("Dependent"), 0);
    camera.port.set(0, {1, 1});
    camera.value("Live");
    EXPECT_EQ(camera.value("Dependent"), 1) << "it may have been another before";

    camera.port.failure = "timeout";
    EXPECT_THROW(camera.integer("Live")->GetValue(false, true), std::runtime_error);
    camera.port.failure.clear();
    camera.port.set(0, {2, 2});
    camera.value("Live");
    EXPECT_EQ(camera.value("Dependent"), 2);
}

/// A device that counts its reads and has no memory.
class EmptyPort : public FakePort
{
public:
    void Read(void *, std::int64_t, std::int64_t) override { ++reads; }

    int reads = 0;
};

TEST(Cache, HoldsSixteenMegabytesInAll)
{
    std::string nodes;
    for (std::uint64_t table = 0; table < 257; ++table)
        nodes += element("StringReg", "T" + std::to_string(table), at(table << 16, 65536));
    EmptyPort port;
    Camera camera{nodes};
    camera.nodeMap._Connect(static_cast<IPort *>(&port));
    for (int table = 0; table < 256; ++table)
        camera.text("T" + std::to_string(table));
    const auto readsOf = [&](const char *name) {
        port.reads = 0;
        camera.text(name);
        return port.reads;
    };
    EXPECT_THAT(
        (std::vector{readsOf("T0"), readsOf("T255"), readsOf("T256"), readsOf("T256"), readsOf("T0")}),
        ElementsAre(0, 0, 1, 0, 1))
        << "what came before has made room";
}

TEST(Cache, HoldsRegistersUpTo64KiB)
{
    Camera camera{element("StringReg", "Table", at(0, 65536)) + element("StringReg", "File", at(0, 65537)) +
                  reg("Dependent", 1, "<pInvalidator>File</pInvalidator>")};
    camera.text("Table");
    camera.value("Dependent");
    camera.port.set(0, {'a', 'b'});
    EXPECT_EQ(camera.text("Table"), "");
    EXPECT_EQ(camera.text("File"), "ab");
    EXPECT_EQ(camera.value("Dependent"), 'b') << "the large one may have changed";
    camera.port.set(0, {'c'});
    EXPECT_EQ(camera.text("File"), "cb");
}

TEST(Cache, OutlivesItsTimeWhilePollingIsBlocked)
{
    Camera camera{constant("Busy", "1") +
                  reg("Slow", 0, "<PollingTime>10</PollingTime><pBlockPolling>Busy</pBlockPolling>")};
    camera.value("Slow");
    camera.port.set(0, {5});
    camera.nodeMap._Poll(10);
    EXPECT_EQ(camera.value("Slow"), 0);
    camera.integer("Busy")->SetValue(0);
    EXPECT_EQ(camera.value("Slow"), 5);
}

TEST(Indexed, ValuesAreThoseOfTheirIndex)
{
    const std::string half = "<pIndex>Selector</pIndex><ValueIndexed Index='1'>0.5</ValueIndexed>";
    Camera camera{
        constant("Selector", "1") + reg("Raw", 0, readWrite) +
        element("Integer", "Gain",
                "<pIndex>Selector</pIndex><ValueIndexed Index='1'>10</ValueIndexed>"
                "<pValueIndexed Index='0x2'>Raw</pValueIndexed><ValueIndexed Index='1'>11</ValueIndexed>"
                "<ValueDefault>-1</ValueDefault>") +
        element("Float", "Level", half + "<pValueDefault>Raw</pValueDefault>") +
        element("Float", "Bare", half) + reg("Fixed", 1) +
        element("Integer", "Kept",
                "<pIndex>Selector</pIndex><pValueIndexed Index='1'>Fixed</pValueIndexed>")};
    const auto select = [&](std::int64_t index) { camera.integer("Selector")->SetValue(index); };
    EXPECT_EQ(camera.value("Gain"), 10) << "of two for one index the first";
    EXPECT_EQ(camera.node("Kept")->GetAccessMode(), RO) << "as the node behind the index";
    EXPECT_EQ(camera.real("Level")->GetValue(), 0.5);
    camera.integer("Gain")->SetValue(12);
    EXPECT_EQ(camera.integer("Gain")->GetMax(), std::numeric_limits<std::int64_t>::max());
    select(2);
    camera.integer("Gain")->SetValue(7);
    EXPECT_THAT(camera.port.get(0, 1), ElementsAre(7));
    EXPECT_EQ(camera.real("Level")->GetValue(), 7);
    EXPECT_EQ(camera.integer("Gain")->GetMax(), 255) << "of the node behind the index";
    select(3);
    EXPECT_EQ(camera.value("Gain"), -1);
    EXPECT_EQ(camera.node("Bare")->GetAccessMode(), NA);
    EXPECT_EQ(refusal([&] { camera.real("Bare")->GetMax(); }),
              "Node 'Bare': pIndex is 3, for which it has no value");
    select(1);
    EXPECT_EQ(camera.value("Gain"), 12) << "each keeps its own";
}

} // namespace

// SPDX-License-Identifier: MIT
// What registers of all kinds share beyond their value: raw bytes, and a length that the device changes.
#include "Camera.h"

#include <gmock/gmock.h>

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
    for (const std::int64_t length : {-1, 2, 4}) {
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
                  element("StringReg", "Text", place)};
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
    port.set(64, {4});
    EXPECT_EQ(camera.real("Real")->GetValue(), 1);
    port.set(0, {'a', 'b', 'c'});
    port.set(64, {2});
    EXPECT_EQ(camera.text("Text"), "ab");
}

/// An invalidator that changes between two reads of one call.
TEST(Register, IsNotKeptWhenItsOwnCallFindsAChange)
{
    GrowingPort port;
    Camera camera{element("IntReg", "Live", at(64, 2, "<Cachable>NoCache</Cachable>")) +
                  reg("Dependent", 64, "<pInvalidator>Live</pInvalidator>") +
                  "<IntSwissKnife Name='Both'><pVariable Name='D'>Dependent</pVariable>"
                  "<pVariable Name='L'>Live</pVariable><Formula>D * 1000 + L</Formula></IntSwissKnife>"};
    camera.nodeMap._Connect(static_cast<IPort *>(&port));
    EXPECT_EQ(camera.value("Live"), 0);
    port.set(64, {0});
    EXPECT_EQ(camera.value("Both"), 200);
    EXPECT_EQ(camera.value("Dependent"), 200);
}

} // namespace

// SPDX-License-Identifier: MIT
// How often a call from outside asks the device: on a camera each read is a round trip that a user waits for.
#include "Camera.h"
#include "ReadShapes.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace GenApi_3_2_TVN;
using testing::ElementsAre;
using testing::UnorderedElementsAre;

namespace {

TEST(Reads, AskEachPlaceOnceWithinACall)
{
    Camera selector{Camera::whole, readshapes::selector()};
    selector.port.set(4, {1});
    EXPECT_EQ(selector.node("Selector")->GetAccessMode(), RW);
    EXPECT_THAT(selector.port.accesses, UnorderedElementsAre("R 0 4", "R 4 4", "R 8 4", "R 12 4", "R 16 4",
                                                             "R 20 4", "R 24 4", "R 28 4", "R 32 4"));
    selector.port.accesses.clear();
    EXPECT_EQ(selector.node("Selector")->GetAccessMode(), RW);
    EXPECT_THAT(selector.port.accesses, ElementsAre()) << "the next call knows it all";

    Camera format{Camera::whole, readshapes::format()};
    format.port.set(0, std::vector<std::uint8_t>(12, 0xff));
    StringList_t symbolics;
    format.enumeration("Format")->GetSymbolics(symbolics);
    EXPECT_EQ(symbolics.size(), 30U);
    EXPECT_THAT(format.port.accesses, UnorderedElementsAre("R 0 4", "R 4 4", "R 8 4", "R 12 4"));
    format.port.accesses.clear();
    format.nodeMap._EnableCaching(false);
    format.enumeration("Format")->SetIntValue(3);
    EXPECT_THAT(format.port.accesses, UnorderedElementsAre("R 0 4", "R 4 4", "R 8 4", "R 12 4", "W 16 4"));
}

} // namespace

// SPDX-License-Identifier: MIT
// The contract of the interfaces: the numbers, the texts and lines of exceptions, and the life of a node map.
// The order of their virtual operations is SlotTest.cpp's.
#include "Camera.h"

#include <gmock/gmock.h>

#include <functional>
#include <type_traits>

using namespace GenApi_3_2_TVN;
using GenICam_3_2_TVN::AccessException;
using GenICam_3_2_TVN::gcstring;
using GenICam_3_2_TVN::GenericException;
using testing::ElementsAre;

namespace {

/// "type file:line text" of the exception that \p act throws.
std::string report(const std::function<void()> &act)
{
    try {
        act();
    } catch (const GenericException &exception) {
        return std::string{exception.GetExceptionType()} + " " + exception.GetSourceFileName() + ":" +
               std::to_string(exception.GetSourceLine()) + " " + exception.GetDescription();
    }
    return "none";
}

TEST(NodeMapRef, WithoutANodeMapEachForwarderNamesItsLine)
{
    CNodeMapRef empty;
    FakePort port;
    NodeList_t nodes;
    FakeStackedPort stacked;
    const std::pair<int, std::function<void()>> forwarders[] = {
        {402, [&] { empty._GetDeviceName(); }},
        {410, [&] { empty._Poll(1); }},
        {418, [&] { empty._GetNodes(nodes); }},
        {442, [&] { empty._GetNode("X"); }},
        {426, [&] { empty._GetNumNodes(); }},
        {434, [&] { empty._EnableCaching(true); }},
        {450, [&] { empty._InvalidateNodes(); }},
        {490, [&] { empty._Connect(&stacked); }},
        {482, [&] { empty._Connect(&stacked, "Device"); }},
        {474, [&] { empty._Connect(&port); }},
        {466, [&] { empty._Connect(&port, "Device"); }},
        {458, [&] { empty._ParseSwissKnifes(); }},
    };
    for (const auto &[line, forwarder] : forwarders)
        EXPECT_EQ(report(forwarder), "AccessException GenApi/NodeMapRef:" + std::to_string(line) +
                                         " Feature not present (reference not valid)");

    GenICam_3_2_TVN::gcstring_vector versions;
    empty._GetSupportedSchemaVersions(versions);
    EXPECT_THAT(versions, ElementsAre("1.0", "1.1")) << "needs no node map";
}

TEST(NodeMapRef, IsLoadedOnceAndForgetsItsNameWithItsNodeMap)
{
    const std::string text = description("");
    const gcstring bytes{text.data(), text.size()};
    CNodeMapRef nodeMap{"Left"};
    EXPECT_EQ(refusal([&] { nodeMap._LoadXMLFromString("junk"); }).substr(0, 27),
              "The description is no XML: ");
    nodeMap._Destroy(); // there is none yet
    nodeMap._LoadXMLFromString(bytes);
    EXPECT_EQ(nodeMap._GetDeviceName(), "Left");
    EXPECT_EQ(report([&] { nodeMap._LoadXMLFromString("junk"); }),
              "RuntimeException GenApi/NodeMapRef:357 Node map already created");
    EXPECT_EQ(report([&] { nodeMap._LoadXMLFromZIPData("junk", 4); }),
              "RuntimeException GenApi/NodeMapRef:370 Node map already created");
    EXPECT_EQ(nodeMap._GetNumNodes(), 1U);
    nodeMap._Destroy();
    nodeMap._LoadXMLFromString(bytes);
    EXPECT_EQ(nodeMap._GetDeviceName(), "Device");
}

TEST(NodeMapRef, CopiesShareTheNodeMapAndTheLastOneEndsIt)
{
    const std::string text = description(constant("Gain", "1"));
    CNodeMapRef last;
    {
        CNodeMapRef first;
        first._LoadXMLFromString({text.data(), text.size()});
        const CNodeMapRef copy{first};
        last = copy;
        last = *&last;
        CIntegerPtr(first._GetNode("Gain"))->SetValue(2);
    }
    EXPECT_EQ(CIntegerPtr(last._GetNode("Gain"))->GetValue(), 2);
    last._Destroy();
    EXPECT_EQ(refusal([&] { last._GetNumNodes(); }), "Feature not present (reference not valid)");
    last._LoadXMLFromString({text.data(), text.size()});
    EXPECT_EQ(CIntegerPtr(last._GetNode("Gain"))->GetValue(), 1) << "a node map of its own again";
}

TEST(Pointer, ANullOneIsRefusedWhenItIsUsed)
{
    Camera camera{"<Integer Name='Gain'><Value>1</Value></Integer>"};
    const std::string refused = "LogicalErrorException GenApi/Pointer:105 NULL pointer dereferenced";
    EXPECT_EQ(report([&] { camera.boolean("Gain")->GetValue(); }), refused) << "of another kind";
    EXPECT_EQ(report([&] { (*camera.integer("Missing")).GetValue(); }), refused);
    EXPECT_TRUE(camera.integer("Gain").IsValid());
}

TEST(Exceptions, AreAFamilyOfTheirOwnWithABareText)
{
    EXPECT_FALSE((std::is_base_of_v<std::exception, GenericException>));
    const AccessException cut = GenICam_3_2_TVN::ExceptionReporter<AccessException>("GenApi/Here", 12)
                                    .Report("%s%d", std::string(300, 'x').c_str(), 1);
    EXPECT_EQ(cut.GetDescription(), std::string(255, 'x'));
    const GenericException plain{"Text", "GenApi/Here", 12, "GenericException"};
    EXPECT_STREQ(plain.GetDescription(), "Text");
    EXPECT_STREQ(plain.what(), "Text (GenericException, GenApi/Here:12)");
}

TEST(Numbers, ThatCrossTheBoundary)
{
    EXPECT_THAT((std::vector<int>{NI, NA, WO, RO, RW, _UndefinedAccesMode, No, Yes, ContentType_Xml,
                                  ContentType_ZippedXml, CacheUsage_Automatic}),
                ElementsAre(0, 1, 2, 3, 4, 5, 0, 1, 0, 1, 0));
}

TEST(Texts, CountTheirLengthAndNotTheirZeros)
{
    const gcstring text{"ab\0c", 4};
    EXPECT_EQ(text.length(), 4U);
    EXPECT_TRUE(text != "ab");
    EXPECT_TRUE(text == gcstring("ab\0c", 4));
    EXPECT_TRUE(gcstring{static_cast<const char *>(nullptr)} == "");
    EXPECT_TRUE((gcstring{nullptr, 0}.empty()));
}

} // namespace

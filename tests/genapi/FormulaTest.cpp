// SPDX-License-Identifier: MIT
// Formulas that are too long to stand in conversations/formulas.txt, and what a formula asks of its variables.
#include "Conversation.h"

#include <gtest/gtest.h>

namespace {

/// The node "F".
std::string knife(const std::string &formula, const std::string &symbols = "")
{
    return element("IntSwissKnife", "F", symbols + "<Formula><![CDATA[" + formula + "]]></Formula>");
}

std::string answerOf(const std::string &nodes)
{
    Camera camera{nodes};
    return answer(camera, "get F");
}

TEST(Formula, NestingAndLengthAreBoundedAndChainsAreFlat)
{
    const std::pair<std::string, const char *> rows[] = {
        {repeated(8000, "1+") + "1", "8001"},
        {repeated(4000, "0?1:") + "9", "9"},
        {repeated(127, "(") + "7" + repeated(127, ")"), "7"},
        {repeated(5000, "("), "Node 'F': Formula: nested deeper than 128 at character 129"},
        {repeated(5000, "1?"), "Node 'F': Formula: nested deeper than 128 at character 257"},
        {repeated(8192, "1+") + "1",
         "Node 'F': Formula: longer than 16384 characters, or than 65536 with its expressions"}};
    for (const auto &[formula, text] : rows)
        EXPECT_EQ(answerOf(knife(formula)), text) << formula.substr(0, 80);
}

/// Each uses the one before it four times.
std::string fourfold(int count)
{
    return "<Expression Name='E0'>1</Expression>" +
           repeated(count, "<Expression Name='E@'>E# + E# + E# + E#</Expression>");
}

TEST(Formula, ExpressionsThatUseOneAnotherAreBounded)
{
    EXPECT_EQ(answerOf(knife("E8 + E15", fourfold(15))), "1073807360") << "each is evaluated once";
    EXPECT_EQ(answerOf(knife("E40", fourfold(40))),
              "Node 'F': Formula: Expression 'E24' reaches more than 16 expressions deep");
    EXPECT_EQ(answerOf(knife("E10 + E20", fourfold(20))),
              "Node 'F': Formula: Expression 'E10' reaches more than 16 expressions deep")
        << "compiled in steps that are short enough";
    const std::string longConstant = element("Constant", "C", std::string(1'000'000, '0') + "1");
    EXPECT_EQ(answerOf(knife(repeated(8000, "C+") + "C", longConstant)), "8001") << "a constant is read once";
    EXPECT_EQ(answerOf(knife("E0+E1+E2+E3+E4", repeated(5, "<Expression Name='E#'>" + repeated(8000, "1+") +
                                                               "1</Expression>"))),
              "Node 'F': Formula: longer than 16384 characters, or than 65536 with its expressions");
}

/// Each knife uses the next one twice, and a device that changes gives one value.
TEST(Formula, AVariableIsAskedOnceAndHasOneValue)
{
    Camera doubling{
        repeated(60, "<IntSwissKnife Name='K#'><pVariable Name='X'>K@</pVariable>"
                     "<Expression Name='Y'>X</Expression><Formula>Y + X.Value</Formula></IntSwissKnife>") +
        constant("K60", "1")};
    EXPECT_EQ(doubling.value("K0"), std::int64_t{1} << 60);

    Camera live{element("IntReg", "Live", at(0, 1, "<Cachable>NoCache</Cachable>")) +
                knife("A = A && A.Max = 255 ? A : -1", element("pVariable", "A", "Live"))};
    EXPECT_EQ(answer(live, "reads F"), "1");
}

TEST(Formula, AllOfADescriptionAreCheckedAtOnce)
{
    const std::string nodes =
        knife("1 +") + element("SwissKnife", "Float", "<Formula>SIN(0.5) * PI + E()</Formula>") +
        element("SwissKnife", "Bad", "<Formula>COS 1</Formula>") +
        element("IntReg", "R",
                "<IntSwissKnife><Formula>Q</Formula></IntSwissKnife><Length>1</Length><pPort>Device</pPort>");
    GenICam_3_2_TVN::gcstring_vector errors;
    EXPECT_FALSE(Camera{nodes}.nodeMap._ParseSwissKnifes(&errors));
    ASSERT_EQ(errors.size(), 3U);
    EXPECT_STREQ(errors[0].c_str(), "Node 'F': Formula: ends where a value is expected at character 4");
    EXPECT_STREQ(errors[1].c_str(), "Node 'Bad': Formula: '1' where '(' is expected at character 5");
    EXPECT_STREQ(errors[2].c_str(), "Node 'R/IntSwissKnife': Formula: unknown name 'Q' at character 1");
    EXPECT_TRUE(Camera{knife("1")}.nodeMap._ParseSwissKnifes());

    const std::string text = description(nodes);
    EXPECT_EQ(refusal([&] {
                  GenApi_3_2_TVN::CNodeMapFactory{GenApi_3_2_TVN::ContentType_Xml, text.data(), text.size(),
                                                  GenApi_3_2_TVN::CacheUsage_Automatic, true};
              }),
              errors[0].c_str());
}

} // namespace

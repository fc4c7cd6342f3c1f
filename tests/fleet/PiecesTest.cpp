// SPDX-License-Identifier: MIT
// The pure pieces of torvane, each as a table.
#include "Identity.h"
#include "MacAddress.h"
#include "PasswordRules.h"
#include "PasswordsFile.h"
#include "Pattern.h"
#include "ProducerFile.h"
#include "Selection.h"
#include "ShownText.h"
#include "Status.h"
#include "Table.h"
#include "UsageError.h"

#include <gmock/gmock.h>

#include <QSysInfo>
#include <QTemporaryDir>
#include <fstream>
#include <sstream>

namespace fleet {

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

TEST(Pieces, OnlyTheStarStandsForMore)
{
    struct Row
    {
        const char *pattern;
        const char *text;
        bool isMatch;
    };
    for (const Row &row : {Row{"A1", "A1", true},
                           {"A1", "a1", false},
                           {"A1", "A12", false},
                           {"A*", "A", true},
                           {"*", "", true},
                           {"*1*2", "x1y12", true},
                           {"*1*2", "x1y", false},
                           {"A?", "A1", false},
                           {"[A]", "A", false},
                           {"**", "A", true},
                           {"a*b*c", "aXbYbZc", true},
                           {"a*b*c", "aXbYbZ", false}})
        EXPECT_EQ(matches(row.pattern, row.text), row.isMatch) << row.pattern << ' ' << row.text;
}

TEST(Pieces, MacAddressesInAnyUsualSpelling)
{
    for (const char *spelling :
         {"00:11:22:aa:BB:0c", "00-11-22-AA-BB-0C", "0011.22aa.bb0c", "001122AABB0C"}) {
        ASSERT_TRUE(parseMacAddress(spelling)) << spelling;
        EXPECT_EQ(formatMacAddress(*parseMacAddress(spelling)), "00:11:22:aa:bb:0c") << spelling;
    }
    for (const char *spelling : {"", "00:11:22:33:44", "00:11-22:33:44:55", "00:11:22:33:44:5g",
                                 "00:11:22:33:44:55:66", " 001122334455", "0:11:22:33:44:55"})
        EXPECT_FALSE(parseMacAddress(spelling)) << spelling;
}

TEST(Pieces, TextsThatSteerNothing)
{
    struct Row
    {
        std::string bytes;
        const char *shown;
    };
    for (const Row &row : {Row{"Camera 1", "Camera 1"},
                           {"\x1b[2J", "\\x1b[2J"},
                           {"a\nb\r\t\x7f", "a\\x0ab\\x0d\\x09\\x7f"},
                           {std::string("\0", 1), "\\x00"},
                           {"\xff\xc3", "\\xff\\xc3"},
                           {"\xc2\x9b", "\\xc2\\x9b"},
                           {"\u202eabc\u2066", "\\xe2\\x80\\xaeabc\\xe2\\x81\\xa6"},
                           {"a\u2028\u200bb", "a\\xe2\\x80\\xa8\\xe2\\x80\\x8bb"},
                           {"\xed\xa0\x80", "\\xed\\xa0\\x80"},
                           {"Größe 相机", "Größe 相机"}})
        EXPECT_EQ(shownText(row.bytes), row.shown);
}

TEST(Pieces, ColumnsStandBelowEachOtherAndFitTheTerminal)
{
    Table table({"NAME", "X", "LAST"});
    table.addRow({"相机", "1", "a"});
    table.addRow({"abcdefghijkl", "2", ""});
    EXPECT_EQ(table.text(0), "NAME          X  LAST\n相机          1  a\nabcdefghijkl  2\n");
    EXPECT_EQ(table.text(15), "NAME    X  LAST\n相机    1  a\nabcde…  2\n");
}

Camera cameraOf(const char *interface, const char *id, const char *serial, const char *model,
                std::optional<std::uint64_t> mac)
{
    Camera camera;
    camera.place = {"p", interface, id};
    camera.serial = serial;
    camera.model = model;
    camera.mac = mac;
    return camera;
}

TEST(Pieces, OneCameraOnTwoInterfacesAndTwoCamerasOfOneSerialNumber)
{
    struct Row
    {
        const char *what;
        Camera second;
        bool isDuplicate;
        bool isShared;
    };
    const Camera first = cameraOf("e0", "1", "S", "M", 7);
    for (const Row &row :
         {Row{"one MAC address", cameraOf("e1", "1", "S", "M", 7), true, false},
          {"one MAC address, another serial number", cameraOf("e1", "1", "T", "M", 7), true, false},
          {"two MAC addresses", cameraOf("e1", "1", "S", "M", 8), false, true},
          {"one is not known", cameraOf("e1", "1", "S", "M", {}), true, false},
          {"two models", cameraOf("e1", "1", "S", "N", {}), false, true},
          {"the same interface", cameraOf("e0", "2", "S", "M", {}), false, true},
          {"the same interface and MAC address", cameraOf("e0", "2", "S", "M", 7), false, true},
          {"no serial number", cameraOf("e1", "1", "", "M", {}), false, false}}) {
        std::vector<Camera> cameras{first, row.second};
        markDuplicates(cameras);
        EXPECT_FALSE(cameras[0].duplicateOf) << row.what;
        EXPECT_EQ(cameras[1].duplicateOf.has_value(), row.isDuplicate) << row.what;
        EXPECT_EQ(sharedSerials(cameras).contains("S"), row.isShared) << row.what;
    }
}

TEST(Pieces, OptionsNarrowAndTheirValuesAreAlternatives)
{
    const std::vector<Camera> cameras{cameraOf("e0", "1", "A1", "M", {}), cameraOf("e0", "2", "A2", "N", {}),
                                      cameraOf("e1", "3", "B1", "M", {})};
    Selection selection;
    EXPECT_TRUE(selection.choosesNothing());
    selection.serials = {"A*", "B1", "C9", "C9"};
    EXPECT_THAT(chooseByIdentity(selection, cameras), ElementsAre(0, 1, 2));
    EXPECT_THAT(unmatchedValues(selection, cameras), ElementsAre("--serial C9"));
    selection.models = {"M"};
    EXPECT_THAT(chooseByIdentity(selection, cameras), ElementsAre(0, 2));
    EXPECT_FALSE(isNamed(selection, cameras[0])) << "a pattern names nobody";
    EXPECT_TRUE(isNamed(selection, cameras[2]));
    selection.interfaces = {"e1"};
    EXPECT_THAT(chooseByIdentity(selection, cameras), ElementsAre(2));
}

std::string faultOf(const std::string &lines, bool needsNew = true)
{
    std::istringstream input(lines);
    try {
        PasswordsFile::read(input, "F", needsNew);
    } catch (const UsageError &error) {
        return error.what();
    }
    return {};
}

TEST(Pieces, APasswordsFileIsReadOrRefusedByItsLineNumber)
{
    std::istringstream input(
        "\xef\xbb\xbf{\"serial\": \"A1\", \"current\": \"old\", \"new\": \"n\\u00e4w\"}\r\n\n"
        "{\"serial\": \"A2\", \"new\": \"x\"}");
    const PasswordsFile file = PasswordsFile::read(input, "F", true);
    ASSERT_TRUE(file.find("A1") && file.find("A2"));
    EXPECT_EQ(file.find("A1")->next->reveal(), "näw");
    EXPECT_FALSE(file.find("A2")->current);
    EXPECT_FALSE(file.find("A3"));

    const std::string good = "{\"serial\": \"A1\", \"current\": \"s3cret\", \"new\": \"other\"}\n";
    for (const std::string &bad :
         {std::string("s3cret"), std::string("[\"s3cret\"]"),
          std::string(R"({"serial": 1, "new": "s3cret"})"),
          std::string(R"({"serial": "A2", "current": "s3cret"})"), good,
          std::string(R"({"serial": "A2", "new": ["s3cret"]})"),
          std::string(R"({"serial": "A2", "nwe": "s3cret"})"),
          "{\"serial\": \"A2\", \"new\": \"s3cret" + std::string(70000, 'x') + "\"}"}) {
        EXPECT_THAT(faultOf(good + bad), HasSubstr("F, line 2: ")) << bad.substr(0, 99);
        EXPECT_THAT(faultOf(good + bad), Not(HasSubstr("s3cret"))) << bad.substr(0, 99);
    }
    EXPECT_EQ(faultOf(R"({"serial": "A2", "current": "s3cret"})", false), "");
    std::string many;
    for (int i = 0; i < 23; ++i)
        many += "s3cret\n";
    EXPECT_THAT(faultOf(many), HasSubstr("line 19: no JSON object; line 20: no JSON object; and 3 more."));
    EXPECT_THAT(faultOf(std::string(100'001, '\n')), HasSubstr("more than 100,000 lines"));
}

Secret secret(const std::string &bytes)
{
    return Secret(std::string(bytes));
}

TEST(Pieces, NewPasswordsThatAreRefused)
{
    const Secret old = secret("the old one");
    for (const std::string &bad :
         {std::string("ab"), std::string(65, 'x'), std::string("a\0bc", 4), std::string("abc\n"),
          std::string("a\rbc"), std::string("mapleoak"), std::string("the old one")})
        EXPECT_TRUE(ruleFault(secret(bad), &old)) << bad;
    for (const std::string &good : {std::string("abc"), std::string(64, 'x'), std::string("the old one ")})
        EXPECT_FALSE(ruleFault(secret(good), &old)) << good;

    const Secret a = secret("a");
    const Secret b = secret("b");
    const Secret again = secret("a");
    const auto faults = sharedSecretFaults({&a, nullptr, &b, &again});
    ASSERT_EQ(faults.size(), 2U);
    EXPECT_EQ(faults[0].first, 0U);
    EXPECT_EQ(faults[1].first, 3U);
}

Outcome outcome(Result result, std::optional<ReasonCode> code = {})
{
    return {result, {}, code ? std::optional(Reason{*code, "", ""}) : std::nullopt, {}};
}

// The beginning of a library for either system, and its machine as both call it.
std::string library(bool isForWindows, std::string_view elf, std::string_view windows)
{
    if (isForWindows)
        return "MZ" + std::string(58, '\0') + std::string("\x40\0\0\0PE\0\0", 8).append(windows);
    return std::string("\x7f\x45LF").append(elf.substr(0, 1)) + std::string(13, '\0').append(elf.substr(1));
}

TEST(Pieces, WhyAProducerWasNotLoaded)
{
    const bool isWindows = QSysInfo::kernelType() == QLatin1String("winnt");
    const bool isArm = QSysInfo::buildCpuArchitecture() == QLatin1String("arm64");
    const auto x86 = [](bool isForWindows) { return library(isForWindows, {"\2\x3e\0", 3}, "\x64\x86"); };
    const auto arm = [](bool isForWindows) { return library(isForWindows, {"\2\xb7\0", 3}, "\x64\xaa"); };
    const std::string native = (isArm ? arm : x86)(isWindows);
    struct Row
    {
        const char *code; // as the loader gave it
        std::string file;
        ProducerState state;
        const char *advice;
    };
    const QTemporaryDir folder;
    const std::string path = folder.filePath("a.cti").toStdString();
    for (const Row &row : {
             Row{"words", "text", ProducerState::NoLibrary, "no library"},
             {"words", "MZ", ProducerState::NoLibrary, "no library"},
             {"193", library(isWindows, {"\1\x03\0", 3}, "\x4c\x01"), ProducerState::OtherBits,
              "64-bit driver"},
             {"193", x86(!isWindows), ProducerState::NoLibrary, isWindows ? "for Linux" : "for Windows"},
             {"words", (isArm ? x86 : arm)(isWindows), ProducerState::NotLoaded,
              isArm ? "for x86_64: install the one for arm64" : "for arm64: install the one for x86_64"},
             {"lib.so: not found", native, ProducerState::NotLoaded, "names what is missing"},
             {"5", native, ProducerState::NotLoaded, "denies access"},
             {"126", native, ProducerState::NotLoaded, "needs is missing"},
             {"127", native, ProducerState::NotLoaded, "wrong version"},
             {"193", native, ProducerState::NotLoaded, "damaged or not 64-bit"},
             {"1265", native, ProducerState::NotLoaded, "names what is missing"},
         }) {
        std::ofstream(path, std::ios::binary) << row.file;
        Producer producer{.file = path, .failure = {}, .genTLVersion = {}, .vendor = {}, .version = {}};
        producer.failure = {
            ReasonCode::Producer, "Loading cti " + path + " failed! Code: " + row.code + ".", {}};
        const ProducerVerdict verdict = judgeProducer(producer);
        EXPECT_STREQ(wordOf(verdict.state), wordOf(row.state)) << row.code << ": " << row.advice;
        EXPECT_THAT(verdict.advice, HasSubstr(row.advice)) << row.code;
    }
}

TEST(Pieces, TheStatusOfARun)
{
    const Outcome done = outcome(Result::Done);
    const Outcome held = outcome(Result::Failed, ReasonCode::Held);
    const Outcome wrong = outcome(Result::Failed, ReasonCode::WrongPassword);
    const Outcome skipped = outcome(Result::Skipped, ReasonCode::NoLock);
    struct Row
    {
        const char *what;
        std::vector<Outcome> outcomes;
        bool producerFailed;
        int status;
    };
    for (const Row &row : {Row{"nothing", {}, false, 0},
                           {"done", {done, outcome(Result::Unchanged), skipped}, false, 0},
                           {"skipped alone", {skipped}, false, 0},
                           {"a producer failed", {done}, true, 1},
                           {"in part", {done, held}, false, 3},
                           {"in part beside a failed producer", {done, held}, true, 3},
                           {"the vault was not told", {outcome(Result::Done, ReasonCode::Vault)}, false, 3},
                           {"all held", {held, held, skipped}, false, 5},
                           {"all wrong", {wrong, skipped}, false, 7},
                           {"reasons differ", {held, wrong}, false, 1},
                           {"refused", {done, outcome(Result::Refused, ReasonCode::Rule)}, false, 2},
                           {"not proved", {outcome(Result::NotProved, ReasonCode::Unlocked)}, false, 1}})
        EXPECT_EQ(static_cast<int>(summarise(row.outcomes, row.producerFailed).status), row.status)
            << row.what;
}

} // namespace

} // namespace fleet

// SPDX-License-Identifier: MIT
// Fuzzes what a producer tells of the description's place. The first line of an input is the URL; each other line
// answers one query that the URL answers otherwise, or has it fail:
//     scheme 0
//     address 4096
//     length 200
//     name camera.xml
//     code -1004
#include "CNodeMapFactory.h"
#include "FuzzTarget.h"
#include "GenTL_Interface.h"
#include "GenTL_PortInterface.h"
#include "Script.h"

#include <algorithm>
#include <new>
#include <regex>
#include <sstream>

using namespace GenICam_Interfaces;

/// A length that no memory holds gives null, as it does without the sanitizer; less is enough to try that.
extern "C" const char *__asan_default_options()
{
    return "allocator_may_return_null=1:max_allocation_size_mb=64";
}

namespace {

constexpr const char *description =
    "<RegisterDescription ModelName='M' xmlns='http://www.genicam.org/GenApi/Version_1_1'>"
    "<Port Name='Device'/></RegisterDescription>";

void answer(Script &script, const std::string &line)
{
    std::istringstream words{line};
    std::string query;
    std::uint64_t number = 0;
    words >> query >> std::ws;
    if (query == "name")
        script.urlAnswers[URL_INFO_FILENAME] = std::string{std::istreambuf_iterator<char>{words}, {}};
    else if (!(words >> number))
        return;
    else if (query == "scheme")
        script.urlAnswers[URL_INFO_SCHEME] = static_cast<std::int32_t>(number);
    else if (query == "address")
        script.urlAnswers[URL_INFO_FILE_REGISTER_ADDRESS] = number;
    else if (query == "length")
        script.urlAnswers[URL_INFO_FILE_SIZE] = number;
    else if (query == "code")
        script.urlCode = static_cast<GC_ERROR>(number);
}

/// Plays the producer of \p bytes.
/// \return the URL
std::string play(Script &script, const std::string &bytes)
{
    script = Script{};
    script.memory = description;
    std::istringstream lines{bytes};
    std::string url;
    std::getline(lines, url);
    script.urlAnswers[URL_INFO_URL] = url;
    for (std::string line; std::getline(lines, line);)
        answer(script, line);
    return url;
}

/// A URL as the standard writes it must have led to a read of that place, unless no description is as long as it says:
/// then nothing is read.
void requireReadOf(const std::string &url, const Script &script)
{
    static const std::regex standard{
        "local:/{0,3}[a-zA-Z0-9._-]{1,200};([0-9a-fA-F]{1,16});([0-9a-fA-F]{1,16})"
        "(\\?[a-zA-Z0-9=._-]{0,200})?"};
    std::smatch parts;
    if (script.urlAnswers.size() > 1 || script.urlCode == GC_ERR_SUCCESS ||
        !std::regex_match(url, parts, standard))
        return;
    const auto number = [&](std::size_t part) { return std::stoull(parts[part].str(), nullptr, 16); };
    if (number(2) == 0)
        return;
    const std::string read =
        "GCReadPort(7, " + std::to_string(number(1)) + ", " + std::to_string(number(2)) + ")";
    const int reads = number(2) > GenApi_3_2_TVN::largestDescription ? 0 : 1;
    require(std::ranges::count(script.calls, read) == reads, "not " + std::to_string(reads) + " of " + read);
}

void open(GenTL_Interface &producer)
{
    const auto port = reinterpret_cast<PORT_HANDLE>(7);
    const GenTL_PortInterface opened{port, &producer, 0};
    require(opened.getNode("Device") != nullptr, "the description has lost its port");
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    static GenTL_Interface producer{scriptedProducer()};
    Script &script = *torvaneTestScript();
    const std::string url = play(script, {reinterpret_cast<const char *>(bytes), size});
    try {
        open(producer);
    } catch (const std::runtime_error &failure) {
        require(*failure.what() != '\0', "an error without words");
    } catch (const std::bad_alloc &) {
        return 0; // before the read
    }
    requireReadOf(url, script);
    return 0;
}

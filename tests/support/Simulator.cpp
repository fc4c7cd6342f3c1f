// SPDX-License-Identifier: MIT
#include "Simulator.h"

#include "System.h"

#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <sstream>

namespace fs = std::filesystem;

namespace {

// As the search names files, and with the drive that a test may leave.
const fs::path producer = fs::absolute(TORVANE_SIM_CTI).make_preferred();
const fs::path variants = fs::absolute(TORVANE_SIM_VARIANTS).make_preferred();

} // namespace

const char *const Simulator::oneCamera = R"toml(
[[interface]]
id = "sim-eth0"
name = "Simulated Ethernet"
type = "GEV"

[[interface.camera]]
id = "sim-1"
model = "SimCam G5"
serial = "G5-0001"
ip = "192.168.0.11"
mac = "00:11:22:33:44:01"
lock = "locked"
password = "hunter22"
)toml";

Simulator::Simulator(std::string_view toml)
    : config("TORVANE_SIM_CONFIG", configPath().string()),
      state("TORVANE_SIM_STATE", statePath().string()),
      log("TORVANE_SIM_LOG", logPath().string())
{
    configure(toml);
}

void Simulator::configure(std::string_view newToml)
{
    toml = newToml;
    const std::int64_t before = fs::exists(configPath()) ? testsystem::changeTime(configPath()) : 0;
    do { // the clock of the file system has its steps
        std::ofstream(configPath()) << toml;
    } while (testsystem::changeTime(configPath()) == before);
}

void Simulator::failNth(std::string_view function, std::int32_t code, std::uint64_t n, std::uint64_t count,
                        std::string_view conditions)
{
    std::string rule = "\n[[failure]]\nfunction = \"" + std::string(function) + "\"\n";
    rule += "code = " + std::to_string(code) + "\nfirst = " + std::to_string(n) + "\n";
    rule += "count = " + std::to_string(count) + "\n" + std::string(conditions);
    configure(toml + rule);
}

std::vector<std::string> Simulator::calls(std::string_view function) const
{
    std::vector<std::string> lines;
    std::ifstream file(logPath());
    for (std::string line; std::getline(file, line);)
        if (function.empty() || line.starts_with(std::string(function) + '('))
            lines.push_back(line);
    return lines;
}

void Simulator::clearLog()
{
    if (fs::exists(logPath()))
        fs::resize_file(logPath(), 0);
}

std::vector<std::string> Simulator::portTraffic() const
{
    static const std::regex access(R"(GC(Read|Write)Port\([^,]*, (0x5000[0-9a-f]{4}), \d+\) = 0 \[(.*)\])");
    std::vector<std::string> traffic;
    for (const std::string &line : calls()) {
        std::smatch match;
        if (std::regex_match(line, match, access))
            traffic.push_back((match[1] == "Read" ? "read " : "write ") + match[2].str() + ' ' +
                              match[3].str());
    }
    return traffic;
}

std::string Simulator::lockTraffic() const
{
    static const std::map<std::string, std::string> words{{"read 0x50001000 00 00 00 00", "unlocked"},
                                                          {"read 0x50001000 01 00 00 00", "locked"},
                                                          {"read 0x50001004 00 00 00 00", "default"},
                                                          {"read 0x50001004 01 00 00 00", "user"},
                                                          {"write 0x50001008 01 00 00 00", "LOCK"},
                                                          {"write 0x50001008 80 00 00 00", "RESET"},
                                                          {"write 0x50002000", "SET:"},
                                                          {"write 0x50002040", "TRY:"}};
    std::string traffic;
    for (const std::string &access : portTraffic()) {
        traffic += traffic.empty() ? "" : " ";
        if (const auto whole = words.find(access); whole != words.end()) {
            traffic += whole->second;
            continue;
        }
        constexpr std::size_t prefix = std::string_view("write 0x50002000").size();
        traffic += words.at(access.substr(0, prefix));
        std::istringstream bytes(access.substr(prefix));
        for (int byte = 0; bytes >> std::hex >> byte && byte != 0;)
            traffic += static_cast<char>(byte);
    }
    return traffic;
}

int Simulator::openHandles() const
{
    static const std::set<std::string> opening{"TLOpen", "TLOpenInterface", "IFOpenDevice"};
    static const std::set<std::string> closing{"TLClose", "IFClose", "DevClose"};
    int open = 0;
    for (const std::string &line : calls()) {
        const std::string function = line.substr(0, line.find('('));
        if (line.find(") = 0") != std::string::npos)
            open += opening.contains(function) - closing.contains(function);
    }
    return open;
}

std::string Simulator::cti()
{
    return producer.string();
}

std::string Simulator::cti(std::string_view variant)
{
    const std::string name(variant);
    return (variants / name / (name + ".cti")).string();
}

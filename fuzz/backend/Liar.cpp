// SPDX-License-Identifier: MIT
#include "Liar.h"

#include "FuzzTarget.h"
#include "PasswordRegisters.h"
#include "Reconciliation.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstring>

namespace {

// A session ends, however long the lists are: from then on the producer only refuses.
constexpr int mostCalls = 3'000;
const Answer refusal{.code = GC_ERR_TIMEOUT};

constexpr std::size_t longestText = 2'048; // bytes; the largest buffer has 1028

constexpr std::uint64_t descriptionAddress = 0x10000;
const std::string description = R"(<?xml version="1.0"?>
<RegisterDescription ModelName="Liar" xmlns="http://www.genicam.org/GenApi/Version_1_1">
<Port Name="Device"/>
<Integer Name="GevCurrentIPAddress"><pValue>IP</pValue></Integer>
<Integer Name="GevMACAddress"><pValue>MAC</pValue></Integer>
<IntReg Name="IP"><Address>0x10</Address><Length>4</Length><AccessMode>RW</AccessMode><pPort>Device</pPort></IntReg>
<IntReg Name="MAC"><Address>0x20</Address><Length>8</Length><AccessMode>RW</AccessMode><pPort>Device</pPort></IntReg>
<StringReg Name="DeviceFirmwareVersion"><Address>0x30</Address><Length>16</Length><AccessMode>RW</AccessMode>
<pPort>Device</pPort></StringReg>
<FloatReg Name="GainReg"><Address>0x40</Address><Length>8</Length><AccessMode>RW</AccessMode><pPort>Device</pPort>
</FloatReg>
<Float Name="Gain"><pValue>GainReg</pValue></Float>
<Boolean Name="Flag"><pValue>IP</pValue></Boolean>
<Command Name="Start"><pValue>IP</pValue><CommandValue>1</CommandValue></Command>
</RegisterDescription>
)";

// All other calls are answered by success, with nothing else.
constexpr std::string_view honestLines = R"(GCGetInfo* 1 number 1 text Liar
GCGetInfo* 3 text 1.0
GCGetInfo* 9 number 1
GCGetInfo* 10 number 5
TLOpen* number 1
TLGetNumInterfaces* number 1
TLGetInterfaceID* text eth0
TLOpenInterface* number 2
IFGetInfo* 1 text Port one
IFGetNumDevices* number 1
IFGetDeviceID* text A
IFGetDeviceInfo* 2 text SimCam
IFGetDeviceInfo* 3 text GEV
IFGetDeviceInfo* 4 text Camera A
IFGetDeviceInfo* 5 number 1
IFGetDeviceInfo* 6 text Door
IFGetDeviceInfo* 7 text G5-0001
IFOpenDevice* number 3
DevGetPort* number 4
DevGetInfo* 3 text GEV
GCGetPortInfo* 7 number 1
GCGetPortInfo* 8 number 1
GCGetPortInfo* 12 text Device
GCGetPortURLInfo* 0 text local:camera.xml;10000;1000
GCGetPortURLInfo* code -1003
GCGetLastError* text the link is down)";

// What opens and what closes it.
constexpr std::array<std::pair<std::string_view, std::string_view>, 4> openers{
    {{"GCInitLib", "GCCloseLib"},
     {"TLOpen", "TLClose"},
     {"TLOpenInterface", "IFClose"},
     {"IFOpenDevice", "DevClose"}}};
// What counts a list and what asks for its entries.
constexpr std::array<std::pair<std::string_view, std::string_view>, 2> counters{
    {{"TLGetNumInterfaces", "TLGetInterfaceID"}, {"IFGetNumDevices", "IFGetDeviceID"}}};

template <class Value>
std::string bytesOf(Value value)
{
    std::string bytes(sizeof value, '\0');
    std::memcpy(bytes.data(), &value, sizeof value);
    return bytes;
}

} // namespace

std::string_view Words::next(char separator)
{
    rest_.remove_prefix(std::min(rest_.find_first_not_of(separator), rest_.size()));
    const std::string_view word = rest_.substr(0, rest_.find(separator));
    rest_.remove_prefix(std::min(word.size() + 1, rest_.size()));
    return word;
}

std::optional<std::uint64_t> Words::nextNumber()
{
    const std::string_view before = rest_;
    std::string_view word = next();
    const bool isNegative = word.starts_with('-');
    word.remove_prefix(isNegative ? 1 : 0);
    const bool isHexadecimal = word.starts_with("0x");
    word.remove_prefix(isHexadecimal ? 2 : 0);
    std::uint64_t number = 0;
    if (std::from_chars(word.data(), word.data() + word.size(), number, isHexadecimal ? 16 : 10).ec ==
        std::errc{})
        return isNegative ? std::uint64_t{0} - number : number;
    rest_ = before;
    return std::nullopt;
}

Liar Liar::honest()
{
    Liar result;
    Words lines{honestLines};
    for (std::string_view line = lines.next('\n'); !line.empty(); line = lines.next('\n'))
        result.tell(line);
    return result;
}

void Liar::tell(std::string_view text)
{
    Words line{text};
    std::string_view function = line.next();
    const bool isForAlways = function.ends_with('*');
    function.remove_suffix(isForAlways ? 1 : 0);
    Lies &place = lies[{function, line.nextNumber().value_or(AnyCall)}];
    Answer answer;
    std::size_t times = 1;
    for (std::string_view key = line.next(); !key.empty(); key = line.next()) {
        if (key == "text" || key == "bytes") {
            answer.content.clear();
            for (; times > 0 && answer.content.size() < longestText; --times)
                answer.content += line.rest();
            if (key == "text")
                answer.content += '\0';
            break;
        }
        const std::optional<std::uint64_t> number = line.nextNumber();
        if (!number)
            continue;
        if (key == "code")
            answer.code = static_cast<GC_ERROR>(*number);
        else if (key == "number")
            answer.content = bytesOf(answer.number = *number);
        else if (key == "size")
            answer.size = *number;
        else if (key == "times")
            times = *number;
    }
    if (isForAlways)
        place.always = std::move(answer);
    else
        place.once.push_back(std::move(answer));
}

const Answer &Liar::answer(std::string_view function, std::uint64_t selector)
{
    if (++calls > mostCalls)
        return keepAccount(function, refusal), refusal;
    const Answer *answer = lie({function, selector});
    if (!answer)
        answer = lie({function, AnyCall});
    if (!answer)
        answer = &honestAnswer({function, selector});
    keepAccount(function, *answer);
    return *answer;
}

const Answer *Liar::lie(const Call &call)
{
    const auto found = lies.find(call);
    if (found == lies.end())
        return nullptr;
    Lies &place = found->second;
    if (place.told < place.once.size())
        return &place.once[place.told++];
    return place.always ? &*place.always : nullptr;
}

const Answer &Liar::honestAnswer(const Call &call)
{
    static Liar truth = honest();
    static const Answer nothing;
    if (call.first == "GCReadPort") {
        ofRegister.content = read(call.second);
        return ofRegister;
    }
    const Answer *answer = truth.lie(call);
    if (!answer)
        answer = truth.lie({call.first, AnyCall});
    return answer ? *answer : nothing;
}

Liar::Registers Liar::lockedByHunter22()
{
    return {{RegLockState.address, bytesOf(LockStateLocked)},
            {RegPasswordState.address, bytesOf(PasswordStateDefault + 1)},
            {RegNewPassword, "hunter22"}};
}

std::string Liar::read(std::uint64_t address) const
{
    if (address == descriptionAddress)
        return description;
    const auto found = registers.find(address);
    return found == registers.end() ? std::string(16, '\0') : found->second;
}

void Liar::write(std::uint64_t address, std::string_view bytes)
{
    if (address == RegCommand.address)
        registers[RegLockState.address] = bytesOf(LockStateLocked);
    else if (address == RegUnlockPassword && bytes == registers[RegNewPassword])
        registers[RegLockState.address] = bytesOf(LockStateLocked - 1);
    else
        registers[address] = bytes;
}

void Liar::keepAccount(std::string_view function, const Answer &answer)
{
    for (const auto &[opener, closer] : openers) {
        if (function == opener && answer.code == GC_ERR_SUCCESS)
            ++open[closer];
        if (function == closer)
            require(--open[closer] >= 0, std::string(closer) + " of what is not open");
    }
    for (const auto &[counter, query] : counters) {
        if (function == counter)
            lengths[query] = static_cast<std::uint32_t>(answer.number);
        if (function == query)
            require(lengths[query] <= LongestList, std::string(query) + " of an absurd list");
    }
}

void Liar::requireAllClosed() const
{
    for (const auto &[closer, count] : open)
        require(count == 0, "no " + std::string(closer));
}

// SPDX-License-Identifier: MIT
// See the header.
#include "Questionnaire.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstring>
#include <istream>
#include <iterator>
#include <ostream>
#include <sstream>

namespace {

std::string hexadecimal(std::uint64_t number, int digits)
{
    std::array<char, 20> text{};
    std::snprintf(text.data(), text.size(), "%0*llx", digits, static_cast<unsigned long long>(number));
    return text.data();
}

bool contains(const Memory &memory, std::uint64_t address, std::size_t length)
{
    for (std::size_t place = 0; place < length; ++place) {
        if (!memory.contains(address + place))
            return false;
    }
    return true;
}

} // namespace

std::string Question::text() const
{
    return action + " " + kind + " " + node + (value.empty() ? "" : " " + value);
}

/// Lines of memory ("@1000 0a0b"), of questions, one that is empty, and the description.
void write(std::ostream &out, const Questionnaire &questionnaire)
{
    for (const auto &[address, byte] : questionnaire.memory)
        out << '@' << hexadecimal(address, 1) << ' ' << hexadecimal(byte, 2) << '\n';
    for (const Question &question : questionnaire.questions)
        out << question.text() << '\n';
    out << '\n' << questionnaire.description;
}

Questionnaire readQuestionnaire(std::istream &in)
{
    Questionnaire result;
    std::string line;
    while (std::getline(in, line) && !line.empty()) {
        std::istringstream words{line};
        if (line.front() == '@') {
            std::string bytes;
            words.ignore() >> std::hex;
            std::uint64_t address = 0;
            words >> address >> bytes;
            for (std::size_t place = 0; place + 1 < bytes.size(); place += 2)
                result.memory[address++] =
                    static_cast<std::uint8_t>(std::stoul(bytes.substr(place, 2), nullptr, 16));
            continue;
        }
        Question question;
        words >> question.action >> question.kind >> question.node >> std::ws;
        std::getline(words, question.value);
        result.questions.push_back(std::move(question));
    }
    result.description.assign(std::istreambuf_iterator<char>{in}, {});
    return result;
}

std::string answerOf(std::int64_t value)
{
    return "integer " + std::to_string(value);
}

std::string answerOf(double value)
{
    if (std::isnan(value))
        return "float nan";
    std::array<char, 32> text{};
    const auto end = std::to_chars(text.begin(), text.end(), value + 0.0).ptr; // minus zero becomes zero
    return "float " + std::string{text.begin(), end};
}

std::string answerOf(bool value)
{
    return value ? "boolean true" : "boolean false";
}

std::string answerOf(std::string_view text)
{
    std::string quoted = "text \"";
    for (const char byte : text) {
        const bool isPlain = byte >= ' ' && byte <= '~' && byte != '"' && byte != '\\';
        quoted += isPlain ? std::string(1, byte) : "\\" + hexadecimal(static_cast<std::uint8_t>(byte), 2);
    }
    return quoted + '"';
}

std::string answerOfWrite(const Memory &before, const Memory &after)
{
    std::string answer = "wrote";
    for (const auto &[address, byte] : after) {
        if (before.at(address) != byte)
            answer += " " + hexadecimal(address, 1) + "=" + hexadecimal(byte, 2);
    }
    return answer;
}

bool load(const Memory &memory, std::uint64_t address, std::size_t length, void *buffer)
{
    if (!contains(memory, address, length))
        return false;
    for (std::size_t place = 0; place < length; ++place)
        static_cast<std::uint8_t *>(buffer)[place] = memory.at(address + place);
    return true;
}

bool store(Memory &memory, std::uint64_t address, std::size_t length, const void *buffer)
{
    if (!contains(memory, address, length))
        return false;
    for (std::size_t place = 0; place < length; ++place)
        memory[address + place] = static_cast<const std::uint8_t *>(buffer)[place];
    return true;
}

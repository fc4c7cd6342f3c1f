// SPDX-License-Identifier: MIT
// See the header.
#include "Questionnaire.h"

#include <array>
#include <charconv>
#include <cmath>
#include <istream>
#include <iterator>
#include <ostream>
#include <sstream>

/// Lines of memory ("@1000 0a0b"), of questions, one that is empty, and the description.
void write(std::ostream &out, const Questionnaire &questionnaire)
{
    out << std::hex;
    for (const auto &[address, byte] : questionnaire.memory)
        out << '@' << address << ' ' << (byte < 16 ? "0" : "") << unsigned{byte} << '\n';
    for (const Question &question : questionnaire.questions)
        out << question.text() << '\n';
    out << '\n' << questionnaire.description;
}

Questionnaire readQuestionnaire(std::istream &in)
{
    Questionnaire result;
    for (std::string line; std::getline(in, line) && !line.empty();) {
        std::istringstream words{line};
        if (line.front() != '@') {
            Question question;
            words >> question.action >> question.node >> std::ws;
            std::getline(words, question.value);
            result.questions.push_back(question);
            continue;
        }
        std::uint64_t address = 0;
        std::string bytes;
        words.ignore() >> std::hex >> address >> bytes;
        for (std::size_t place = 0; place < bytes.size(); place += 2)
            result.memory[address++] =
                static_cast<std::uint8_t>(std::stoul(bytes.substr(place, 2), nullptr, 16));
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
    std::to_chars(text.begin(), text.end(), value + 0.0); // minus zero becomes zero
    return std::string{"float "} + text.data();
}

std::string answerOf(bool value)
{
    return value ? "boolean true" : "boolean false";
}

std::string answerOf(std::string_view text)
{
    std::ostringstream quoted;
    quoted << "text \"" << std::hex;
    for (const char byte : text) {
        if (byte >= ' ' && byte <= '~' && byte != '"' && byte != '\\')
            quoted << byte;
        else
            quoted << '\\' << unsigned{static_cast<std::uint8_t>(byte)} << ';';
    }
    return quoted.str() + '"';
}

std::string answerOfWrite(const Memory &before, const Memory &after)
{
    std::ostringstream answer;
    answer << "wrote" << std::hex;
    for (const auto &[address, byte] : after) {
        if (before.at(address) != byte)
            answer << ' ' << address << '=' << unsigned{byte};
    }
    return answer.str();
}

bool load(const Memory &memory, std::uint64_t address, std::size_t length, void *buffer)
{
    for (std::size_t place = 0; place < length; ++place) {
        const auto byte = memory.find(address + place);
        if (byte == memory.end())
            return false;
        static_cast<std::uint8_t *>(buffer)[place] = byte->second;
    }
    return true;
}

bool store(Memory &memory, std::uint64_t address, std::size_t length, const void *buffer)
{
    std::vector<std::uint8_t> present(length);
    if (!load(memory, address, length, present.data()))
        return false;
    for (std::size_t place = 0; place < length; ++place)
        memory[address + place] = static_cast<const std::uint8_t *>(buffer)[place];
    return true;
}

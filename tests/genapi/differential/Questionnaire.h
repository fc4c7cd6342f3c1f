// SPDX-License-Identifier: MIT
// What the two sides of the comparison share: a description with the memory of its device, the questions about
// it, and the form of an answer. The oracle lives in a process of its own, so all of it also exists as text.
#pragma once

#include <cstdint>
#include <iosfwd>
#include <map>
#include <string>
#include <string_view>
#include <vector>

/// The memory of a device, byte by byte; an access to any other address fails.
using Memory = std::map<std::uint64_t, std::uint8_t>;

/// One line each in the text form, "set Gain 12".
struct Question
{
    /// "get", "min", "max", "inc", "set" or "mode"; or "leave": set and read, then the device takes its memory back, and
    /// what is read by then is the answer.
    std::string action;
    std::string node;
    std::string value; ///< to be set: an integer, a float as %.17g, a text, "true", or the name of an entry

    bool isWrite() const { return action == "set" || action == "leave"; }
    std::string text() const { return action + " " + node + (value.empty() ? "" : " " + value); }
};

struct Questionnaire
{
    std::string description;
    Memory memory;
    std::vector<Question> questions;
};

/// Each answer is one line. One that begins with this is a refusal, whose words are each side's own.
inline constexpr std::string_view refusal = "error";

void write(std::ostream &out, const Questionnaire &questionnaire);
Questionnaire readQuestionnaire(std::istream &in);

// The forms of an answer. Floats are the shortest decimal numbers that give the same double again, but what has no
// value to tell apart, the signs of zero and of NaN, is left out. Texts are quoted.
std::string answerOf(std::int64_t value);
std::string answerOf(double value);
std::string answerOf(bool value);
std::string answerOf(std::string_view text);
/// What a write did: "wrote 1000=a 1001=b", the bytes that differ from before.
std::string answerOfWrite(const Memory &before, const Memory &after);

/// The answer to a question that writes, by \p set, which does so, and \p get, which reads the node.
template <class Set, class Get>
std::string answerToWrite(const Question &question, Memory &memory, Set set, Get get)
{
    const Memory before = memory;
    set();
    if (question.action == "set")
        return answerOfWrite(before, memory);
    get();
    memory = before;
    return get();
}

/// Copies \p length bytes at \p address between the memory and \p buffer.
/// \return false when some of them are not there; then the memory is unchanged
bool load(const Memory &memory, std::uint64_t address, std::size_t length, void *buffer);
bool store(Memory &memory, std::uint64_t address, std::size_t length, const void *buffer);

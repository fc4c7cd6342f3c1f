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

/// One line each in the text form: the action, the kind of the node's interface, the node and, where there is
/// one, the value to be set.
struct Question
{
    std::string action; ///< "get", "min", "max", "inc", "set", "run", "mode"
    std::string kind;   ///< "integer", "float", "boolean", "string", "enumeration", "register", "command"
    std::string node;
    std::string value; ///< an integer, a float as %.17g, a text, or the name of an entry

    std::string text() const;
};

/// All that both sides are given.
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
/// What a write did: "wrote 1000=0a 1001=0b", the bytes that differ from before.
std::string answerOfWrite(const Memory &before, const Memory &after);

/// Copies \p length bytes at \p address between the memory and \p buffer.
/// \return false when some of them are not there; then nothing has been copied
bool load(const Memory &memory, std::uint64_t address, std::size_t length, void *buffer);
bool store(Memory &memory, std::uint64_t address, std::size_t length, const void *buffer);

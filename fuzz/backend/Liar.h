// SPDX-License-Identifier: MIT
// A producer that lies: one honest camera on one interface, but for what it is told to answer. Each line is such a lie,
// for the next call that it fits:
//     IFGetNumDevices number 4294967295
//     IFGetDeviceID 1 size 4294967296 times 300 text A
//     GCReadPort* 0x50001000 code -1010
// The number behind the function chooses among its calls: a command, an index or an address. With a star the lie is
// told each time. Several lies for one call are told one after the other, and then the truth again.
//
// It never writes behind the buffer that it is given, and frees nothing. Anything else it may do.
#pragma once

#include "GenTL.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// Takes a text apart, at its blanks or another character.
class Words
{
public:
    explicit Words(std::string_view text) : rest_(text) {}

    /// The next word; empty at the end.
    std::string_view next(char separator = ' ');
    /// Passes over the next word if it is a number: decimal, or hexadecimal with 0x before it.
    std::optional<std::uint64_t> nextNumber();
    /// All that follows.
    std::string_view rest() const { return rest_; }

private:
    std::string_view rest_;
};

/// In the order in which a line has them, each behind its name: "code -1010", "number 1" (which is also the content),
/// "size 1", "times 300" (of the text), "text A" (with a zero behind it) or "bytes A" up to the end of the line.
struct Answer
{
    GC_ERROR code = GC_ERR_SUCCESS;
    std::uint64_t number = 0;          ///< a count, a handle, a flag or a data type
    std::optional<std::size_t> size{}; ///< told instead of that of the content
    std::string content{};             ///< of a buffer, and cut to the size of that
};

/// The modules call what is virtual, by the object alone: of the program they know one symbol.
class Liar
{
public:
    Liar() = default;
    Liar(const Liar &) = default;
    Liar &operator=(const Liar &) = delete;
    virtual ~Liar() = default;

    /// \param line  as above; outlives this object
    void tell(std::string_view line);

    /// The answer to a call. Valid until the next one.
    /// \param function  a literal
    virtual const Answer &answer(std::string_view function, std::uint64_t selector = AnyCall);

    /// Gives \p bytes to the honest camera.
    virtual void write(std::uint64_t address, std::string_view bytes);

    /// Ends the process if anything is open.
    void requireAllClosed() const;

private:
    static constexpr std::uint64_t AnyCall = ~std::uint64_t{0};
    using Registers = std::map<std::uint64_t, std::string>;
    using Call = std::pair<std::string_view, std::uint64_t>;
    struct Lies
    {
        std::vector<Answer> once{};
        std::size_t told = 0; // of those
        std::optional<Answer> always{};
    };

    static Registers lockedByHunter22();
    static Liar honest();
    const Answer *lie(const Call &call);
    const Answer &honestAnswer(const Call &call);
    std::string read(std::uint64_t address) const;
    void keepAccount(std::string_view function, const Answer &answer);

    std::map<Call, Lies> lies;
    Answer ofRegister;
    Registers registers = lockedByHunter22();
    std::map<std::string_view, int> open;              // by the function that closes it
    std::map<std::string_view, std::uint32_t> lengths; // of lists, by the function that asks for an entry
    int calls = 0;
};

/// The liar of this session, which the modules of the producer look up by this name.
extern "C" Liar *torvaneFuzzLiar();

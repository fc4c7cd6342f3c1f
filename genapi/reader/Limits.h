// SPDX-License-Identifier: MIT
// What the layer accepts of a description, in one place. Descriptions come from the network: each limit lies
// far above what real cameras carry and keeps time, memory and stack bounded for the rest. The size of a description is
// published, in CNodeMapFactory.h, for those who fetch one.
#pragma once

#include <cstddef>
#include <cstdint>

namespace GenApi_3_2_TVN::limits {

/// Files in an archive, and records that end one. The archive's reader takes time with the square of both.
inline constexpr std::size_t archiveFiles = 256;
inline constexpr std::size_t archiveEnds = 16;

/// Bytes of a name or a text of the description in a message, which shows up to eight of them and their values, and of
/// a whole message.
inline constexpr std::size_t shownNameLength = 64;
inline constexpr std::size_t shownItems = 8;
inline constexpr std::size_t messageLength = 1024;

/// Bytes of a name that is taken apart at its underscores.
inline constexpr std::size_t entryNameLength = 1024;

/// Nodes that lead to one another in a row, each waiting for the next on the stack.
inline constexpr std::size_t chainLength = 100;

/// Work for one call from outside, in instructions of formulas and as much for each node that is visited, so that
/// chains which fork do not grow into years.
inline constexpr std::size_t stepsPerCall = 500'000;
inline constexpr std::size_t stepsPerNode = 50;

/// Bytes of one register, of one whose bytes are kept for later reads, and of all that one node map keeps, with the
/// number of places where they lie: a description may have a million registers, and a computed address leads anywhere.
inline constexpr std::int64_t registerLength = std::int64_t{16} << 20;
inline constexpr std::size_t cachedRegisterLength = std::size_t{64} << 10;
inline constexpr std::size_t cachedLength = std::size_t{16} << 20;
inline constexpr std::size_t cachedPlaces = std::size_t{64} << 10;

/// What each entry of a StructReg takes over from it, and so reads and holds for itself: children, of which those with
/// equal tags count once unless they are parts of the address, those parts, and the bytes of all that.
inline constexpr std::size_t structRegChildren = 64;
inline constexpr std::size_t structRegAddressParts = 8;
inline constexpr std::size_t structRegLength = std::size_t{8} << 10;

/// Bytes of one formula text, and of all texts that one formula leads to.
inline constexpr std::size_t formulaLength = std::size_t{16} << 10;
inline constexpr std::size_t formulaTotalLength = std::size_t{64} << 10;

/// Parentheses, signs, powers and branches within one another in a formula, the operand in the middle counted
/// in, and expressions that lead to one another.
inline constexpr std::size_t formulaNesting = 128;
inline constexpr std::size_t expressionNesting = 16;

} // namespace GenApi_3_2_TVN::limits

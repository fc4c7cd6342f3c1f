// SPDX-License-Identifier: MIT
// Standard output and standard input as the back end uses them. Two threads print in the window application,
// so each message is composed whole, written in one call and flushed; input ends, so a reader can see that; and texts
// of cameras and producers go to terminals, so what is not a literal of ours is shown without its control bytes there.
#pragma once

#include <cstddef>
#include <cstdio>
#include <locale>
#include <optional>
#include <sstream>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

namespace console {

/// What is read of one line of input, in bytes; the rest of it is dropped.
inline constexpr std::size_t maxInputLineBytes = 65'536;

/// Reads one line from standard input, without its line end, of at most maxInputLineBytes.
/// \return nothing at the end of the input, when no byte was left to read; and when standard output does not work,
///     since then nobody has seen the question
std::optional<std::string> readLine();

/// \p text as it goes to \p stream: to a terminal as visibleText, to a file, a pipe or a sink as it stands.
std::string shown(std::string_view text, std::FILE *stream = stdout);

/// Joins \p pieces to one text: texts as they stand, numbers in decimal without grouping.
template <class... Pieces>
std::string compose(const Pieces &...pieces)
{
    std::ostringstream text;
    text.imbue(std::locale::classic());
    (text << ... << pieces);
    return std::move(text).str();
}

// How print and printLine do it; nothing else is to be used outside.
namespace detail {

// Writes to standard output in one call and flushes it. A failing output is ignored: there is nobody left to tell.
void write(std::string_view text);

// A string literal, or an array of constants like it. Only what stands in our sources can be one.
template <class Piece>
inline constexpr bool isLiteral = false;
template <std::size_t size>
inline constexpr bool isLiteral<const char (&)[size]> = true;

template <class Piece>
decltype(auto) printable(Piece &&piece)
{
    if constexpr (isLiteral<Piece> || std::is_arithmetic_v<std::remove_reference_t<Piece>>) {
        return std::forward<Piece>(piece);
    } else {
        static_assert(std::is_convertible_v<Piece, std::string_view>, "only texts and numbers are printed");
        return shown(piece);
    }
}

} // namespace detail

/// Prints \p pieces as one message that does not end its line. Literals and numbers go as they stand. Every other text
/// may be a camera's, and goes as shown(): line ends of our own stand in literals.
/// Thread: any; two messages never mix.
template <class... Pieces>
void print(Pieces &&...pieces)
{
    detail::write(compose(detail::printable(std::forward<Pieces>(pieces))...));
}

/// The same, and ends the line.
template <class... Pieces>
void printLine(Pieces &&...pieces)
{
    print(std::forward<Pieces>(pieces)..., "\n");
}

} // namespace console

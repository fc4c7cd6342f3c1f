// SPDX-License-Identifier: MIT
// Standard output and standard input as the back end uses them. Two threads print in the window application,
// so each message is composed whole, written in one call and flushed; and input ends, so a reader can see
// that.
#pragma once

#include <locale>
#include <optional>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>

namespace console {

/// Writes \p text to standard output in one call and flushes it. A failing output is ignored: there is nobody
/// left to tell. Thread: any; two messages never mix.
void write(std::string_view text);

/// Reads one line from standard input, without its line end.
/// \return nothing at the end of the input, when no byte was left to read
std::optional<std::string> readLine();

/// Joins \p pieces to one text: texts as they stand, numbers in decimal without grouping.
template <class... Pieces>
std::string compose(const Pieces &...pieces)
{
    std::ostringstream text;
    text.imbue(std::locale::classic());
    (text << ... << pieces);
    return std::move(text).str();
}

/// Prints \p pieces as one message that does not end its line.
template <class... Pieces>
void print(const Pieces &...pieces)
{
    write(compose(pieces...));
}

/// Prints \p pieces as one message that ends its line.
template <class... Pieces>
void printLine(const Pieces &...pieces)
{
    write(compose(pieces..., '\n'));
}

} // namespace console

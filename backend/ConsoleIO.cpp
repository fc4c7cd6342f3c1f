// SPDX-License-Identifier: MIT
// Writing through stdio, whose calls lock the stream: a message is never cut by one of the other thread.
#include "ConsoleIO.h"

#include "LineSink.h"
#include "Terminal.h"
#include "VisibleText.h"

#include <iostream>
#include <streambuf>
#include <utility>

namespace console {

namespace {

thread_local LineSink *presentSink = nullptr; // null: standard output

// Takes each byte once, where std::istream::ignore looks at it twice: half the time of a line of hundreds of megabytes.
void dropRestOfLine()
{
    using Traits = std::streambuf::traits_type;
    Traits::int_type byte{};
    do {
        byte = std::cin.rdbuf()->sbumpc();
    } while (byte != Traits::eof() && byte != '\n');
}

} // namespace

SinkScope::SinkScope(LineSink &sink) : previous(std::exchange(presentSink, &sink)) {}

SinkScope::~SinkScope()
{
    presentSink = previous;
}

void detail::write(std::string_view text)
{
    if (presentSink) {
        presentSink->write(text);
        return;
    }
    if (writeToLog(text))
        return;
    std::clearerr(stdout); // afterwards it tells of this message
    std::fwrite(text.data(), 1, text.size(), stdout);
    std::fflush(stdout);
}

// Into one block of memory, so that a password leaves no copies behind as the line grows.
std::optional<std::string> readLine()
{
    if (!std::cin.good() || std::ferror(stdout) || !waitForInput())
        return std::nullopt;
    std::string line(maxInputLineBytes + 1, '\0');
    std::cin.getline(line.data(), static_cast<std::streamsize>(line.size()));
    auto length = static_cast<std::size_t>(std::cin.gcount());
    if (std::cin.fail() && length < maxInputLineBytes)
        return std::nullopt;
    if (std::cin.fail()) {
        std::cin.clear();
        dropRestOfLine();
    } else if (!std::cin.eof()) {
        --length; // the line end
    }
    line.resize(length);
    if (line.ends_with(lineEndPrefix))
        line.resize(line.size() - lineEndPrefix.size());
    return line;
}

std::string shown(std::string_view text, std::FILE *stream)
{
    if (presentSink && stream == stdout)
        return std::string(text); // it is the sink's to show
    std::string visible = visibleText(text);
    return visible == text || isTerminal(stream) ? visible : std::string(text);
}

} // namespace console

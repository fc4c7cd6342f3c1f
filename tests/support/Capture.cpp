// SPDX-License-Identifier: MIT
#include "Capture.h"

#include <unistd.h>

#include <iostream>
#include <stdexcept>

namespace {

std::FILE *temporaryFile()
{
    std::FILE *file = std::tmpfile();
    if (!file)
        throw std::runtime_error("no temporary file");
    return file;
}

void flushOutput()
{
    std::cout.flush();
    std::fflush(stdout);
}

/// Makes std::cin and stdin read anew: what they have buffered and their end belong to the descriptor before.
void resetInput()
{
    std::clearerr(stdin);
    std::cin.clear();
}

} // namespace

CaptureOutput::CaptureOutput() : file(temporaryFile())
{
    flushOutput();
    before = dup(STDOUT_FILENO);
    dup2(fileno(file), STDOUT_FILENO);
}

CaptureOutput::~CaptureOutput()
{
    flushOutput();
    dup2(before, STDOUT_FILENO);
    close(before);
    std::fclose(file);
}

std::string CaptureOutput::text()
{
    flushOutput();
    std::string result;
    char piece[4096];
    for (ssize_t count; (count = pread(fileno(file), piece, sizeof piece, position)) > 0; position += count)
        result.append(piece, static_cast<std::size_t>(count));
    return result;
}

FeedInput::FeedInput(std::string_view text) : before(dup(STDIN_FILENO))
{
    std::FILE *file = temporaryFile();
    std::fwrite(text.data(), 1, text.size(), file);
    std::fflush(file);
    lseek(fileno(file), 0, SEEK_SET);
    std::fflush(stdin);
    dup2(fileno(file), STDIN_FILENO);
    std::fclose(file);
    resetInput();
}

FeedInput::~FeedInput()
{
    std::fseek(stdin, 0, SEEK_END); // drops what the text had left in the buffer of stdin
    dup2(before, STDIN_FILENO);
    close(before);
    resetInput();
}

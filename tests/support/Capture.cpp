// SPDX-License-Identifier: MIT
#include "Capture.h"

#include <fcntl.h>
#include <unistd.h>

#include <stdexcept>

namespace {

void flushOutput()
{
    std::cout.flush();
    std::fflush(stdout);
}

} // namespace

CaptureOutput::CaptureOutput() : file(std::tmpfile())
{
    if (!file)
        throw std::runtime_error("no temporary file");
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
    std::string result(static_cast<std::size_t>(lseek(fileno(file), 0, SEEK_END)), '\0');
    result.resize(static_cast<std::size_t>(pread(fileno(file), result.data(), result.size(), 0)));
    return result;
}

FeedInput::FeedInput(std::string_view text)
    : text(std::string(text)), before(std::cin.rdbuf(this->text.rdbuf())), descriptorBefore(dup(STDIN_FILENO))
{
    const int nothing = open("/dev/null", O_RDONLY);
    dup2(nothing, STDIN_FILENO);
    close(nothing);
}

FeedInput::~FeedInput()
{
    dup2(descriptorBefore, STDIN_FILENO);
    close(descriptorBefore);
    std::cin.rdbuf(before);
}

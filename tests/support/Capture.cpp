// SPDX-License-Identifier: MIT
#include "Capture.h"

#include "System.h"

#include <fstream>
#include <stdexcept>

namespace {

void flushOutput()
{
    std::cout.flush();
    std::fflush(stdout);
}

} // namespace

CaptureOutput::CaptureOutput() : file(std::fopen(path.c_str(), "wb"))
{
    if (!file)
        throw std::runtime_error("no temporary file");
    flushOutput();
    before = testsystem::divertOutput(file);
}

CaptureOutput::~CaptureOutput()
{
    flushOutput();
    testsystem::restoreOutput(before);
    std::fclose(file);
}

std::string CaptureOutput::text()
{
    flushOutput();
    std::ostringstream text;
    text << std::ifstream(path, std::ios::binary).rdbuf();
    return text.str();
}

FeedInput::FeedInput(std::string_view text)
    : text(std::string(text)),
      before(std::cin.rdbuf(this->text.rdbuf())),
      descriptorBefore(testsystem::emptyInput())
{}

FeedInput::~FeedInput()
{
    testsystem::restoreInput(descriptorBefore);
    std::cin.rdbuf(before);
}

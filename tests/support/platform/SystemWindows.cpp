// SPDX-License-Identifier: MIT
#include "System.h"

#include <fcntl.h>
#include <io.h>
#include <malloc.h>

#include <atomic>
#include <cstdlib>
#include <stdexcept>
#include <system_error>

#define WIN32_LEAN_AND_MEAN
#include <windows.h>

namespace fs = std::filesystem;

namespace testsystem {

namespace {

constexpr int input = 0; // numbers of the C runtime
constexpr int output = 1;

void restore(int before, int stream)
{
    _dup2(before, stream);
    _close(before);
}

} // namespace

const char *const nullDevice = "NUL";
const std::string_view listSeparators = ";";
const std::string_view listSeparatorWords = R"(";")";

void setVariable(const std::string &name, const std::optional<std::string> &value)
{
    _putenv_s(name.c_str(), value.value_or("").c_str()); // an empty one is none
}

fs::path makeFreshFolder()
{
    static std::atomic<unsigned> number = 0;
    const std::string name =
        "torvane-" + std::to_string(GetCurrentProcessId()) + '-' + std::to_string(GetTickCount64());
    for (int tries = 0; tries < 100; ++tries) {
        const fs::path folder = fs::temp_directory_path() / (name + '-' + std::to_string(++number));
        if (fs::create_directory(folder))
            return folder;
    }
    throw std::runtime_error("no temporary folder");
}

std::size_t blockSize(void *block)
{
    return _msize(block);
}

int divertOutput(std::FILE *file)
{
    const int before = _dup(output);
    _dup2(_fileno(file), output);
    return before;
}

void restoreOutput(int before)
{
    restore(before, output);
}

int emptyInput()
{
    const int before = _dup(input);
    const int nothing = _open(nullDevice, _O_RDONLY);
    _dup2(nothing, input);
    _close(nothing);
    return before;
}

void restoreInput(int before)
{
    restore(before, input);
}

std::vector<std::string> makeIrregularFiles()
{
    fs::create_directory("folder.cti"); // links need a right that users don't have
    return {"folder.cti"};
}

void takeProducerAway(const std::string &file)
{
    fs::rename(file, file + ".away");
}

std::int64_t changeTime(const fs::path &file)
{
    WIN32_FILE_ATTRIBUTE_DATA data{};
    GetFileAttributesExW(file.c_str(), GetFileExInfoStandard, &data);
    return std::int64_t{data.ftLastWriteTime.dwHighDateTime} << 32 | data.ftLastWriteTime.dwLowDateTime;
}

std::string missingFileWords()
{
    return std::system_category().message(ERROR_FILE_NOT_FOUND);
}

std::string readFolderWords()
{
    return "Permission denied";
}

std::vector<std::string> makeLinks(const std::string & /*file*/)
{
    return {};
}

bool isPrivate(const fs::path & /*file*/)
{
    return true;
}

} // namespace testsystem

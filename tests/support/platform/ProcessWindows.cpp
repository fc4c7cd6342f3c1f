// SPDX-License-Identifier: MIT
#include "Process.h"

#include <memory>
#include <stdexcept>

#define WIN32_LEAN_AND_MEAN
#include <windows.h>

namespace testsystem {

namespace {

constexpr UINT killed = 0xffffffff; // the status of a process that was ended

using Handle = std::unique_ptr<void, decltype(&CloseHandle)>;

HANDLE handleOf(std::intptr_t process)
{
    return reinterpret_cast<HANDLE>(process);
}

/// An argument as the C runtime of the program takes it apart again: backslashes count double before a quote only.
std::string quoted(const std::string &argument)
{
    std::string text = "\"";
    std::size_t backslashes = 0;
    for (const char byte : argument) {
        if (byte == '"')
            text.append(backslashes + 1, '\\');
        backslashes = byte == '\\' ? backslashes + 1 : 0;
        text += byte;
    }
    return text.append(backslashes, '\\') + '"';
}

/// A file that the program inherits, or the test's own stream.
Handle open(const std::string &file, DWORD access, DWORD disposition, DWORD stream)
{
    SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
    HANDLE handle = nullptr;
    if (file.empty()) {
        DuplicateHandle(GetCurrentProcess(), GetStdHandle(stream), GetCurrentProcess(), &handle, 0, TRUE,
                        DUPLICATE_SAME_ACCESS);
        return {handle, &CloseHandle};
    }
    handle = CreateFileA(file.c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE, &inherited, disposition,
                         FILE_ATTRIBUTE_NORMAL, nullptr);
    if (handle == INVALID_HANDLE_VALUE)
        throw std::runtime_error("can't open " + file);
    return {handle, &CloseHandle};
}

} // namespace

Process::Process(const std::string &program, const std::vector<std::string> &arguments,
                 const std::string &input, const std::string &output, const std::string &errors)
{
    std::string line = quoted(program);
    for (const std::string &argument : arguments)
        line += ' ' + quoted(argument);
    const Handle in = open(input, GENERIC_READ, OPEN_EXISTING, STD_INPUT_HANDLE);
    const Handle out = open(output, GENERIC_WRITE, CREATE_ALWAYS, STD_OUTPUT_HANDLE);
    const Handle err = open(errors, GENERIC_WRITE, CREATE_ALWAYS, STD_ERROR_HANDLE);
    STARTUPINFOA start{};
    start.cb = sizeof start;
    start.dwFlags = STARTF_USESTDHANDLES;
    start.hStdInput = in.get();
    start.hStdOutput = out.get();
    start.hStdError = err.get();
    PROCESS_INFORMATION info{};
    if (!CreateProcessA(program.c_str(), line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &start,
                        &info))
        throw std::runtime_error("can't start " + program);
    CloseHandle(info.hThread);
    process = reinterpret_cast<std::intptr_t>(info.hProcess);
}

int Process::wait()
{
    if (process == 0)
        return -1;
    const Handle ended(handleOf(std::exchange(process, 0)), &CloseHandle);
    DWORD status = killed;
    WaitForSingleObject(ended.get(), INFINITE);
    GetExitCodeProcess(ended.get(), &status);
    return static_cast<int>(status);
}

void Process::kill()
{
    if (process != 0)
        TerminateProcess(handleOf(process), killed);
}

} // namespace testsystem

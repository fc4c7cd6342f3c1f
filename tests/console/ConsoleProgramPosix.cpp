// SPDX-License-Identifier: MIT
#include "ConsoleProgram.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstddef>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <system_error>

namespace {

constexpr std::size_t floodBytes = 1024 * 1024;

std::string readFile(const std::filesystem::path &path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::string readAll(int descriptor)
{
    std::string text;
    std::array<char, 4096> bytes{};
    for (ssize_t count = 0;
         text.size() < floodBytes && (count = read(descriptor, bytes.data(), bytes.size())) > 0;)
        text.append(bytes.data(), static_cast<std::size_t>(count));
    close(descriptor);
    return text;
}

int waitForExit(pid_t process)
{
    int state = 0;
    waitpid(process, &state, 0);
    return WIFEXITED(state) ? WEXITSTATUS(state) : -1;
}

} // namespace

Outcome runConsole(const std::vector<std::string> &arguments, const std::string &input,
                   const std::filesystem::path &folder)
{
    const std::string inputFile = folder / "input";
    const std::string errorsFile = folder / "errors";
    std::ofstream(inputFile, std::ios::binary) << input;
    std::array<int, 2> output{};
    if (pipe2(output.data(), O_CLOEXEC) != 0)
        throw std::system_error(errno, std::generic_category(), "pipe2");

    posix_spawn_file_actions_t streams;
    posix_spawn_file_actions_init(&streams);
    posix_spawn_file_actions_addopen(&streams, STDIN_FILENO, inputFile.c_str(), O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&streams, output[1], STDOUT_FILENO);
    posix_spawn_file_actions_addopen(&streams, STDERR_FILENO, errorsFile.c_str(),
                                     O_WRONLY | O_CREAT | O_TRUNC, 0600);

    std::vector<char *> argv{const_cast<char *>(TORVANE_CONSOLE)};
    for (const std::string &argument : arguments)
        argv.push_back(const_cast<char *>(argument.c_str()));
    argv.push_back(nullptr);
    pid_t process = 0;
    const int error = posix_spawn(&process, TORVANE_CONSOLE, &streams, nullptr, argv.data(), environ);
    posix_spawn_file_actions_destroy(&streams);
    close(output[1]);
    if (error != 0)
        throw std::system_error(error, std::generic_category(), TORVANE_CONSOLE);

    Outcome outcome;
    outcome.output = readAll(output[0]);
    outcome.status = waitForExit(process);
    outcome.errors = readFile(errorsFile);
    return outcome;
}

// SPDX-License-Identifier: MIT
// torvane_console --list-devices over ten cameras against a bare program of the same GenTL calls: the processor time of
// whole processes, from their start to their end.
#include "SilentSimulator.h"

#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <stdexcept>

namespace {

double seconds(const timeval &time)
{
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
}

/// Runs \p program, whose output nobody reads, to its end.
/// \return seconds of processor time
/// \throws std::runtime_error  it can't be started, or it failed
double run(const std::string &program, const std::string &argument)
{
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    char *const arguments[] = {const_cast<char *>(program.c_str()), const_cast<char *>(argument.c_str()),
                               nullptr};
    pid_t child = 0;
    const int error = posix_spawn(&child, program.c_str(), &actions, nullptr, arguments, environ);
    posix_spawn_file_actions_destroy(&actions);
    int status = -1;
    rusage usage{};
    if (error != 0 || wait4(child, &status, 0, &usage) != child || status != 0)
        throw std::runtime_error(program + " failed");
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

double runConsole()
{
    return run(TORVANE_CONSOLE, "--list-devices");
}

double runBare()
{
    return run(TORVANE_BARE_LIST, Simulator::cti());
}

void listDevices(benchmark::State &state)
{
    for (auto _ : state)
        state.SetIterationTime(runConsole());
}

void bareList(benchmark::State &state)
{
    for (auto _ : state)
        state.SetIterationTime(runBare());
}

std::string cameras()
{
    std::string toml = "[[interface]]\nid = \"sim-eth0\"\ntype = \"GEV\"\n";
    for (int i = 0; i < 10; ++i)
        toml += "[[interface.camera]]\nid = \"simulated-camera-" + std::to_string(i) + "\"\n";
    return toml;
}

/// The calls of both, with arguments and results, are the same.
bool isSameToBoth()
{
    Simulator simulator(cameras());
    runConsole();
    const std::vector<std::string> calls = simulator.calls();
    simulator.clearLog();
    runBare();
    return calls == simulator.calls();
}

} // namespace

BENCHMARK(listDevices)->UseManualTime();
BENCHMARK(bareList)->UseManualTime();

int main(int argc, char **argv)
try {
    setenv("GENICAM_GENTL64_PATH", std::filesystem::path(Simulator::cti()).parent_path().c_str(), 1);
    if (!isSameToBoth()) {
        std::cerr << "the two make different calls\n";
        return EXIT_FAILURE;
    }
    const SilentSimulator simulator(cameras());
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
} catch (const std::exception &failure) {
    std::cerr << failure.what() << '\n';
    return EXIT_FAILURE;
}

// SPDX-License-Identifier: MIT
// From the start of the program to the first sight of its window, against an empty window of the same Qt: elapsed time,
// each in a process of its own, on the display of the environment, over the simulated cameras.
#include "SilentSimulator.h"

#include <benchmark/benchmark.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>

namespace {

/// Runs \p program until it tells that its window stands.
/// \return whether it did so and ended well
bool start(const char *program, std::chrono::duration<double> &elapsed)
{
    const auto begin = std::chrono::steady_clock::now();
    int ends[2];
    if (pipe(ends) != 0)
        return false;
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
    posix_spawn_file_actions_addclose(&actions, ends[0]);
    char *const arguments[] = {const_cast<char *>(program), nullptr};
    pid_t child = 0;
    const bool isStarted = posix_spawn(&child, program, &actions, nullptr, arguments, environ) == 0;
    posix_spawn_file_actions_destroy(&actions);
    close(ends[1]);
    char sight = 0;
    const bool isSeen = isStarted && read(ends[0], &sight, 1) == 1 && sight == '!';
    elapsed = std::chrono::steady_clock::now() - begin;
    close(ends[0]);
    int status = -1;
    return isStarted && waitpid(child, &status, 0) == child && status == 0 && isSeen;
}

void measure(benchmark::State &state, const char *program)
{
    for (auto _ : state) {
        std::chrono::duration<double> elapsed{};
        if (!start(program, elapsed))
            return state.SkipWithError("the window does not show");
        state.SetIterationTime(elapsed.count());
    }
}

void emptyWindow(benchmark::State &state)
{
    measure(state, TORVANE_EMPTY_WINDOW);
}

void torvaneWindow(benchmark::State &state)
{
    measure(state, TORVANE_WINDOW);
}

} // namespace

BENCHMARK(emptyWindow)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(torvaneWindow)->UseManualTime()->Unit(benchmark::kMillisecond);

int main(int argc, char **argv)
{
    const SilentSimulator simulator;
    setenv("GENICAM_GENTL64_PATH", std::filesystem::path(Simulator::cti()).parent_path().c_str(), 1);
    unsetenv("TORVANE_SIM_CONFIG"); // the default cameras
    std::filesystem::current_path(simulator.folder());
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}

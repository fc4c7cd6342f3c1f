// SPDX-License-Identifier: MIT
// An integer behind a swiss knife over a register: its first read in a node map, which makes the nodes and compiles the
// formula, and repeated reads, with the register cached. Against Aravis.
#include "AravisCamera.h"
#include "GeneratedCamera.h"
#include "NodeMapCamera.h"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <iostream>
#include <optional>

namespace {

const GeneratedCamera &camera()
{
    static const GeneratedCamera generated{160'000};
    return generated;
}

void connect(NodeMapCamera &ours)
{
    ours.connect();
}

void connect(AravisCamera &) {} // it is born connected

/// Feature by feature; when all are read, another node map begins.
template <class Camera>
void firstRead(benchmark::State &state)
{
    std::vector<std::string> names;
    for (std::size_t number = 0; number < camera().featureCount; ++number)
        names.push_back(GeneratedCamera::featureName(number));
    std::optional<Camera> loaded;
    std::size_t next = names.size();
    for (auto _ : state) {
        if (next == names.size()) {
            state.PauseTiming();
            loaded.emplace(camera().description);
            connect(*loaded);
            next = 0;
            state.ResumeTiming();
        }
        benchmark::DoNotOptimize(loaded->integer(names[next++]));
    }
}

template <class Camera>
void repeatedRead(benchmark::State &state)
{
    Camera loaded{camera().description};
    connect(loaded);
    const std::string name = GeneratedCamera::featureName(0);
    for (auto _ : state)
        benchmark::DoNotOptimize(loaded.integer(name));
}

bool isSameToBoth()
{
    NodeMapCamera ours{camera().description};
    ours.connect();
    const AravisCamera aravis{camera().description};
    for (std::size_t number = 0; number < camera().featureCount; ++number) {
        const std::string name = GeneratedCamera::featureName(number);
        const std::int64_t value = aravis.integer(name);
        if (ours.integer(name) != value || ours.integer(name) != value)
            return false;
    }
    return true;
}

} // namespace

BENCHMARK_TEMPLATE(firstRead, NodeMapCamera);
BENCHMARK_TEMPLATE(firstRead, AravisCamera);
BENCHMARK_TEMPLATE(repeatedRead, NodeMapCamera);
BENCHMARK_TEMPLATE(repeatedRead, AravisCamera);

int main(int argc, char **argv)
{
    if (!isSameToBoth()) {
        std::cerr << "the two read different values\n";
        return EXIT_FAILURE;
    }
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return EXIT_SUCCESS;
}

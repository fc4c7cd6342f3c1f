// SPDX-License-Identifier: MIT
// A quiet pass over known cameras against a bare loop of the same GenTL enumeration calls, for 1,000 cameras
// and for 10,000: a pass must stay linear.
//
// Each repetition sets its side up anew, on the same producer: where the producer has its cameras in memory moves both
// by a third, and so takes turns as well.
#include "BackEnd.h"
#include "BareProducer.h"
#include "SilentSimulator.h"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>

namespace {

// Busy cameras are not probed, which only shortens the first pass.
std::string cameras(std::size_t count)
{
    std::string toml = "[[interface]]\nid = \"sim-eth0\"\ntype = \"GEV\"\n";
    for (std::size_t i = 0; i < count; ++i)
        toml +=
            "[[interface.camera]]\nid = \"simulated-camera-" + std::to_string(i) + "\"\naccess = \"busy\"\n";
    return toml;
}

template <std::size_t count>
void bareEnumeration(benchmark::State &state)
{
    const SilentSimulator simulator(cameras(count));
    BareProducer producer(Simulator::cti());
    producer.open();
    if (producer.enumerate() != count)
        return state.SkipWithError("not all cameras are there");
    for (auto _ : state)
        benchmark::DoNotOptimize(producer.enumerate());
}

template <std::size_t count>
void quietPass(benchmark::State &state)
{
    const SilentSimulator simulator(cameras(count));
    BackEnd backEnd;
    backEnd.discoverLibraries(true);
    backEnd.updateDevices();
    if (backEnd.devices().size() != count)
        return state.SkipWithError("not all cameras are there");
    for (auto _ : state)
        backEnd.updateDevices();
}

} // namespace

BENCHMARK_TEMPLATE(bareEnumeration, 1000);
BENCHMARK_TEMPLATE(quietPass, 1000);
BENCHMARK_TEMPLATE(bareEnumeration, 10000);
BENCHMARK_TEMPLATE(quietPass, 10000);

int main(int argc, char **argv)
{
    setenv("GENICAM_GENTL64_PATH", std::filesystem::path(Simulator::cti()).parent_path().c_str(), 1);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}

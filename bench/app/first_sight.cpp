// SPDX-License-Identifier: MIT
// The first sight of 100 cameras: their list, a probe of each, and the rows of the window, against a bare loop of the
// same GenTL calls; in processor time, and in the elapsed time of cameras that take 1 ms for each access to their
// registers. The producer is loaded anew for each sight, which is not measured.
#include "BackEnd.h"
#include "BareProducer.h"
#include "DeviceItemModel.h"
#include "SilentSimulator.h"

#include <benchmark/benchmark.h>

#include <QGuiApplication>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <iostream>
#include <memory>

namespace {

constexpr int cameraCount = 100;

std::string cameras(int latencyMs)
{
    std::string toml = "[producer]\nlatency_ms = " + std::to_string(latencyMs) +
                       "\n[[interface]]\nid = \"sim-eth0\"\ntype = \"GEV\"\n";
    for (int i = 0; i < cameraCount; ++i)
        toml += "[[interface.camera]]\nid = \"simulated-camera-" + std::to_string(i) + "\"\nserial = \"" +
                std::to_string(1000 + i) + "\"\n";
    return toml;
}

/// \return seconds by \p clock
template <clockid_t clock, class Sight>
double timeOf(Sight sight)
{
    timespec begin{};
    timespec end{};
    clock_gettime(clock, &begin);
    sight();
    clock_gettime(clock, &end);
    return static_cast<double>(end.tv_sec - begin.tv_sec) +
           static_cast<double>(end.tv_nsec - begin.tv_nsec) * 1e-9;
}

// The two sights, each with the time that it took.

template <clockid_t clock>
double lookThroughModel()
{
    DeviceItemModel model(nullptr, std::make_shared<BackEnd>());
    return timeOf<clock>([&] { model.updateRows(); });
}

template <clockid_t clock>
double lookBare()
{
    BareProducer producer(Simulator::cti());
    return timeOf<clock>([&] {
        producer.open();
        const std::vector<std::string> &ids = producer.list();
        for (const std::string &id : ids)
            producer.probe(id.c_str());
        for (const std::string &id : ids) {
            for (const DEVICE_INFO_CMD value :
                 {DEVICE_INFO_ACCESS_STATUS, DEVICE_INFO_MODEL, DEVICE_INFO_SERIAL_NUMBER})
                producer.ask(id.c_str(), value);
        }
    });
}

void measure(benchmark::State &state, double (*look)(), int latencyMs)
{
    const SilentSimulator simulator(cameras(latencyMs));
    for (auto _ : state)
        state.SetIterationTime(look());
}

void firstSight(benchmark::State &state)
{
    measure(state, lookThroughModel<CLOCK_PROCESS_CPUTIME_ID>, 0);
}

void bareFirstSight(benchmark::State &state)
{
    measure(state, lookBare<CLOCK_PROCESS_CPUTIME_ID>, 0);
}

void firstSightElapsed(benchmark::State &state)
{
    measure(state, lookThroughModel<CLOCK_MONOTONIC>, 1);
}

void bareFirstSightElapsed(benchmark::State &state)
{
    measure(state, lookBare<CLOCK_MONOTONIC>, 1);
}

std::vector<std::string> callsOf(double (*look)())
{
    const Simulator simulator(cameras(0));
    look();
    return simulator.calls();
}

/// The calls of both, with arguments and results, are the same.
bool isSameToBoth()
{
    const std::vector<std::string> calls = callsOf(lookThroughModel<CLOCK_MONOTONIC>);
    return calls.size() > cameraCount && calls == callsOf(lookBare<CLOCK_MONOTONIC>);
}

} // namespace

BENCHMARK(firstSight)->UseManualTime();
BENCHMARK(bareFirstSight)->UseManualTime();
BENCHMARK(firstSightElapsed)->UseManualTime();
BENCHMARK(bareFirstSightElapsed)->UseManualTime();

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    qputenv("GENICAM_GENTL64_PATH", std::filesystem::path(Simulator::cti()).parent_path().c_str());
    if (!isSameToBoth()) {
        std::cerr << "the two make different calls\n";
        return EXIT_FAILURE;
    }
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}

// SPDX-License-Identifier: MIT
// The memory that opened cameras of one model hold, in bytes as the counter "bytes": the time of these benchmarks means
// nothing. An opened camera has its node map, and ten features read through swiss knives, or all if it has fewer.
#include "AravisCamera.h"
#include "GeneratedCamera.h"
#include "NodeMapCamera.h"

#include <benchmark/benchmark.h>
#include <malloc.h>
#include <pugixml.hpp>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <vector>

namespace {

constexpr std::size_t featuresRead = 10;

template <std::size_t kilobytes>
const GeneratedCamera &camera()
{
    static const GeneratedCamera generated{kilobytes * 1000};
    return generated;
}

/// What the process has allocated and not freed.
double allocatedBytes()
{
    const struct mallinfo2 info = mallinfo2();
    return static_cast<double>(info.uordblks + info.hblkhd);
}

template <class Camera>
void readFeatures(const Camera &opened, std::size_t featureCount)
{
    for (std::size_t number = 0; number < std::min(featuresRead, featureCount); ++number)
        benchmark::DoNotOptimize(opened.integer(GeneratedCamera::featureName(number)));
}

std::unique_ptr<NodeMapCamera> openNodeMap(const GeneratedCamera &model)
{
    auto opened = std::make_unique<NodeMapCamera>(model.description);
    opened->connect();
    readFeatures(*opened, model.featureCount);
    return opened;
}

std::unique_ptr<AravisCamera> openAravis(const GeneratedCamera &model)
{
    auto opened = std::make_unique<AravisCamera>(model.description);
    readFeatures(*opened, model.featureCount);
    return opened;
}

std::unique_ptr<pugi::xml_document> openPugixml(const GeneratedCamera &model)
{
    auto document = std::make_unique<pugi::xml_document>();
    document->load_buffer(model.description.data(), model.description.size());
    return document;
}

template <auto open, std::size_t kilobytes>
void bytesOfCameras(benchmark::State &state)
{
    const GeneratedCamera &model = camera<kilobytes>();
    const auto count = static_cast<std::size_t>(state.range(0));
    double bytes = 0;
    for (auto _ : state) {
        const double before = allocatedBytes();
        std::vector<decltype(open(model))> cameras;
        while (cameras.size() < count)
            cameras.push_back(open(model));
        bytes = allocatedBytes() - before;
    }
    state.counters["bytes"] = bytes;
}

/// GLib keeps blocks that were freed for its own use, unless the environment forbids it before the process begins.
void countBlocksOfGLib(char **argv)
{
    if (std::getenv("G_SLICE") != nullptr)
        return;
    setenv("G_SLICE", "always-malloc", 1);
    execv("/proc/self/exe", argv);
}

} // namespace

int main(int argc, char **argv)
{
    countBlocksOfGLib(argv);
    openNodeMap(camera<16>()); // what stays with the process, such as types and tables, is there already
    openAravis(camera<16>());
    const auto add = [](const char *name, void (*measure)(benchmark::State &), int cameras) {
        benchmark::RegisterBenchmark(name, measure)->Arg(cameras)->Iterations(1);
    };
    add("bytesOfOne<16>", bytesOfCameras<openNodeMap, 16>, 1);
    add("bytesOfOnePugixml<16>", bytesOfCameras<openPugixml, 16>, 1);
    add("bytesOfOneAravis<16>", bytesOfCameras<openAravis, 16>, 1);
    add("bytesOfOne<160>", bytesOfCameras<openNodeMap, 160>, 1);
    add("bytesOfOnePugixml<160>", bytesOfCameras<openPugixml, 160>, 1);
    add("bytesOfOneAravis<160>", bytesOfCameras<openAravis, 160>, 1);
    add("bytesOfOne<1300>", bytesOfCameras<openNodeMap, 1300>, 1);
    add("bytesOfOnePugixml<1300>", bytesOfCameras<openPugixml, 1300>, 1);
    add("bytesOfOneAravis<1300>", bytesOfCameras<openAravis, 1300>, 1);
    add("bytesOfHundred<1300>", bytesOfCameras<openNodeMap, 1300>, 100);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return EXIT_SUCCESS;
}

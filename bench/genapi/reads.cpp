// SPDX-License-Identifier: MIT
// How often a call from outside asks the device, beside how many different registers it needs: on a camera, each read is
// a round trip. The first call in a node map, of two shapes that once asked the same register over and over.
#include "CNodeMapRef.h"
#include "CPointer.h"
#include "CPortImpl.h"
#include "ReadShapes.h"

#include <benchmark/benchmark.h>

#include <cstring>
#include <set>
#include <utility>

using namespace GenApi_3_2_TVN;

namespace {

/// All bits are set, but for those at 12, the mode of the second shape.
class CountingPort : public CPortImpl
{
public:
    void Read(void *buffer, std::int64_t address, std::int64_t length) override
    {
        ++reads;
        places.emplace(address, length);
        std::memset(buffer, address == 12 ? 0 : 0xff, static_cast<std::size_t>(length));
    }
    void Write(const void *, std::int64_t, std::int64_t) override {}
    EAccessMode GetAccessMode() const override { return RW; }

    std::size_t reads = 0;
    std::set<std::pair<std::int64_t, std::int64_t>> places;
};

template <class Call>
void countReads(benchmark::State &state, const std::string &description, Call call)
{
    std::size_t reads = 0;
    std::size_t places = 0;
    for (auto _ : state) {
        state.PauseTiming();
        CountingPort port;
        CNodeMapRef nodes;
        nodes._LoadXMLFromString(GenICam_3_2_TVN::gcstring(description.data(), description.size()));
        nodes._Connect(&port, "Device");
        state.ResumeTiming();
        call(nodes);
        reads = port.reads;
        places = port.places.size();
    }
    state.counters["reads"] = static_cast<double>(reads);
    state.counters["addresses"] = static_cast<double>(places);
}

void selectorAccessMode(benchmark::State &state)
{
    countReads(state, readshapes::selector(), [](const CNodeMapRef &nodes) {
        benchmark::DoNotOptimize(nodes._GetNode("Selector")->GetAccessMode());
    });
}

void formatSymbolics(benchmark::State &state)
{
    countReads(state, readshapes::format(), [](const CNodeMapRef &nodes) {
        StringList_t symbolics;
        CEnumerationPtr(nodes._GetNode("Format"))->GetSymbolics(symbolics);
        benchmark::DoNotOptimize(symbolics);
    });
}

void formatWrite(benchmark::State &state)
{
    countReads(state, readshapes::format(),
               [](const CNodeMapRef &nodes) { CEnumerationPtr(nodes._GetNode("Format"))->SetIntValue(3); });
}

} // namespace

BENCHMARK(selectorAccessMode);
BENCHMARK(formatSymbolics);
BENCHMARK(formatWrite);

BENCHMARK_MAIN();

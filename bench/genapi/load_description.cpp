// SPDX-License-Identifier: MIT
// From the bytes of a description to a node found by name: a node map, first and further ones of the model, against
// pugixml with an index by name and against Aravis.
#include "AravisCamera.h"
#include "CNodeMapFactory.h"
#include "GeneratedCamera.h"
#include "IDestroy.h"
#include "NodeMapCamera.h"

#include <benchmark/benchmark.h>
#include <pugixml.hpp>

#include <cstdlib>
#include <cstring>
#include <iostream>
#include <string_view>
#include <unordered_map>

namespace {

/// \tparam kilobytes  of the description
template <std::size_t kilobytes>
const GeneratedCamera &camera()
{
    static const GeneratedCamera generated{kilobytes * 1000};
    return generated;
}

/// In the middle of the description.
template <std::size_t kilobytes>
const std::string &wanted()
{
    static const std::string name = GeneratedCamera::featureName(camera<kilobytes>().featureCount / 2);
    return name;
}

/// The least that a node map can be.
struct IndexedDocument
{
    explicit IndexedDocument(const std::string &description)
    {
        document.load_buffer(description.data(), description.size());
        for (const pugi::xml_node node : document.document_element().children())
            index.emplace(node.attribute("Name").value(), node);
    }

    pugi::xml_document document;
    std::unordered_map<std::string_view, pugi::xml_node> index;
};

template <std::size_t kilobytes>
void pugixmlWithIndex(benchmark::State &state)
{
    for (auto _ : state) {
        const IndexedDocument document{camera<kilobytes>().description};
        benchmark::DoNotOptimize(document.index.find(wanted<kilobytes>()));
    }
}

template <std::size_t kilobytes>
void firstLoad(benchmark::State &state)
{
    for (auto _ : state) {
        const NodeMapCamera loaded{camera<kilobytes>().description};
        benchmark::DoNotOptimize(loaded.node(wanted<kilobytes>()));
    }
}

template <std::size_t kilobytes>
void furtherLoad(benchmark::State &state)
{
    const NodeMapCamera first{camera<kilobytes>().description};
    for (auto _ : state) {
        const NodeMapCamera loaded{camera<kilobytes>().description};
        benchmark::DoNotOptimize(loaded.node(wanted<kilobytes>()));
    }
}

/// From the bytes alone, without the copy of them that the port hands over as a text.
template <std::size_t kilobytes>
void furtherLoadOfBytes(benchmark::State &state)
{
    const NodeMapCamera first{camera<kilobytes>().description};
    const GenICam_3_2_TVN::gcstring name{wanted<kilobytes>()};
    const std::string &bytes = camera<kilobytes>().description;
    for (auto _ : state) {
        GenApi_3_2_TVN::CNodeMapFactory factory{GenApi_3_2_TVN::ContentType_Xml, bytes.data(), bytes.size()};
        GenApi_3_2_TVN::INodeMap *const nodeMap = factory.CreateNodeMap("Device");
        benchmark::DoNotOptimize(nodeMap->GetNode(name));
        dynamic_cast<GenApi_3_2_TVN::IDestroy &>(*nodeMap).Destroy();
    }
}

template <std::size_t kilobytes>
void bareComparison(benchmark::State &state)
{
    const std::string known = camera<kilobytes>().description;
    const std::string &bytes = camera<kilobytes>().description;
    for (auto _ : state)
        benchmark::DoNotOptimize(std::memcmp(known.data(), bytes.data(), bytes.size()));
}

template <std::size_t kilobytes>
void bareCopyAndComparison(benchmark::State &state)
{
    const std::string known = camera<kilobytes>().description;
    for (auto _ : state) {
        const std::string text = camera<kilobytes>().description;
        benchmark::DoNotOptimize(std::memcmp(known.data(), text.data(), text.size()));
    }
}

template <std::size_t kilobytes>
void aravisLoad(benchmark::State &state)
{
    for (auto _ : state) {
        const AravisCamera loaded{camera<kilobytes>().description};
        benchmark::DoNotOptimize(loaded.hasNode(wanted<kilobytes>()));
    }
}

/// All three find each feature, and the two that have values read the same.
template <std::size_t kilobytes>
bool isSameToAll()
{
    const IndexedDocument document{camera<kilobytes>().description};
    NodeMapCamera ours{camera<kilobytes>().description};
    ours.connect();
    const AravisCamera aravis{camera<kilobytes>().description};
    for (std::size_t number = 0; number < camera<kilobytes>().featureCount; ++number) {
        const std::string name = GeneratedCamera::featureName(number);
        if (!document.index.contains(name) || ours.integer(name) != aravis.integer(name))
            return false;
    }
    return true;
}

} // namespace

BENCHMARK_TEMPLATE(pugixmlWithIndex, 16);
BENCHMARK_TEMPLATE(firstLoad, 16);
BENCHMARK_TEMPLATE(furtherLoad, 16);
BENCHMARK_TEMPLATE(aravisLoad, 16);
BENCHMARK_TEMPLATE(pugixmlWithIndex, 160);
BENCHMARK_TEMPLATE(firstLoad, 160);
BENCHMARK_TEMPLATE(furtherLoad, 160);
BENCHMARK_TEMPLATE(aravisLoad, 160);
BENCHMARK_TEMPLATE(pugixmlWithIndex, 1300);
BENCHMARK_TEMPLATE(firstLoad, 1300);
BENCHMARK_TEMPLATE(furtherLoad, 1300);
BENCHMARK_TEMPLATE(furtherLoadOfBytes, 1300);
BENCHMARK_TEMPLATE(bareComparison, 1300);
BENCHMARK_TEMPLATE(bareCopyAndComparison, 1300);
BENCHMARK_TEMPLATE(aravisLoad, 1300);

int main(int argc, char **argv)
{
    if (!isSameToAll<16>() || !isSameToAll<160>() || !isSameToAll<1300>()) {
        std::cerr << "the node maps differ\n";
        return EXIT_FAILURE;
    }
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return EXIT_SUCCESS;
}

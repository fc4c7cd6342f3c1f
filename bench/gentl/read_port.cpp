// SPDX-License-Identifier: MIT
// A register read through the port against the producer's own GCReadPort, called directly.
#include "GenTL_Interface.h"
#include "GenTL_PortInterface.h"
#include "Platform.h"
#include "SilentSimulator.h"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <cstring>
#include <iostream>
#include <memory>

using namespace GenICam_Interfaces;

namespace {

constexpr std::uint64_t lockState = 0x50001000;

// One camera, opened, and both roads to it.
struct Camera
{
    Camera()
    {
        require(gentl->GCInitLib());
        require(gentl->TLOpen(&tl));
        require(gentl->TLUpdateInterfaceList(tl, nullptr, 0));
        require(gentl->TLOpenInterface(tl, "sim-eth0", &interface));
        require(gentl->IFUpdateDeviceList(interface, nullptr, 0));
        require(gentl->IFOpenDevice(interface, "sim-1", DEVICE_ACCESS_CONTROL, &device));
        require(gentl->DevGetPort(device, &port));
        ours = std::make_unique<GenTL_PortInterface>(port, gentl, 0);
        void *module = platform::loadModule(Simulator::cti());
        bare = reinterpret_cast<PGCReadPort>(platform::findFunction(module, "GCReadPort"));
    }

    static void require(GC_ERROR code)
    {
        if (code == GC_ERR_SUCCESS)
            return;
        std::cerr << "the simulated camera answers " << code << "\n";
        std::exit(EXIT_FAILURE);
    }

    SilentSimulator simulator;
    std::shared_ptr<GenTL_Interface> gentl = std::make_shared<GenTL_Interface>(Simulator::cti());
    TL_HANDLE tl = nullptr;
    IF_HANDLE interface = nullptr;
    DEV_HANDLE device = nullptr;
    PORT_HANDLE port = nullptr;
    std::unique_ptr<GenTL_PortInterface> ours;
    PGCReadPort bare = nullptr;
};

void bareReadPort(benchmark::State &state, const Camera &camera)
{
    std::uint32_t value = 0;
    for (auto _ : state) {
        std::size_t size = sizeof value;
        benchmark::DoNotOptimize(camera.bare(camera.port, lockState, &value, &size));
    }
}

void portRead(benchmark::State &state, const Camera &camera)
{
    std::uint32_t value = 0;
    GenApi_3_2_TVN::IPort &port = *camera.ours;
    for (auto _ : state) {
        port.Read(&value, static_cast<std::int64_t>(lockState), sizeof value);
        benchmark::DoNotOptimize(value);
    }
}

} // namespace

int main(int argc, char **argv)
{
    const Camera camera;
    std::uint32_t bytes[2] = {};
    std::size_t size = sizeof bytes[0];
    camera.bare(camera.port, lockState, &bytes[0], &size);
    camera.ours->Read(&bytes[1], static_cast<std::int64_t>(lockState), sizeof bytes[1]);
    if (bytes[0] != bytes[1]) {
        std::cerr << "the two roads read different bytes\n";
        return EXIT_FAILURE;
    }
    benchmark::RegisterBenchmark("bareReadPort", [&](auto &state) { bareReadPort(state, camera); });
    benchmark::RegisterBenchmark("portRead", [&](auto &state) { portRead(state, camera); });
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return EXIT_SUCCESS;
}

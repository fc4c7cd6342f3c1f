// SPDX-License-Identifier: MIT
// A quiet pass over known cameras against a bare loop of the same GenTL enumeration calls, for 1,000 cameras
// and for 10,000: a pass must stay linear.
#include "BackEnd.h"
#include "GenTL.h"
#include "Platform.h"
#include "SilentSimulator.h"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <memory>
#include <string>

using namespace GenICam_Interfaces;

namespace {

// The same enumeration by hand, through the functions of a producer's module.
struct BareProducer
{
    explicit BareProducer(const std::string &cti) : module(platform::loadModule(cti))
    {
        find(updateInterfaces, "TLUpdateInterfaceList");
        find(numInterfaces, "TLGetNumInterfaces");
        find(interfaceId, "TLGetInterfaceID");
        find(updateDevices, "IFUpdateDeviceList");
        find(numDevices, "IFGetNumDevices");
        find(deviceId, "IFGetDeviceID");
        PGCInitLib initLib = nullptr;
        PTLOpen open = nullptr;
        PTLOpenInterface openInterface = nullptr;
        find(initLib, "GCInitLib");
        find(open, "TLOpen");
        find(openInterface, "TLOpenInterface");
        initLib();
        open(&tl);
        updateInterfaces(tl, nullptr, 200);
        openInterface(tl, "sim-eth0", &interface);
    }

    template <class Pointer>
    void find(Pointer &pointer, const char *name)
    {
        pointer = reinterpret_cast<Pointer>(platform::findFunction(module, name));
    }

    /// \return how many identifiers were read
    std::size_t enumerate() const
    {
        char id[256];
        std::size_t read = 0;
        std::uint32_t interfaces = 0;
        updateInterfaces(tl, nullptr, 200);
        numInterfaces(tl, &interfaces);
        for (std::uint32_t i = 0; i < interfaces; ++i) {
            std::size_t size = sizeof id;
            interfaceId(tl, i, id, &size);
        }
        std::uint32_t devices = 0;
        updateDevices(interface, nullptr, 200);
        numDevices(interface, &devices);
        for (std::uint32_t i = 0; i < devices; ++i) {
            std::size_t size = sizeof id;
            if (deviceId(interface, i, id, &size) == GC_ERR_SUCCESS)
                ++read;
        }
        return read;
    }

    void *module;
    PTLUpdateInterfaceList updateInterfaces = nullptr;
    PTLGetNumInterfaces numInterfaces = nullptr;
    PTLGetInterfaceID interfaceId = nullptr;
    PIFUpdateDeviceList updateDevices = nullptr;
    PIFGetNumDevices numDevices = nullptr;
    PIFGetDeviceID deviceId = nullptr;
    TL_HANDLE tl = nullptr;
    IF_HANDLE interface = nullptr;
};

std::string cameras(std::size_t count)
{
    std::string toml = "[[interface]]\nid = \"sim-eth0\"\ntype = \"GEV\"\n";
    for (std::size_t i = 0; i < count; ++i)
        toml +=
            "[[interface.camera]]\nid = \"simulated-camera-" + std::to_string(i) + "\"\naccess = \"busy\"\n";
    return toml;
}

// The back end and the bare loop over the same cameras. Each has a copy of the producer, since two users of
// one module refuse each other. Busy cameras are not probed, which only shortens the first pass.
struct Setting
{
    explicit Setting(std::size_t count) : simulator(cameras(count)), bare(copyOfModule("bare"))
    {
        const std::filesystem::path ours = copyOfModule("ours");
        setenv("GENICAM_GENTL64_PATH", ours.parent_path().c_str(), 1);
        backEnd.discoverLibraries(true);
        backEnd.updateDevices();
        if (backEnd.devices().size() != count || bare.enumerate() != count) {
            std::cerr << "not all cameras are there\n";
            std::exit(EXIT_FAILURE);
        }
    }

    std::string copyOfModule(const std::string &folder) const
    {
        const auto copy = simulator.folder() / folder / "producer.cti";
        std::filesystem::create_directory(copy.parent_path());
        std::filesystem::copy_file(Simulator::cti(), copy);
        return copy.string();
    }

    SilentSimulator simulator;
    BareProducer bare;
    BackEnd backEnd;
};

template <std::size_t count>
Setting &setting()
{
    static Setting *const instance = new Setting(count); // lives as long as the process
    return *instance;
}

template <std::size_t count>
void bareEnumeration(benchmark::State &state)
{
    Setting &known = setting<count>();
    for (auto _ : state)
        benchmark::DoNotOptimize(known.bare.enumerate());
}

template <std::size_t count>
void quietPass(benchmark::State &state)
{
    Setting &known = setting<count>();
    for (auto _ : state)
        known.backEnd.updateDevices();
}

} // namespace

BENCHMARK_TEMPLATE(bareEnumeration, 1000);
BENCHMARK_TEMPLATE(quietPass, 1000);
BENCHMARK_TEMPLATE(bareEnumeration, 10000);
BENCHMARK_TEMPLATE(quietPass, 10000);

BENCHMARK_MAIN();

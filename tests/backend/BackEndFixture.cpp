// SPDX-License-Identifier: MIT
#include "BackEndFixture.h"

#include <filesystem>

// The current directory is searched too: it is one without a producer.
BackEndTest::BackEndTest()
    : path(std::make_unique<Environment>("GENICAM_GENTL64_PATH", folderOf(Simulator::cti())))
{
    std::filesystem::current_path(simulator.folder());
}

std::string BackEndTest::printedBy(const std::function<void()> &work, std::string_view input)
{
    FeedInput feed(input);
    CaptureOutput capture;
    work();
    return capture.text();
}

std::string BackEndTest::start()
{
    return printedBy([this] {
        backEnd->discoverLibraries(true);
        backEnd->updateDevices();
    });
}

std::string BackEndTest::pass()
{
    return printedBy([this] { backEnd->updateDevices(); });
}

std::string BackEndTest::end()
{
    return printedBy([this] { backEnd.reset(); });
}

std::vector<std::string> BackEndTest::ids() const
{
    std::vector<std::string> result;
    for (const Device *known : backEnd->devices())
        result.push_back(known->id());
    return result;
}

Device *BackEndTest::select()
{
    start();
    backEnd->selectDevice(device());
    simulator.clearLog();
    return device();
}

void BackEndTest::useProducers(const std::vector<std::string> &variants)
{
    std::string folders;
    for (const std::string &variant : variants)
        folders += folderOf(variant.empty() ? Simulator::cti() : Simulator::cti(variant)) + ";";
    search(folders);
}

void BackEndTest::search(const std::string &folders)
{
    path.reset(); // puts the variable back, which must not come after the new value
    path = std::make_unique<Environment>("GENICAM_GENTL64_PATH", folders);
}

std::string BackEndTest::folderOf(const std::string &file)
{
    return std::filesystem::path(file).parent_path().string();
}

std::vector<std::string> functionsOf(const std::vector<std::string> &calls)
{
    std::vector<std::string> names;
    for (const std::string &call : calls)
        names.push_back(call.substr(0, call.find('(')));
    return names;
}

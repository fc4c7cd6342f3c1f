// SPDX-License-Identifier: MIT
// The store of a producer without a state file.
#include "CameraStore.h"

#include <memory>
#include <set>

namespace simulator {

namespace {

using HeldIds = std::set<std::string>;

class MemoryHold : public CameraHold
{
public:
    MemoryHold(std::shared_ptr<HeldIds> held, std::string id) : held(std::move(held)), id(std::move(id)) {}
    MemoryHold(const MemoryHold &) = delete;
    MemoryHold &operator=(const MemoryHold &) = delete;
    ~MemoryHold() override { held->erase(id); }

private:
    std::shared_ptr<HeldIds> held;
    std::string id;
};

class MemoryStore : public CameraStore
{
public:
    CameraStates load() override { return states; }

    CameraState stateOf(const CameraSettings &settings) override
    {
        return simulator::stateOf(settings, states);
    }

    void update(const CameraSettings &settings, const std::function<bool(CameraState &)> &change) override
    {
        CameraState state = stateOf(settings);
        if (change(state))
            states[settings.id] = std::move(state);
    }

    std::unique_ptr<CameraHold> hold(const std::string &id) override
    {
        if (!held->insert(id).second)
            return nullptr;
        return std::make_unique<MemoryHold>(held, id);
    }

    bool isHeld(const std::string &id) override { return held->contains(id); }

private:
    CameraStates states;
    std::shared_ptr<HeldIds> held = std::make_shared<HeldIds>();
};

} // namespace

std::unique_ptr<CameraStore> makeMemoryStore()
{
    return std::make_unique<MemoryStore>();
}

} // namespace simulator

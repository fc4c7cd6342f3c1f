// SPDX-License-Identifier: MIT
#include "HandleTable.h"

namespace simulator {

namespace {

constexpr std::uint64_t mostHandles = std::uint64_t{1} << 28;

/// Where this module's handles begin. Modules lie at least a page of 4096 bytes apart, so their ranges don't
/// meet.
std::uint64_t base()
{
    static const char anchor = 0;
    return reinterpret_cast<std::uintptr_t>(&anchor) / 4096 * mostHandles;
}

} // namespace

HandleObject::HandleObject(HandleTable &table) : table_(table), handle_(table.add(*this)) {}

HandleObject::~HandleObject()
{
    table_.remove(handle_);
}

void *HandleTable::add(HandleObject &object)
{
    if (last + 1 == mostHandles)
        throw GenTLError(GC_ERR_RESOURCE_EXHAUSTED, "the module has given out all of its handles");
    void *const handle = reinterpret_cast<void *>(static_cast<std::uintptr_t>(base() + last + 1));
    objects.emplace(handle, &object);
    ++last;
    return handle;
}

void HandleTable::remove(void *handle) noexcept
{
    objects.erase(handle);
}

HandleObject *HandleTable::find(const void *handle) const
{
    const auto found = objects.find(handle);
    return found == objects.end() ? nullptr : found->second;
}

std::optional<std::uint64_t> HandleTable::numberOf(const void *handle) noexcept
{
    const std::uint64_t number = reinterpret_cast<std::uintptr_t>(handle) - base();
    if (number == 0 || number >= mostHandles)
        return std::nullopt;
    return number;
}

} // namespace simulator

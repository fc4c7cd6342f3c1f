// SPDX-License-Identifier: MIT
// Handles, which are numbers and not addresses: a handle is never given out twice in a module's life, so that
// a stale one is always caught, and those of another module in the same process are caught too.
#pragma once

#include "GenTLError.h"

#include <cstdint>
#include <optional>
#include <unordered_map>

namespace simulator {

class HandleTable;

/// Something that a handle names. The handle lives as long as the object.
class HandleObject
{
public:
    explicit HandleObject(HandleTable &table);
    HandleObject(const HandleObject &) = delete;
    HandleObject &operator=(const HandleObject &) = delete;
    virtual ~HandleObject();

    void *handle() const { return handle_; }

protected:
    HandleTable &table() const { return table_; }

private:
    HandleTable &table_;
    void *handle_;
};

/// Thread: one call at a time, but for numberOf.
class HandleTable
{
public:
    void *add(HandleObject &object);
    void remove(void *handle) noexcept;

    /// The object of a handle, or null.
    HandleObject *find(const void *handle) const;

    /// \throws GenTLError  GC_ERR_INVALID_HANDLE: not a handle, closed, or of another kind
    template <class Object>
    Object &get(const void *handle) const
    {
        if (auto *object = dynamic_cast<Object *>(find(handle)))
            return *object;
        throw GenTLError(GC_ERR_INVALID_HANDLE,
                         handle ? "not a handle of this kind, or closed" : "the handle is null");
    }

    /// Which handle of this module it is, from 1 on in order of creation; nothing when it isn't one. Thread:
    /// any.
    static std::optional<std::uint64_t> numberOf(const void *handle) noexcept;

private:
    std::unordered_map<const void *, HandleObject *> objects;
    std::uint64_t last = 0;
};

} // namespace simulator

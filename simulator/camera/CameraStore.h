// SPDX-License-Identifier: MIT
// Where passwords and lock states are kept, and which cameras are held open: in memory for this module alone,
// or in a file for all processes that name it.
#pragma once

#include "CameraState.h"

#include <functional>
#include <memory>
#include <string>

namespace simulator {

/// A camera held open. Lets go of it at its end.
class CameraHold
{
public:
    virtual ~CameraHold() = default;
};

/// Thread: any, one call at a time.
class CameraStore
{
public:
    virtual ~CameraStore() = default;

    /// Everything that is kept.
    /// \throws GenTLError  GC_ERR_IO: the state is damaged or can't be read; GC_ERR_TIMEOUT: it stays locked
    virtual CameraStates load() = 0;

    /// The state of one camera: the kept one, or that of its configuration.
    /// \throws GenTLError  as load()
    virtual CameraState stateOf(const CameraSettings &settings) = 0;

    /// Changes the state of one camera, with no other change between the look and the deed.
    /// \param change  returns whether what it made of the state is to be kept
    /// \throws GenTLError  as load(), and whatever \p change throws; nothing is changed then
    virtual void update(const CameraSettings &settings, const std::function<bool(CameraState &)> &change) = 0;

    /// Takes a camera; null when somebody else holds it, another process included.
    virtual std::unique_ptr<CameraHold> hold(const std::string &id) = 0;

    virtual bool isHeld(const std::string &id) = 0;
};

/// A store that ends with the module.
std::unique_ptr<CameraStore> makeMemoryStore();

/// A store in a file. Beside it stand \p path + ".lock" and, during a change, \p path + ".new".
std::unique_ptr<CameraStore> makeStateFile(const std::string &path);

} // namespace simulator

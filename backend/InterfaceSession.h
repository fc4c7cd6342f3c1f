// SPDX-License-Identifier: MIT
// An opened GenTL interface, shared by whatever needs it open: a pass may find the interface gone while the window
// opens or closes one of its devices, and its IFClose has to come behind the DevClose of that device.
#pragma once

#include <memory>

namespace GenICam_Interfaces {
class GenTL_Interface;
}

/// The last share to go closes the interface, on its thread; a failure is printed.
class InterfaceSession
{
public:
    /// \param handle  GenTL's IF_HANDLE, taken over
    InterfaceSession(std::shared_ptr<GenICam_Interfaces::GenTL_Interface> gentl, void *handle);
    InterfaceSession(const InterfaceSession &) = delete;
    InterfaceSession &operator=(const InterfaceSession &) = delete;
    ~InterfaceSession();

    void *handle() const { return handle_; }

private:
    const std::shared_ptr<GenICam_Interfaces::GenTL_Interface> gentl;
    void *const handle_;
};

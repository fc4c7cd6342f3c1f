// SPDX-License-Identifier: MIT
// A camera as it is seen through its register space, from one open to the next close.
#pragma once

#include "CameraStore.h"
#include "Configuration.h"
#include "Description.h"
#include "Registers.h"

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>

namespace simulator {

class Camera
{
public:
    /// \param store  outlives the camera
    /// \throws GenTLError  GC_ERR_IO while it reboots, or as CameraStore::stateOf()
    Camera(std::shared_ptr<const CameraSettings> settings, CameraStore &store);

    /// Copies \p size bytes from \p address on. A read may begin and end within registers and cross from one
    /// to the next where they adjoin.
    /// \throws GenTLError  GC_ERR_INVALID_ADDRESS where no register stands, GC_ERR_ACCESS_DENIED at one that
    ///     can only be written, GC_ERR_IO when the camera is gone
    std::string read(std::uint64_t address, std::size_t size);

    /// Writes one whole register.
    /// \throws GenTLError  as read(); GC_ERR_INVALID_VALUE at a value or length that the register doesn't
    ///     take; GC_ERR_ACCESS_DENIED at a new password while locked
    void write(std::uint64_t address, std::string_view bytes);

    /// The camera is gone for this open, for good: from now on every access fails with GC_ERR_IO.
    /// \param why  "unplugged"
    void loseContact(const std::string &why) { lost = why; }

    /// Why the camera is gone; empty while it is there. A factory reset makes it go by itself.
    const std::string &whyLost() const { return lost; }

    const CameraSettings &settings() const { return *settings_; }
    const Description &description() const { return description_; }

private:
    void requireContact() const;
    void refreshLockRegisters();
    void writeCommand(std::string_view bytes);
    void writeNewPassword(std::string_view bytes);
    void writeUnlockPassword(std::string_view bytes);
    void latchTimestamp(std::string_view bytes);
    void put(const Register &place, std::string bytes);
    std::string number(std::uint64_t value, std::size_t size) const;
    bool isKnown(std::uint64_t address) const;

    std::shared_ptr<const CameraSettings> settings_;
    CameraStore &store;
    Description description_;
    std::map<std::uint64_t, std::string> readable; // registers and their bytes, by address
    std::string lost;
};

} // namespace simulator

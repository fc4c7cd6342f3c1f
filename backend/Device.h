// SPDX-License-Identifier: MIT
// One camera as one GenTL interface reports it: who it is, how it can be reached, what is known of its
// password lock, and the connection while it is open.
//
// A camera is opened twice in different ways: probe() opens it read-only for a moment when it is first seen
// and remembers what only an open device tells; open() opens it with control access for the user. A list can
// so show cameras that nobody holds open.
//
// Threads: a pass (probe, retirement, the getters of the list) runs beside the window's operations (open,
// close, the password operations) with no lock between them. What both touch is atomic; the rest is set
// before a device gets into the list, or belongs to the window's thread. Of a probe and an open at the same time, the
// later one does nothing.
#pragma once

#include "TransportType.h"

#include <atomic>
#include <cstdint>
#include <list>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace GenICam_Interfaces {
class GenTL_Interface;
class GenTL_PortInterface;
} // namespace GenICam_Interfaces
class InterfaceSession;
class RemoteNode;
class TLInterface;
struct PasswordRegister;

class Device
{
public:
    /// \param owner  the interface that reports the device and deletes it; null gives a device without a
    ///     producer
    /// \param id  GenTL's identifier of the device, unique within its interface. An empty one switches the
    ///     whole object off: every operation does nothing and gives its empty answer.
    Device(TLInterface *owner, std::string id);
    Device(const Device &) = delete;
    Device &operator=(const Device &) = delete;
    /// Closes the device if it is open, without asking it anything more, and wipes the password history.
    ~Device();

    /// First contact: opens the device read-only, remembers lock state, transport type and addresses, and
    /// closes it. Does nothing but ask for the access status when that is neither read-write nor read-only, and
    /// nothing at all from the beginning of open() to the end of close().
    /// \throws whatever the read of an address feature throws, of the standard's family or GenericException;
    ///     the device has been closed then, without being asked anything more
    void probe();
    /// How often the device has been probed. Thread: that of the passes.
    std::uint32_t probes() const { return probes_; }

    /// Opens the device with control access. Failures are printed; isOpen() tells the outcome. One that is being
    /// probed is not opened.
    void open();

    /// Closes what open() has opened; the lock flags are read once more and cached for the list.
    /// \param skipCacheRefresh  don't read them: the device cannot answer any more, or nobody will ask
    void close(bool skipCacheRefresh);

    /// Closes a vanished device without reading anything from it, and switches it off for good.
    void retire();

    /// GenTL's DEVICE_ACCESS_STATUS, asked of the producer each time; 0 (unknown) after a failure.
    std::int32_t accessStatus() const;

    // Texts in UTF-8, asked of the producer each time; a failure is printed and gives an empty text.
    std::string model() const;
    std::string serialNumber() const;
    std::string displayName() const;
    std::string tlType() const;
    /// \throws std::runtime_error  alone of this family: the producer refused, and nothing has been printed
    std::string userDefinedName() const;

    /// The identifier; empty once the device is retired.
    std::string id() const { return retired ? std::string() : id_; }
    /// The identifier without a copy; stays when the device is retired. Valid as long as the object.
    std::string_view identifier() const { return id_; }
    /// Whether open() has opened it; a probe does not count.
    bool isOpen() const { return isOpen_ && holder == Holder::User; }
    /// Whether the last read of the lock state worked; survives a close.
    bool passwordSupported() const { return passwordSupported_; }

    // Known once probe() has got through.
    TransportType transportType() const { return transportType_; }
    /// IPv4, host byte order: the first number of the address in the highest 8 bits. 0 when not known.
    std::uint32_t ipAddress() const { return ipAddress_; }
    /// The 6 bytes in the low 48 bits, the first the highest. 0 before a probe and for other transport types, the
    /// bits of RemoteNode::NoInteger when the feature gives no integer.
    std::uint64_t macAddress() const { return macAddress_; }

    // Operations that report (DeviceReport.cpp), for those who must know why something failed and take no failure for an
    // answer. The device is opened by one of the first two, and closed by close(). Thread: the one that opened it.

    /// Opens the device read-only, or with control access, as open() does.
    /// \return GenTL's code of the failed IFOpenDevice, 0 if that worked: isOpen() then tells whether the steps behind it
    ///     did too. GC_ERR_RESOURCE_IN_USE where it is open already
    std::int32_t openForReading();
    std::int32_t openForControl();

    // Each throws RegisterFailure when the port refuses, or there is none.

    /// Whether the device is locked.
    bool readLocked() const;
    /// Whether the factory password is in force.
    bool readFactoryPassword() const;
    void sendLock();
    /// The device reboots; it is the caller's to close it.
    void sendFactoryReset();
    /// \param newText  bytes as they go to the camera
    void sendNewPassword(const std::string &newText);
    void sendUnlock(const std::string &candidate);

    // The lock (DevicePassword.cpp). Nothing is trusted from a write: the caller reads the lock state
    // afterwards.

    /// Reads the lock state to learn whether the device has the lock at all, see passwordSupported().
    /// \return whether it is locked
    bool readPasswordSupport();
    /// Live while the device is open, else as cached; a failed read gives false.
    bool isLocked() const;
    /// Whether the factory password is in force. Live while open, else as cached; a failed read prints and
    /// gives false.
    bool isDefaultPassword() const;
    /// Writes the lock command; a failure is printed.
    void lock();
    /// Writes the reset command. The device reboots and is closed; after a failed write, which is printed, it
    /// stays open.
    void factoryReset();
    /// Writes a new password. Refusals (locked, too long) and failures are printed.
    /// \param newText  bytes as they go to the camera
    void setPassword(const std::string &newText);
    /// Writes a password to the lock. A failure says nothing: the lock state tells.
    void unlock(const std::string &candidate);

    /// Records a password that has proved itself: the last three different ones are kept, the newest last.
    void rememberPassword(const std::string &used);
    /// The recorded passwords, oldest first. They live as long as this object and are stored nowhere.
    std::vector<std::string> passwordHistory() const;

    /// The feature \p name of the remote device's node map; an empty node when the device has no port.
    RemoteNode remoteNode(const std::string &name) const;

private:
    // Who alone may open the device and close it, but for its retirement.
    enum class Holder
    {
        Nobody,
        Probe,
        User // from open() to close()
    };

    bool isOff() const { return id_.empty() || !gentl || retired; }
    bool tryToHold(Holder newHolder);
    void releaseFromUser();
    void probeHeld();
    std::int32_t openWith(std::int32_t accessFlags);
    std::int32_t openForUser(std::int32_t accessFlags);
    void createPort();
    void closeConnection(bool skipCacheRefresh);
    void closeHandle();
    void refreshCache();
    void readTransportInfo();
    std::int32_t queryText(std::int32_t command, std::string &text) const;
    std::string textOrReport(std::int32_t command, const char *failure) const;
    std::uint32_t readRegister(const PasswordRegister &source) const;
    void writeRegister(const PasswordRegister &target, std::uint32_t value);
    void writePassword(std::int64_t address, const std::string &password);

    TLInterface *const interfaceOwner;
    const std::shared_ptr<GenICam_Interfaces::GenTL_Interface> gentl;
    std::atomic<Holder> holder = Holder::Nobody;
    std::shared_ptr<const InterfaceSession>
        session;                                    // held while open; belongs to whoever has changed isOpen_
    std::atomic<void *> devHandle = nullptr;        // DEV_HANDLE, valid while open
    std::atomic<void *> remotePortHandle = nullptr; // PORT_HANDLE, cleared at close
    // A close disconnects it but leaves it in place, so that a read that overlaps the close still has a port; the
    // next open replaces it.
    std::atomic<std::shared_ptr<GenICam_Interfaces::GenTL_PortInterface>> port;
    const std::uint64_t maxLength = 0x7fffffff; // bytes of a password; no register tells it
    const std::string id_;
    std::atomic<bool> isOpen_ = false; // devHandle is held
    std::atomic<bool> passwordSupported_ = false;
    std::atomic<bool> cachedLocked = true;
    std::atomic<bool> cachedDefault = false;
    TransportType transportType_ = TransportType::Unknown;
    std::uint32_t ipAddress_ = 0;
    std::uint64_t macAddress_ = 0;
    std::list<std::string> passwordHistory_; // its texts never move, which would leave copies behind
    std::uint32_t probes_ = 0;
    std::atomic<bool> retired = false;
};

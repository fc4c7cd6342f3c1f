// SPDX-License-Identifier: MIT
// A GenTL port seen as a GenApi port: register reads and writes and the access mode go to the producer, and
// each failure becomes an exception that carries the producer's own error text.
//
// Threads: no lock is taken. Calls on one port must come one at a time, which is the callers' care.
#pragma once

#include "CPortImpl.h"
#include "GenTL.h"

#include <atomic>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace GenICam_Interfaces {

class GenTL_Interface;

class GenTL_PortInterfaceBase : public GenApi_3_2_TVN::CPortImpl
{
public:
    /// Asks the port once for its access mode, which proves that it answers.
    /// \param portHandle      of an opened module, not owned; it may be closed before this object goes, see
    ///                        disconnect
    /// \param genTLInterface  the producer that the handle is of; the port shares its ownership
    /// \throws std::runtime_error  what GetAccessMode throws
    GenTL_PortInterfaceBase(const PORT_HANDLE &portHandle, std::shared_ptr<GenTL_Interface> genTLInterface);

    /// The same over a producer that the caller keeps alive for as long as this object lives.
    GenTL_PortInterfaceBase(const PORT_HANDLE &portHandle, GenTL_Interface *genTLInterface);

    GenTL_PortInterfaceBase(const GenTL_PortInterfaceBase &) = delete;
    GenTL_PortInterfaceBase &operator=(const GenTL_PortInterfaceBase &) = delete;
    ~GenTL_PortInterfaceBase() override;

    /// To be called before the module of the handle is closed: from then on each operation fails and reaches the
    /// producer no more. Thread: any; a call that is under way goes on.
    void disconnect() noexcept { connected = false; }

    /// Reads from the port's register space, in one request to the producer.
    /// \param buffer   the caller's, of \p length bytes. The producer may deliver fewer without a failure;
    ///                 the bytes beyond stay as they were.
    /// \param address  of the first register
    /// \param length   bytes
    /// \throws std::runtime_error  the producer refused, or the port is disconnected
    void Read(void *buffer, std::int64_t address, std::int64_t length) override;

    /// Writes to the port's register space, in one request to the producer. The rest is as for Read.
    void Write(const void *buffer, std::int64_t address, std::int64_t length) override;

    /// Asks the producer anew at each call: two queries, or up to four where neither tells of a right.
    /// \return RW, RO, WO, NI, NA, or _UndefinedAccesMode if the port denies them all
    /// \throws std::runtime_error  a query failed, or the port is disconnected
    GenApi_3_2_TVN::EAccessMode GetAccessMode() const override;

    /// The name of the node that the port is connected to: "Device" for a camera, as a rule.
    /// \throws std::runtime_error  the query failed, or the port is disconnected
    [[nodiscard]] std::string getPortName() const;

    /// Turns a failed GenTL call into an exception with the producer's last error. To be called right
    /// behind the call and on its thread, to which the producer's last error belongs.
    /// \param context  the call, for the text's start
    /// \param code     what it answered; shown only if the producer has no last error to tell
    /// \param detail   for the text's end, behind a blank that stands there without a detail too
    /// \throws std::runtime_error  always. The code in it is the last error's, which is 0 for an absent
    ///                             function.
    [[noreturn]] void reportGenTLError(std::string_view context, GC_ERROR code,
                                       std::string_view detail) const;

private:
    /// One yes or no of PORT_INFO; \p context is for a failure's text.
    bool askPort(PORT_INFO_CMD question, const char *context) const;
    void requireConnection() const;

    std::atomic<bool> connected = true;

protected:
    PORT_HANDLE portHandle;                               ///< not owned
    GenTL_Interface *genTLInterface;                      ///< never null; all calls go through it
    std::shared_ptr<GenTL_Interface> genTLInterfaceOwner; ///< keeps the producer loaded; empty if not shared
};

} // namespace GenICam_Interfaces

// SPDX-License-Identifier: MIT
// One GenTL producer in use: its .cti file loaded and initialised, its TL handle, and the interfaces that it
// reports.
#pragma once

#include "RetiredObjects.h"
#include "Roster.h"

#include <memory>
#include <string>
#include <vector>

namespace GenICam_Interfaces {
class GenTL_Interface;
}
class TLInterface;

/// A library whose producer could not be loaded or initialised stays without one (gentl() is empty) and is
/// never tried again; the pass and the destructor leave it alone. Thread: the one of the pass; before the
/// first and after the last, the one that owns the BackEnd.
class GenTLLibrary
{
public:
    GenTLLibrary();
    /// The same, and initialises it.
    explicit GenTLLibrary(const std::string &path);
    GenTLLibrary(const GenTLLibrary &) = delete;
    GenTLLibrary &operator=(const GenTLLibrary &) = delete;
    /// Deletes the interfaces and their devices, closes the TL and ends the producer's session.
    ~GenTLLibrary();

    /// Loads the producer and begins its session (GCInitLib). Failures are printed.
    /// \param path  of the .cti file as the search delivered it; the identity of the library
    void initLibrary(const std::string &path);

    /// Opens the TL; a failure is printed, and isOpen() tells. The TL stays open until the library goes.
    void openTL();

    /// Brings the interfaces up to date with what the producer reports. Failures are printed, and so is that
    /// there is no interface. Interfaces that have gone are closed; they and their devices move to \p
    /// retired.
    /// \param openNew  open new interfaces at once
    void updateInterfaces(bool openNew, RetiredObjects &retired);

    /// Closes everything, as the destructor does, but moves the interfaces and the devices to \p retired.
    /// Only the deletion is left.
    void retire(RetiredObjects &retired);

    // The producer's own words; a failure is printed and gives an empty text, as does a library without a
    // producer.
    std::string vendor() const;
    std::string version() const;
    /// The GenTL version that the producer claims, as in "V1.5".
    std::string getGenTLVersionString() const;

    std::string path() const { return path_; }
    std::vector<TLInterface *> interfaces() const { return interfaces_; }
    Roster roster; // of the interfaces
    std::shared_ptr<GenICam_Interfaces::GenTL_Interface> gentl() const { return gentl_; }
    /// GenTL's TL_HANDLE; null while closed.
    void *tlHandle() const { return tlHandle_; }
    bool isOpen() const { return tlOpen; }

private:
    void closeProducer();

    std::shared_ptr<GenICam_Interfaces::GenTL_Interface> gentl_;
    std::string path_;
    std::vector<TLInterface *> interfaces_; // owned, in order of first sight
    void *tlHandle_ = nullptr;              // TL_HANDLE
    bool tlOpen = false;
};

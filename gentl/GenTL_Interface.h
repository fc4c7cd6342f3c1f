// SPDX-License-Identifier: MIT
// One GenTL producer: the .cti file loaded as a dynamic library, the GenTL version that it claims, and each
// of its functions as a member of the same name. All that the system knows of a producer passes through
// here.
//
// The GenTL standard defines arguments and results of the functions; GenTL.h has their types. This class
// owns no GenTL handle, and the initialised state of the producer is its owner's: GCInitLib after
// construction, TLClose and GCCloseLib before destruction. Whoever holds a GenTL handle shares the
// ownership of this object, so that the library stays loaded.
//
// Threads: nothing that a call needs changes after construction, so any thread may call any member at any
// time, two at once as far as the producer allows it. No lock is taken. The made-up error of an absent
// function belongs to the thread that met it.
#pragma once

#include "GenTL_Function.h"

#include <atomic>
#include <cstdint>
#include <string>

namespace GenICam_Interfaces {

class GenTL_Interface
{
public:
    /// What a member answers whose function the producer lacks: 0x80000000.
    static constexpr GC_ERROR functionMissingCode = absentFunctionCode;

    /// Loads the producer, asks it for its GenTL version (between a GCInitLib and a GCCloseLib of its own)
    /// and looks its functions up. Clears this thread's made-up error.
    ///
    /// A producer that answers the version query must export all that its version asks for. One that does
    /// not implement the query is taken with what it has, but for the first four functions, which are
    /// called at once.
    ///
    /// \param ctiPath  of the file, in the narrow encoding. One without a folder means the file in the
    ///                 current directory.
    /// \throws std::runtime_error  the file can't be loaded, a function is absent, or the producer refused
    ///         GCInitLib, GCCloseLib or a version query. The text names the file, and the producer's code
    ///         or the loader's words. The library then stays loaded until the process ends.
    explicit GenTL_Interface(const std::string &ctiPath);

    GenTL_Interface(const GenTL_Interface &) = delete;
    GenTL_Interface &operator=(const GenTL_Interface &) = delete;

    /// Releases the library, unless keepLoaded was called. GCCloseLib is the owner's to call before.
    ~GenTL_Interface();

    /// Leaves the library loaded until the process ends. To be called after a failed close: the producer may have
    /// threads running yet, and pulling its code away from under them would end the process. Thread: any.
    void keepLoaded() noexcept { staysLoaded = true; }

    /// Whether the producer implements both version queries.
    [[nodiscard]] bool genTLVersionKnown() const { return genTLVersionKnown_; }

    /// The version that the producer claims; a number whose query it does not implement is 0.
    [[nodiscard]] std::uint32_t genTLVersionMajor() const { return genTLVersionMajor_; }
    [[nodiscard]] std::uint32_t genTLVersionMinor() const { return genTLVersionMinor_; }

    /// For messages: "V1.5", or "V (query not implemented)".
    [[nodiscard]] std::string getGenTLVersionString() const;

    // The functions that are looked up first, and must be there.
    PlainFunction<PGCGetInfo> GCGetInfo{"GCGetInfo"};
    LastErrorFunction GCGetLastError{"GCGetLastError"};
    PlainFunction<PGCInitLib> GCInitLib{"GCInitLib"};
    PlainFunction<PGCCloseLib> GCCloseLib{"GCCloseLib"};

    // GenTL 1.0: looked up in each producer.
    PlainFunction<PGCReadPort> GCReadPort{"GCReadPort"};
    PlainFunction<PGCWritePort> GCWritePort{"GCWritePort"};
    PlainFunction<PGCGetPortURL> GCGetPortURL{"GCGetPortURL"};
    PlainFunction<PGCGetPortInfo> GCGetPortInfo{"GCGetPortInfo"};
    PlainFunction<PGCRegisterEvent> GCRegisterEvent{"GCRegisterEvent"};
    PlainFunction<PGCUnregisterEvent> GCUnregisterEvent{"GCUnregisterEvent"};
    PlainFunction<PEventGetData> EventGetData{"EventGetData"};
    PlainFunction<PEventGetDataInfo> EventGetDataInfo{"EventGetDataInfo"};
    PlainFunction<PEventGetInfo> EventGetInfo{"EventGetInfo"};
    PlainFunction<PEventFlush> EventFlush{"EventFlush"};
    PlainFunction<PEventKill> EventKill{"EventKill"};
    PlainFunction<PTLOpen> TLOpen{"TLOpen"};
    PlainFunction<PTLClose> TLClose{"TLClose"};
    PlainFunction<PTLGetInfo> TLGetInfo{"TLGetInfo"};
    PlainFunction<PTLGetNumInterfaces> TLGetNumInterfaces{"TLGetNumInterfaces"};
    PlainFunction<PTLGetInterfaceID> TLGetInterfaceID{"TLGetInterfaceID"};
    PlainFunction<PTLGetInterfaceInfo> TLGetInterfaceInfo{"TLGetInterfaceInfo"};
    PlainFunction<PTLOpenInterface> TLOpenInterface{"TLOpenInterface"};
    PlainFunction<PTLUpdateInterfaceList> TLUpdateInterfaceList{"TLUpdateInterfaceList"};
    PlainFunction<PIFClose> IFClose{"IFClose"};
    PlainFunction<PIFGetInfo> IFGetInfo{"IFGetInfo"};
    PlainFunction<PIFGetNumDevices> IFGetNumDevices{"IFGetNumDevices"};
    PlainFunction<PIFGetDeviceID> IFGetDeviceID{"IFGetDeviceID"};
    PlainFunction<PIFUpdateDeviceList> IFUpdateDeviceList{"IFUpdateDeviceList"};
    PlainFunction<PIFGetDeviceInfo> IFGetDeviceInfo{"IFGetDeviceInfo"};
    PlainFunction<PIFOpenDevice> IFOpenDevice{"IFOpenDevice"};
    PlainFunction<PDevGetPort> DevGetPort{"DevGetPort"};
    PlainFunction<PDevGetNumDataStreams> DevGetNumDataStreams{"DevGetNumDataStreams"};
    PlainFunction<PDevGetDataStreamID> DevGetDataStreamID{"DevGetDataStreamID"};
    PlainFunction<PDevOpenDataStream> DevOpenDataStream{"DevOpenDataStream"};
    PlainFunction<PDevGetInfo> DevGetInfo{"DevGetInfo"};
    PlainFunction<PDevClose> DevClose{"DevClose"};
    PlainFunction<PDSAnnounceBuffer> DSAnnounceBuffer{"DSAnnounceBuffer"};
    PlainFunction<PDSAllocAndAnnounceBuffer> DSAllocAndAnnounceBuffer{"DSAllocAndAnnounceBuffer"};
    PlainFunction<PDSFlushQueue> DSFlushQueue{"DSFlushQueue"};
    PlainFunction<PDSStartAcquisition> DSStartAcquisition{"DSStartAcquisition"};
    PlainFunction<PDSStopAcquisition> DSStopAcquisition{"DSStopAcquisition"};
    PlainFunction<PDSGetInfo> DSGetInfo{"DSGetInfo"};
    PlainFunction<PDSGetBufferID> DSGetBufferID{"DSGetBufferID"};
    PlainFunction<PDSClose> DSClose{"DSClose"};
    PlainFunction<PDSRevokeBuffer> DSRevokeBuffer{"DSRevokeBuffer"};
    PlainFunction<PDSQueueBuffer> DSQueueBuffer{"DSQueueBuffer"};
    PlainFunction<PDSGetBufferInfo> DSGetBufferInfo{"DSGetBufferInfo"};

    // GenTL 1.1
    OptionalFunction<PGCGetNumPortURLs> GCGetNumPortURLs{
        "GCGetNumPortURLs", "The instrumented TL does not implement GCGetNumPortURLs()!"};
    OptionalFunction<PGCGetPortURLInfo> GCGetPortURLInfo{
        "GCGetPortURLInfo", "The instrumented TL does not implement GCGetPortURLInfo()!"};
    OptionalFunction<PGCReadPortStacked> GCReadPortStacked{
        "GCReadPortStacked", "The instrumented TL does not implement GCReadPortStacked()!"};
    OptionalFunction<PGCWritePortStacked> GCWritePortStacked{
        "GCWritePortStacked", "The instrumented TL does not implement GCWritePortStacked()!"};

    // GenTL 1.3
    OptionalFunction<PDSGetBufferChunkData> DSGetBufferChunkData{
        "DSGetBufferChunkData", "The instrumented TL does not implement DSGetBufferChunkData()!"};

    // GenTL 1.4
    OptionalFunction<PIFGetParentTL> IFGetParentTL{"IFGetParentTL",
                                                   "The instrumented TL does not implement IFGetParentTL()!"};
    OptionalFunction<PDevGetParentIF> DevGetParentIF{
        "DevGetParentIF", "The instrumented TL does not implement DevGetParentIF()!"};
    OptionalFunction<PDSGetParentDev> DSGetParentDev{
        "DSGetParentDev", "The instrumented TL does not implement DSGetParentDev()!"};

    // GenTL 1.5
    OptionalFunction<PDSGetNumBufferParts> DSGetNumBufferParts{
        "DSGetNumBufferParts", "The instrumented TL does not implement DSGetNumBufferParts()!"};
    OptionalFunction<PDSGetBufferPartInfo> DSGetBufferPartInfo{
        "DSGetBufferPartInfo", "The instrumented TL does not implement DSGetBufferPartInfo()!"};

private:
    void load();
    void queryVersion();
    void queryVersionNumber(TL_INFO_CMD command, const char *queryFailed, std::uint32_t &number);
    void resolveLaterGroups();

    /// Looks one function up by its name; false and untouched if the producer does not export it.
    template <class Function>
    bool getFunction(Function &function);
    /// The functions of a group one by one; throws for the first that is absent.
    template <class Group>
    void require(const Group &group);
    /// The same, but while the version is not known, functions may be absent.
    template <class Group>
    void resolve(const Group &group);
    template <class Group>
    void clear(const Group &group);

    std::string ctiPath;
    void *moduleHandle = nullptr; ///< of the loaded library; null if none
    std::atomic<bool> staysLoaded = false;
    bool genTLVersionKnown_ = false;
    std::uint32_t genTLVersionMajor_ = 0;
    std::uint32_t genTLVersionMinor_ = 0;
};

} // namespace GenICam_Interfaces

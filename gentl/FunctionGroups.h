// SPDX-License-Identifier: MIT
// The functions of GenTL_Interface by the GenTL version that brought them, in the order in which they are
// looked up. For GenTL_Interface.cpp alone.
#pragma once

#include "GenTL_Interface.h"

#include <tuple>

namespace GenICam_Interfaces {

inline auto functionsOfStart(GenTL_Interface &gentl)
{
    return std::tie(gentl.GCGetInfo, gentl.GCGetLastError, gentl.GCInitLib, gentl.GCCloseLib);
}

inline auto functionsOf10(GenTL_Interface &gentl)
{
    return std::tie(
        gentl.GCReadPort, gentl.GCWritePort, gentl.GCGetPortURL, gentl.GCGetPortInfo, gentl.GCRegisterEvent,
        gentl.GCUnregisterEvent, gentl.EventGetData, gentl.EventGetDataInfo, gentl.EventGetInfo,
        gentl.EventFlush, gentl.EventKill, gentl.TLOpen, gentl.TLClose, gentl.TLGetInfo,
        gentl.TLGetNumInterfaces, gentl.TLGetInterfaceID, gentl.TLGetInterfaceInfo, gentl.TLOpenInterface,
        gentl.TLUpdateInterfaceList, gentl.IFClose, gentl.IFGetInfo, gentl.IFGetNumDevices,
        gentl.IFGetDeviceID, gentl.IFUpdateDeviceList, gentl.IFGetDeviceInfo, gentl.IFOpenDevice,
        gentl.DevGetPort, gentl.DevGetNumDataStreams, gentl.DevGetDataStreamID, gentl.DevOpenDataStream,
        gentl.DevGetInfo, gentl.DevClose, gentl.DSAnnounceBuffer, gentl.DSAllocAndAnnounceBuffer,
        gentl.DSFlushQueue, gentl.DSStartAcquisition, gentl.DSStopAcquisition, gentl.DSGetInfo,
        gentl.DSGetBufferID, gentl.DSClose, gentl.DSRevokeBuffer, gentl.DSQueueBuffer, gentl.DSGetBufferInfo);
}

inline auto functionsOf11(GenTL_Interface &gentl)
{
    return std::tie(gentl.GCGetNumPortURLs, gentl.GCGetPortURLInfo, gentl.GCReadPortStacked,
                    gentl.GCWritePortStacked);
}

inline auto functionsOf13(GenTL_Interface &gentl)
{
    return std::tie(gentl.DSGetBufferChunkData);
}

inline auto functionsOf14(GenTL_Interface &gentl)
{
    return std::tie(gentl.IFGetParentTL, gentl.DevGetParentIF, gentl.DSGetParentDev);
}

inline auto functionsOf15(GenTL_Interface &gentl)
{
    return std::tie(gentl.DSGetNumBufferParts, gentl.DSGetBufferPartInfo);
}

} // namespace GenICam_Interfaces

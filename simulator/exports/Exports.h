// SPDX-License-Identifier: MIT
// The 57 functions of GenTL 1.5 that the module exports, declared by the types of GenTL.h, so that a
// definition with other arguments doesn't compile.
#pragma once

#include "GenTL.h"
#include "TorvaneSimExport.h"

#include <type_traits>

namespace simulator {

template <class FunctionPointer>
using Function = std::remove_pointer_t<FunctionPointer>;

} // namespace simulator

extern "C" {
TORVANE_SIM_EXPORT simulator::Function<PGCGetInfo> GCGetInfo;
TORVANE_SIM_EXPORT simulator::Function<PGCGetLastError> GCGetLastError;
TORVANE_SIM_EXPORT simulator::Function<PGCInitLib> GCInitLib;
TORVANE_SIM_EXPORT simulator::Function<PGCCloseLib> GCCloseLib;
TORVANE_SIM_EXPORT simulator::Function<PGCReadPort> GCReadPort;
TORVANE_SIM_EXPORT simulator::Function<PGCWritePort> GCWritePort;
TORVANE_SIM_EXPORT simulator::Function<PGCGetPortURL> GCGetPortURL;
TORVANE_SIM_EXPORT simulator::Function<PGCGetPortInfo> GCGetPortInfo;
TORVANE_SIM_EXPORT simulator::Function<PGCRegisterEvent> GCRegisterEvent;
TORVANE_SIM_EXPORT simulator::Function<PGCUnregisterEvent> GCUnregisterEvent;
TORVANE_SIM_EXPORT simulator::Function<PEventGetData> EventGetData;
TORVANE_SIM_EXPORT simulator::Function<PEventGetDataInfo> EventGetDataInfo;
TORVANE_SIM_EXPORT simulator::Function<PEventGetInfo> EventGetInfo;
TORVANE_SIM_EXPORT simulator::Function<PEventFlush> EventFlush;
TORVANE_SIM_EXPORT simulator::Function<PEventKill> EventKill;
TORVANE_SIM_EXPORT simulator::Function<PTLOpen> TLOpen;
TORVANE_SIM_EXPORT simulator::Function<PTLClose> TLClose;
TORVANE_SIM_EXPORT simulator::Function<PTLGetInfo> TLGetInfo;
TORVANE_SIM_EXPORT simulator::Function<PTLGetNumInterfaces> TLGetNumInterfaces;
TORVANE_SIM_EXPORT simulator::Function<PTLGetInterfaceID> TLGetInterfaceID;
TORVANE_SIM_EXPORT simulator::Function<PTLGetInterfaceInfo> TLGetInterfaceInfo;
TORVANE_SIM_EXPORT simulator::Function<PTLOpenInterface> TLOpenInterface;
TORVANE_SIM_EXPORT simulator::Function<PTLUpdateInterfaceList> TLUpdateInterfaceList;
TORVANE_SIM_EXPORT simulator::Function<PIFClose> IFClose;
TORVANE_SIM_EXPORT simulator::Function<PIFGetInfo> IFGetInfo;
TORVANE_SIM_EXPORT simulator::Function<PIFGetNumDevices> IFGetNumDevices;
TORVANE_SIM_EXPORT simulator::Function<PIFGetDeviceID> IFGetDeviceID;
TORVANE_SIM_EXPORT simulator::Function<PIFUpdateDeviceList> IFUpdateDeviceList;
TORVANE_SIM_EXPORT simulator::Function<PIFGetDeviceInfo> IFGetDeviceInfo;
TORVANE_SIM_EXPORT simulator::Function<PIFOpenDevice> IFOpenDevice;
TORVANE_SIM_EXPORT simulator::Function<PDevGetPort> DevGetPort;
TORVANE_SIM_EXPORT simulator::Function<PDevGetNumDataStreams> DevGetNumDataStreams;
TORVANE_SIM_EXPORT simulator::Function<PDevGetDataStreamID> DevGetDataStreamID;
TORVANE_SIM_EXPORT simulator::Function<PDevOpenDataStream> DevOpenDataStream;
TORVANE_SIM_EXPORT simulator::Function<PDevGetInfo> DevGetInfo;
TORVANE_SIM_EXPORT simulator::Function<PDevClose> DevClose;
TORVANE_SIM_EXPORT simulator::Function<PDSAnnounceBuffer> DSAnnounceBuffer;
TORVANE_SIM_EXPORT simulator::Function<PDSAllocAndAnnounceBuffer> DSAllocAndAnnounceBuffer;
TORVANE_SIM_EXPORT simulator::Function<PDSFlushQueue> DSFlushQueue;
TORVANE_SIM_EXPORT simulator::Function<PDSStartAcquisition> DSStartAcquisition;
TORVANE_SIM_EXPORT simulator::Function<PDSStopAcquisition> DSStopAcquisition;
TORVANE_SIM_EXPORT simulator::Function<PDSGetInfo> DSGetInfo;
TORVANE_SIM_EXPORT simulator::Function<PDSGetBufferID> DSGetBufferID;
TORVANE_SIM_EXPORT simulator::Function<PDSClose> DSClose;
TORVANE_SIM_EXPORT simulator::Function<PDSRevokeBuffer> DSRevokeBuffer;
TORVANE_SIM_EXPORT simulator::Function<PDSQueueBuffer> DSQueueBuffer;
TORVANE_SIM_EXPORT simulator::Function<PDSGetBufferInfo> DSGetBufferInfo;
TORVANE_SIM_EXPORT simulator::Function<PGCGetNumPortURLs> GCGetNumPortURLs;
TORVANE_SIM_EXPORT simulator::Function<PGCGetPortURLInfo> GCGetPortURLInfo;
TORVANE_SIM_EXPORT simulator::Function<PGCReadPortStacked> GCReadPortStacked;
TORVANE_SIM_EXPORT simulator::Function<PGCWritePortStacked> GCWritePortStacked;
TORVANE_SIM_EXPORT simulator::Function<PDSGetBufferChunkData> DSGetBufferChunkData;
TORVANE_SIM_EXPORT simulator::Function<PIFGetParentTL> IFGetParentTL;
TORVANE_SIM_EXPORT simulator::Function<PDevGetParentIF> DevGetParentIF;
TORVANE_SIM_EXPORT simulator::Function<PDSGetParentDev> DSGetParentDev;
TORVANE_SIM_EXPORT simulator::Function<PDSGetNumBufferParts> DSGetNumBufferParts;
TORVANE_SIM_EXPORT simulator::Function<PDSGetBufferPartInfo> DSGetBufferPartInfo;
}

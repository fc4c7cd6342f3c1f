// SPDX-License-Identifier: MIT
// The functions of the scripted producer that only note their calls, as a table.
#include "Export.h"

// clang-format off
EXPORTED GC_ERROR GCGetPortURL(PORT_HANDLE a, char *b, std::size_t *c) { return record(__func__, a, b, c); }
EXPORTED GC_ERROR GCRegisterEvent(EVENTSRC_HANDLE a, EVENT_TYPE b, EVENT_HANDLE *c)
{ return record(__func__, a, b, c); }
EXPORTED GC_ERROR GCUnregisterEvent(EVENTSRC_HANDLE a, EVENT_TYPE b) { return record(__func__, a, b); }
EXPORTED GC_ERROR EventGetData(EVENT_HANDLE a, void *b, std::size_t *c, std::uint64_t d)
{ return record(__func__, a, b, c, d); }
EXPORTED GC_ERROR EventGetDataInfo(EVENT_HANDLE a, const void *b, std::size_t c, EVENT_DATA_INFO_CMD d,
                                   INFO_DATATYPE *e, void *f, std::size_t *g)
{ return record(__func__, a, b, c, d, e, f, g); }
EXPORTED GC_ERROR EventGetInfo(EVENT_HANDLE a, EVENT_INFO_CMD b, INFO_DATATYPE *c, void *d, std::size_t *e)
{ return record(__func__, a, b, c, d, e); }
EXPORTED GC_ERROR EventFlush(EVENT_HANDLE a) { return record(__func__, a); }
EXPORTED GC_ERROR EventKill(EVENT_HANDLE a) { return record(__func__, a); }
EXPORTED GC_ERROR TLOpen(TL_HANDLE *a) { return record(__func__, a); }
EXPORTED GC_ERROR TLClose(TL_HANDLE a) { return record(__func__, a); }
EXPORTED GC_ERROR TLGetInfo(TL_HANDLE a, TL_INFO_CMD b, INFO_DATATYPE *c, void *d, std::size_t *e)
{ return record(__func__, a, b, c, d, e); }
EXPORTED GC_ERROR TLGetNumInterfaces(TL_HANDLE a, std::uint32_t *b) { return record(__func__, a, b); }
EXPORTED GC_ERROR TLGetInterfaceID(TL_HANDLE a, std::uint32_t b, char *c, std::size_t *d)
{ return record(__func__, a, b, c, d); }
EXPORTED GC_ERROR TLGetInterfaceInfo(TL_HANDLE a, const char *b, INTERFACE_INFO_CMD c, INFO_DATATYPE *d,
                                     void *e, std::size_t *f) { return record(__func__, a, b, c, d, e, f); }
EXPORTED GC_ERROR TLOpenInterface(TL_HANDLE a, const char *b, IF_HANDLE *c)
{ return record(__func__, a, b, c); }
EXPORTED GC_ERROR TLUpdateInterfaceList(TL_HANDLE a, bool8_t *b, std::uint64_t c)
{ return record(__func__, a, b, c); }
EXPORTED GC_ERROR IFClose(IF_HANDLE a) { return record(__func__, a); }
EXPORTED GC_ERROR IFGetInfo(IF_HANDLE a, INTERFACE_INFO_CMD b, INFO_DATATYPE *c, void *d, std::size_t *e)
{ return record(__func__, a, b, c, d, e); }
EXPORTED GC_ERROR IFGetNumDevices(IF_HANDLE a, std::uint32_t *b) { return record(__func__, a, b); }
EXPORTED GC_ERROR IFGetDeviceID(IF_HANDLE a, std::uint32_t b, char *c, std::size_t *d)
{ return record(__func__, a, b, c, d); }
EXPORTED GC_ERROR IFUpdateDeviceList(IF_HANDLE a, bool8_t *b, std::uint64_t c)
{ return record(__func__, a, b, c); }
EXPORTED GC_ERROR IFGetDeviceInfo(IF_HANDLE a, const char *b, DEVICE_INFO_CMD c, INFO_DATATYPE *d, void *e,
                                  std::size_t *f) { return record(__func__, a, b, c, d, e, f); }
EXPORTED GC_ERROR IFOpenDevice(IF_HANDLE a, const char *b, DEVICE_ACCESS_FLAGS c, DEV_HANDLE *d)
{ return record(__func__, a, b, c, d); }
EXPORTED GC_ERROR DevGetPort(DEV_HANDLE a, PORT_HANDLE *b) { return record(__func__, a, b); }
EXPORTED GC_ERROR DevGetNumDataStreams(DEV_HANDLE a, std::uint32_t *b) { return record(__func__, a, b); }
EXPORTED GC_ERROR DevGetDataStreamID(DEV_HANDLE a, std::uint32_t b, char *c, std::size_t *d)
{ return record(__func__, a, b, c, d); }
EXPORTED GC_ERROR DevOpenDataStream(DEV_HANDLE a, const char *b, DS_HANDLE *c)
{ return record(__func__, a, b, c); }
EXPORTED GC_ERROR DevGetInfo(DEV_HANDLE a, DEVICE_INFO_CMD b, INFO_DATATYPE *c, void *d, std::size_t *e)
{ return record(__func__, a, b, c, d, e); }
EXPORTED GC_ERROR DevClose(DEV_HANDLE a) { return record(__func__, a); }
EXPORTED GC_ERROR DSAnnounceBuffer(DS_HANDLE a, void *b, std::size_t c, void *d, BUFFER_HANDLE *e)
{ return record(__func__, a, b, c, d, e); }
EXPORTED GC_ERROR DSAllocAndAnnounceBuffer(DS_HANDLE a, std::size_t b, void *c, BUFFER_HANDLE *d)
{ return record(__func__, a, b, c, d); }
EXPORTED GC_ERROR DSFlushQueue(DS_HANDLE a, ACQ_QUEUE_TYPE b) { return record(__func__, a, b); }
EXPORTED GC_ERROR DSStartAcquisition(DS_HANDLE a, ACQ_START_FLAGS b, std::uint64_t c)
{ return record(__func__, a, b, c); }
EXPORTED GC_ERROR DSStopAcquisition(DS_HANDLE a, ACQ_STOP_FLAGS b) { return record(__func__, a, b); }
EXPORTED GC_ERROR DSGetInfo(DS_HANDLE a, STREAM_INFO_CMD b, INFO_DATATYPE *c, void *d, std::size_t *e)
{ return record(__func__, a, b, c, d, e); }
EXPORTED GC_ERROR DSGetBufferID(DS_HANDLE a, std::uint32_t b, BUFFER_HANDLE *c)
{ return record(__func__, a, b, c); }
EXPORTED GC_ERROR DSClose(DS_HANDLE a) { return record(__func__, a); }
EXPORTED GC_ERROR DSRevokeBuffer(DS_HANDLE a, BUFFER_HANDLE b, void **c, void **d)
{ return record(__func__, a, b, c, d); }
EXPORTED GC_ERROR DSQueueBuffer(DS_HANDLE a, BUFFER_HANDLE b) { return record(__func__, a, b); }
EXPORTED GC_ERROR DSGetBufferInfo(DS_HANDLE a, BUFFER_HANDLE b, BUFFER_INFO_CMD c, INFO_DATATYPE *d, void *e,
                                  std::size_t *f) { return record(__func__, a, b, c, d, e, f); }
EXPORTED GC_ERROR GCGetNumPortURLs(PORT_HANDLE a, std::uint32_t *b) { return record(__func__, a, b); }
EXPORTED GC_ERROR GCReadPortStacked(PORT_HANDLE a, PORT_REGISTER_STACK_ENTRY *b, std::size_t *c)
{ return record(__func__, a, b, c); }
EXPORTED GC_ERROR GCWritePortStacked(PORT_HANDLE a, PORT_REGISTER_STACK_ENTRY *b, std::size_t *c)
{ return record(__func__, a, b, c); }
EXPORTED GC_ERROR DSGetBufferChunkData(DS_HANDLE a, BUFFER_HANDLE b, SINGLE_CHUNK_DATA *c, std::size_t *d)
{ return record(__func__, a, b, c, d); }
EXPORTED GC_ERROR IFGetParentTL(IF_HANDLE a, TL_HANDLE *b) { return record(__func__, a, b); }
EXPORTED GC_ERROR DevGetParentIF(DEV_HANDLE a, IF_HANDLE *b) { return record(__func__, a, b); }
EXPORTED GC_ERROR DSGetParentDev(DS_HANDLE a, DEV_HANDLE *b) { return record(__func__, a, b); }
EXPORTED GC_ERROR DSGetNumBufferParts(DS_HANDLE a, BUFFER_HANDLE b, std::uint32_t *c)
{ return record(__func__, a, b, c); }
EXPORTED GC_ERROR DSGetBufferPartInfo(DS_HANDLE a, BUFFER_HANDLE b, std::uint32_t c, BUFFER_PART_INFO_CMD d,
                                      INFO_DATATYPE *e, void *f, std::size_t *g)
{ return record(__func__, a, b, c, d, e, f, g); }
// clang-format on

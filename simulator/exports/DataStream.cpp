// SPDX-License-Identifier: MIT
// The functions of data streams. The simulated cameras have none, so no handle of one exists, and each of
// these answers that its handle is none.
#include "Call.h"
#include "Exports.h"

using namespace simulator;

namespace {

GC_ERROR refuse(std::string_view function, DS_HANDLE handle)
{
    return Call{function, Handle{handle}}.answer([](Producer &) {
        throw GenTLError(GC_ERR_INVALID_HANDLE, "not a data stream: the cameras have none");
    });
}

} // namespace

GC_ERROR DSAnnounceBuffer(DS_HANDLE handle, void *, std::size_t, void *, BUFFER_HANDLE *)
{
    return refuse("DSAnnounceBuffer", handle);
}

GC_ERROR DSAllocAndAnnounceBuffer(DS_HANDLE handle, std::size_t, void *, BUFFER_HANDLE *)
{
    return refuse("DSAllocAndAnnounceBuffer", handle);
}

GC_ERROR DSFlushQueue(DS_HANDLE handle, ACQ_QUEUE_TYPE)
{
    return refuse("DSFlushQueue", handle);
}

GC_ERROR DSStartAcquisition(DS_HANDLE handle, ACQ_START_FLAGS, std::uint64_t)
{
    return refuse("DSStartAcquisition", handle);
}

GC_ERROR DSStopAcquisition(DS_HANDLE handle, ACQ_STOP_FLAGS)
{
    return refuse("DSStopAcquisition", handle);
}

GC_ERROR DSGetInfo(DS_HANDLE handle, STREAM_INFO_CMD, INFO_DATATYPE *, void *, std::size_t *)
{
    return refuse("DSGetInfo", handle);
}

GC_ERROR DSGetBufferID(DS_HANDLE handle, std::uint32_t, BUFFER_HANDLE *)
{
    return refuse("DSGetBufferID", handle);
}

GC_ERROR DSClose(DS_HANDLE handle)
{
    return refuse("DSClose", handle);
}

GC_ERROR DSRevokeBuffer(DS_HANDLE handle, BUFFER_HANDLE, void **, void **)
{
    return refuse("DSRevokeBuffer", handle);
}

GC_ERROR DSQueueBuffer(DS_HANDLE handle, BUFFER_HANDLE)
{
    return refuse("DSQueueBuffer", handle);
}

GC_ERROR DSGetBufferInfo(DS_HANDLE handle, BUFFER_HANDLE, BUFFER_INFO_CMD, INFO_DATATYPE *, void *,
                         std::size_t *)
{
    return refuse("DSGetBufferInfo", handle);
}

GC_ERROR DSGetBufferChunkData(DS_HANDLE handle, BUFFER_HANDLE, SINGLE_CHUNK_DATA *, std::size_t *)
{
    return refuse("DSGetBufferChunkData", handle);
}

GC_ERROR DSGetParentDev(DS_HANDLE handle, DEV_HANDLE *)
{
    return refuse("DSGetParentDev", handle);
}

GC_ERROR DSGetNumBufferParts(DS_HANDLE handle, BUFFER_HANDLE, std::uint32_t *)
{
    return refuse("DSGetNumBufferParts", handle);
}

GC_ERROR DSGetBufferPartInfo(DS_HANDLE handle, BUFFER_HANDLE, std::uint32_t, BUFFER_PART_INFO_CMD,
                             INFO_DATATYPE *, void *, std::size_t *)
{
    return refuse("DSGetBufferPartInfo", handle);
}

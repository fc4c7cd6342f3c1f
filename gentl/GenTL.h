// SPDX-License-Identifier: MIT
// The GenTL C interface as consumers and producers share it: handles, codes, commands, structures and the
// types of the exported functions, up to version 1.5 of the standard. Names and numbers are the standard's
// and never change.
//
// The binding (GenTL_Interface) calls producers through these types, and the simulated producer implements
// them. No prototypes stand here: a consumer looks the functions up by name. The calling convention is the
// platform's default, which is the standard's on 64 bit; 32-bit x86 would need stdcall and is not supported.
#pragma once

#include <cstddef>
#include <cstdint>

static_assert(sizeof(void *) == 8, "only 64-bit producers are supported");

using GC_ERROR = std::int32_t;
using bool8_t = std::uint8_t;

// All handles are opaque; null is the invalid one. A port handle may be a TL, IF, DEV, DS or buffer
// handle, or the remote device's port.
using TL_HANDLE = void *;
using IF_HANDLE = void *;
using DEV_HANDLE = void *;
using DS_HANDLE = void *;
using PORT_HANDLE = void *;
using BUFFER_HANDLE = void *;
using EVENTSRC_HANDLE = void *;
using EVENT_HANDLE = void *;

/// A time-out in milliseconds that never ends.
inline constexpr std::uint64_t GENTL_INFINITE = ~std::uint64_t{0};

/// Results of every function: 0 is success, negative is an error.
enum GC_ERROR_LIST : std::int32_t
{
    GC_ERR_SUCCESS = 0,
    GC_ERR_ERROR = -1001,
    GC_ERR_NOT_INITIALIZED = -1002,
    GC_ERR_NOT_IMPLEMENTED = -1003,
    GC_ERR_RESOURCE_IN_USE = -1004,
    GC_ERR_ACCESS_DENIED = -1005,
    GC_ERR_INVALID_HANDLE = -1006,
    GC_ERR_INVALID_ID = -1007,
    GC_ERR_NO_DATA = -1008,
    GC_ERR_INVALID_PARAMETER = -1009,
    GC_ERR_IO = -1010,
    GC_ERR_TIMEOUT = -1011,
    GC_ERR_ABORT = -1012,
    GC_ERR_INVALID_BUFFER = -1013,
    GC_ERR_NOT_AVAILABLE = -1014,
    GC_ERR_INVALID_ADDRESS = -1015,
    GC_ERR_BUFFER_TOO_SMALL = -1016,
    GC_ERR_INVALID_INDEX = -1017,
    GC_ERR_PARSING_CHUNK_DATA = -1018,
    GC_ERR_INVALID_VALUE = -1019,
    GC_ERR_RESOURCE_EXHAUSTED = -1020,
    GC_ERR_OUT_OF_MEMORY = -1021,
    GC_ERR_BUSY = -1022,
    GC_ERR_AMBIGUOUS = -1023,
    GC_ERR_CUSTOM_ID = -10000,
};

enum INFO_DATATYPE_LIST : std::int32_t
{
    INFO_DATATYPE_UNKNOWN = 0,
    INFO_DATATYPE_STRING = 1,
    INFO_DATATYPE_STRINGLIST = 2,
    INFO_DATATYPE_INT16 = 3,
    INFO_DATATYPE_UINT16 = 4,
    INFO_DATATYPE_INT32 = 5,
    INFO_DATATYPE_UINT32 = 6,
    INFO_DATATYPE_INT64 = 7,
    INFO_DATATYPE_UINT64 = 8,
    INFO_DATATYPE_FLOAT64 = 9,
    INFO_DATATYPE_PTR = 10,
    INFO_DATATYPE_BOOL8 = 11,
    INFO_DATATYPE_SIZET = 12,
    INFO_DATATYPE_BUFFER = 13,
    INFO_DATATYPE_PTRDIFF = 14,
    INFO_DATATYPE_CUSTOM_ID = 1000,
};
using INFO_DATATYPE = std::int32_t;

enum TL_CHAR_ENCODING_LIST : std::int32_t
{
    TL_CHAR_ENCODING_ASCII = 0,
    TL_CHAR_ENCODING_UTF8 = 1,
};
using TL_CHAR_ENCODING = std::int32_t;

/// In comments: the data type that the query answers with.
enum TL_INFO_CMD_LIST : std::int32_t
{
    TL_INFO_ID = 0,               // STRING
    TL_INFO_VENDOR = 1,           // STRING
    TL_INFO_MODEL = 2,            // STRING
    TL_INFO_VERSION = 3,          // STRING
    TL_INFO_TLTYPE = 4,           // STRING
    TL_INFO_NAME = 5,             // STRING
    TL_INFO_PATHNAME = 6,         // STRING
    TL_INFO_DISPLAYNAME = 7,      // STRING
    TL_INFO_CHAR_ENCODING = 8,    // INT32
    TL_INFO_GENTL_VER_MAJOR = 9,  // UINT32
    TL_INFO_GENTL_VER_MINOR = 10, // UINT32
    TL_INFO_CUSTOM_ID = 1000,
};
using TL_INFO_CMD = std::int32_t;

/// In comments: the data type that the query answers with.
enum INTERFACE_INFO_CMD_LIST : std::int32_t
{
    INTERFACE_INFO_ID = 0,          // STRING
    INTERFACE_INFO_DISPLAYNAME = 1, // STRING
    INTERFACE_INFO_TLTYPE = 2,      // STRING
    INTERFACE_INFO_CUSTOM_ID = 1000,
};
using INTERFACE_INFO_CMD = std::int32_t;

enum DEVICE_ACCESS_FLAGS_LIST : std::int32_t
{
    DEVICE_ACCESS_UNKNOWN = 0,
    DEVICE_ACCESS_NONE = 1,
    DEVICE_ACCESS_READONLY = 2,
    DEVICE_ACCESS_CONTROL = 3,
    DEVICE_ACCESS_EXCLUSIVE = 4,
    DEVICE_ACCESS_CUSTOM_ID = 1000,
};
using DEVICE_ACCESS_FLAGS = std::int32_t;

enum DEVICE_ACCESS_STATUS_LIST : std::int32_t
{
    DEVICE_ACCESS_STATUS_UNKNOWN = 0,
    DEVICE_ACCESS_STATUS_READWRITE = 1,
    DEVICE_ACCESS_STATUS_READONLY = 2,
    DEVICE_ACCESS_STATUS_NOACCESS = 3,
    DEVICE_ACCESS_STATUS_BUSY = 4,
    DEVICE_ACCESS_STATUS_OPEN_READWRITE = 5,
    DEVICE_ACCESS_STATUS_OPEN_READONLY = 6,
    DEVICE_ACCESS_STATUS_CUSTOM_ID = 1000,
};
using DEVICE_ACCESS_STATUS = std::int32_t;

/// In comments: the data type that the query answers with.
enum DEVICE_INFO_CMD_LIST : std::int32_t
{
    DEVICE_INFO_ID = 0,                  // STRING
    DEVICE_INFO_VENDOR = 1,              // STRING
    DEVICE_INFO_MODEL = 2,               // STRING
    DEVICE_INFO_TLTYPE = 3,              // STRING
    DEVICE_INFO_DISPLAYNAME = 4,         // STRING
    DEVICE_INFO_ACCESS_STATUS = 5,       // INT32
    DEVICE_INFO_USER_DEFINED_NAME = 6,   // STRING
    DEVICE_INFO_SERIAL_NUMBER = 7,       // STRING
    DEVICE_INFO_VERSION = 8,             // STRING
    DEVICE_INFO_TIMESTAMP_FREQUENCY = 9, // UINT64
    DEVICE_INFO_CUSTOM_ID = 1000,
};
using DEVICE_INFO_CMD = std::int32_t;

/// In comments: the data type that the query answers with.
enum PORT_INFO_CMD_LIST : std::int32_t
{
    PORT_INFO_ID = 0,            // STRING
    PORT_INFO_VENDOR = 1,        // STRING
    PORT_INFO_MODEL = 2,         // STRING
    PORT_INFO_TLTYPE = 3,        // STRING
    PORT_INFO_MODULE = 4,        // STRING
    PORT_INFO_LITTLE_ENDIAN = 5, // BOOL8
    PORT_INFO_BIG_ENDIAN = 6,    // BOOL8
    PORT_INFO_ACCESS_READ = 7,   // BOOL8
    PORT_INFO_ACCESS_WRITE = 8,  // BOOL8
    PORT_INFO_ACCESS_NA = 9,     // BOOL8
    PORT_INFO_ACCESS_NI = 10,    // BOOL8
    PORT_INFO_VERSION = 11,      // STRING
    PORT_INFO_PORTNAME = 12,     // STRING
    PORT_INFO_CUSTOM_ID = 1000,
};
using PORT_INFO_CMD = std::int32_t;

/// In comments: the data type that the query answers with.
enum URL_INFO_CMD_LIST : std::int32_t
{
    URL_INFO_URL = 0,                   // STRING
    URL_INFO_SCHEMA_VER_MAJOR = 1,      // INT32
    URL_INFO_SCHEMA_VER_MINOR = 2,      // INT32
    URL_INFO_FILE_VER_MAJOR = 3,        // INT32
    URL_INFO_FILE_VER_MINOR = 4,        // INT32
    URL_INFO_FILE_VER_SUBMINOR = 5,     // INT32
    URL_INFO_FILE_SHA1_HASH = 6,        // BUFFER
    URL_INFO_FILE_REGISTER_ADDRESS = 7, // UINT64
    URL_INFO_FILE_SIZE = 8,             // UINT64
    URL_INFO_SCHEME = 9,                // INT32
    URL_INFO_FILENAME = 10,             // STRING
    URL_INFO_CUSTOM_ID = 1000,
};
using URL_INFO_CMD = std::int32_t;

enum ACQ_STOP_FLAGS_LIST : std::int32_t
{
    ACQ_STOP_FLAGS_DEFAULT = 0,
    ACQ_STOP_FLAGS_KILL = 1,
    ACQ_STOP_FLAGS_CUSTOM_ID = 1000,
};
using ACQ_STOP_FLAGS = std::int32_t;

enum ACQ_START_FLAGS_LIST : std::int32_t
{
    ACQ_START_FLAGS_DEFAULT = 0,
    ACQ_START_FLAGS_CUSTOM_ID = 1000,
};
using ACQ_START_FLAGS = std::int32_t;

enum ACQ_QUEUE_TYPE_LIST : std::int32_t
{
    ACQ_QUEUE_INPUT_TO_OUTPUT = 0,
    ACQ_QUEUE_OUTPUT_DISCARD = 1,
    ACQ_QUEUE_ALL_TO_INPUT = 2,
    ACQ_QUEUE_UNQUEUED_TO_INPUT = 3,
    ACQ_QUEUE_ALL_DISCARD = 4,
    ACQ_QUEUE_CUSTOM_ID = 1000,
};
using ACQ_QUEUE_TYPE = std::int32_t;

/// In comments: the data type that the query answers with.
enum STREAM_INFO_CMD_LIST : std::int32_t
{
    STREAM_INFO_ID = 0,                         // STRING
    STREAM_INFO_NUM_DELIVERED = 1,              // UINT64
    STREAM_INFO_NUM_UNDERRUN = 2,               // UINT64
    STREAM_INFO_NUM_ANNOUNCED = 3,              // SIZET
    STREAM_INFO_NUM_QUEUED = 4,                 // SIZET
    STREAM_INFO_NUM_AWAIT_DELIVERY = 5,         // SIZET
    STREAM_INFO_NUM_STARTED = 6,                // UINT64
    STREAM_INFO_PAYLOAD_SIZE = 7,               // SIZET
    STREAM_INFO_IS_GRABBING = 8,                // BOOL8
    STREAM_INFO_DEFINES_PAYLOADSIZE = 9,        // BOOL8
    STREAM_INFO_TLTYPE = 10,                    // STRING
    STREAM_INFO_NUM_CHUNKS_MAX = 11,            // SIZET
    STREAM_INFO_BUF_ANNOUNCE_MIN = 12,          // SIZET
    STREAM_INFO_BUF_ALIGNMENT = 13,             // SIZET
    STREAM_INFO_FLOW_TABLE = 14,                // BUFFER
    STREAM_INFO_GENDC_PREFETCH_DESCRIPTOR = 15, // BUFFER
    STREAM_INFO_CUSTOM_ID = 1000,
};
using STREAM_INFO_CMD = std::int32_t;

/// In comments: the data type that the query answers with.
enum BUFFER_INFO_CMD_LIST : std::int32_t
{
    BUFFER_INFO_BASE = 0,                        // PTR
    BUFFER_INFO_SIZE = 1,                        // SIZET
    BUFFER_INFO_USER_PTR = 2,                    // PTR
    BUFFER_INFO_TIMESTAMP = 3,                   // UINT64
    BUFFER_INFO_NEW_DATA = 4,                    // BOOL8
    BUFFER_INFO_IS_QUEUED = 5,                   // BOOL8
    BUFFER_INFO_IS_ACQUIRING = 6,                // BOOL8
    BUFFER_INFO_IS_INCOMPLETE = 7,               // BOOL8
    BUFFER_INFO_TLTYPE = 8,                      // STRING
    BUFFER_INFO_SIZE_FILLED = 9,                 // SIZET
    BUFFER_INFO_WIDTH = 10,                      // SIZET
    BUFFER_INFO_HEIGHT = 11,                     // SIZET
    BUFFER_INFO_XOFFSET = 12,                    // SIZET
    BUFFER_INFO_YOFFSET = 13,                    // SIZET
    BUFFER_INFO_XPADDING = 14,                   // SIZET
    BUFFER_INFO_YPADDING = 15,                   // SIZET
    BUFFER_INFO_FRAMEID = 16,                    // UINT64
    BUFFER_INFO_IMAGEPRESENT = 17,               // BOOL8
    BUFFER_INFO_IMAGEOFFSET = 18,                // SIZET
    BUFFER_INFO_PAYLOADTYPE = 19,                // SIZET
    BUFFER_INFO_PIXELFORMAT = 20,                // UINT64
    BUFFER_INFO_PIXELFORMAT_NAMESPACE = 21,      // UINT64
    BUFFER_INFO_DELIVERED_IMAGEHEIGHT = 22,      // SIZET
    BUFFER_INFO_DELIVERED_CHUNKPAYLOADSIZE = 23, // SIZET
    BUFFER_INFO_CHUNKLAYOUTID = 24,              // UINT64
    BUFFER_INFO_FILENAME = 25,                   // STRING
    BUFFER_INFO_PIXEL_ENDIANNESS = 26,           // INT32
    BUFFER_INFO_DATA_SIZE = 27,                  // SIZET
    BUFFER_INFO_TIMESTAMP_NS = 28,               // UINT64
    BUFFER_INFO_DATA_LARGER_THAN_BUFFER = 29,    // BOOL8
    BUFFER_INFO_CONTAINS_CHUNKDATA = 30,         // BOOL8
    BUFFER_INFO_IS_COMPOSITE = 31,               // BOOL8
    BUFFER_INFO_CUSTOM_ID = 1000,
};
using BUFFER_INFO_CMD = std::int32_t;

/// In comments: the data type that the query answers with.
enum BUFFER_PART_INFO_CMD_LIST : std::int32_t
{
    BUFFER_PART_INFO_BASE = 0,                   // PTR
    BUFFER_PART_INFO_DATA_SIZE = 1,              // SIZET
    BUFFER_PART_INFO_DATA_TYPE = 2,              // SIZET
    BUFFER_PART_INFO_DATA_FORMAT = 3,            // UINT64
    BUFFER_PART_INFO_DATA_FORMAT_NAMESPACE = 4,  // UINT64
    BUFFER_PART_INFO_WIDTH = 5,                  // SIZET
    BUFFER_PART_INFO_HEIGHT = 6,                 // SIZET
    BUFFER_PART_INFO_XOFFSET = 7,                // SIZET
    BUFFER_PART_INFO_YOFFSET = 8,                // SIZET
    BUFFER_PART_INFO_XPADDING = 9,               // SIZET
    BUFFER_PART_INFO_SOURCE_ID = 10,             // UINT64
    BUFFER_PART_INFO_DELIVERED_IMAGEHEIGHT = 11, // SIZET
    BUFFER_PART_INFO_REGION_ID = 12,             // UINT64
    BUFFER_PART_INFO_DATA_PURPOSE_ID = 13,       // UINT64
    BUFFER_PART_INFO_CUSTOM_ID = 1000,
};
using BUFFER_PART_INFO_CMD = std::int32_t;

enum EVENT_TYPE_LIST : std::int32_t
{
    EVENT_ERROR = 0,
    EVENT_NEW_BUFFER = 1,
    EVENT_FEATURE_INVALIDATE = 2,
    EVENT_FEATURE_CHANGE = 3,
    EVENT_REMOTE_DEVICE = 4,
    EVENT_MODULE = 5,
    EVENT_CUSTOM_ID = 1000,
};
using EVENT_TYPE = std::int32_t;

/// In comments: the data type that the query answers with.
enum EVENT_INFO_CMD_LIST : std::int32_t
{
    EVENT_EVENT_TYPE = 0,         // INT32
    EVENT_NUM_IN_QUEUE = 1,       // SIZET
    EVENT_NUM_FIRED = 2,          // UINT64
    EVENT_SIZE_MAX = 3,           // SIZET
    EVENT_INFO_DATA_SIZE_MAX = 4, // SIZET
    EVENT_INFO_CUSTOM_ID = 1000,
};
using EVENT_INFO_CMD = std::int32_t;

/// In comments: the data type that the query answers with.
enum EVENT_DATA_INFO_CMD_LIST : std::int32_t
{
    EVENT_DATA_ID = 0,
    EVENT_DATA_VALUE = 1,
    EVENT_DATA_NUMID = 2, // UINT64
    EVENT_DATA_CUSTOM_ID = 1000,
};
using EVENT_DATA_INFO_CMD = std::int32_t;

#pragma pack(push, 1)

/// One access of a stacked read or write.
struct PORT_REGISTER_STACK_ENTRY
{
    std::uint64_t Address;
    void *pBuffer; ///< the caller's, of Size bytes
    std::size_t Size;
};

/// Where one chunk lies within a buffer.
struct SINGLE_CHUNK_DATA
{
    std::uint64_t ChunkID;
    std::ptrdiff_t ChunkOffset; ///< bytes from the buffer's start
    std::size_t ChunkLength;    ///< bytes
};

#pragma pack(pop)

static_assert(sizeof(PORT_REGISTER_STACK_ENTRY) ==
                  sizeof(std::uint64_t) + sizeof(void *) + sizeof(std::size_t),
              "GenTL packs its structures to 1 byte");
static_assert(sizeof(SINGLE_CHUNK_DATA) == sizeof(std::uint64_t) + 2 * sizeof(std::size_t),
              "GenTL packs its structures to 1 byte");

// The types of the functions, each named after its function with a P before it.
using PGCGetInfo = GC_ERROR (*)(TL_INFO_CMD, INFO_DATATYPE *, void *, std::size_t *);
using PGCGetLastError = GC_ERROR (*)(GC_ERROR *, char *, std::size_t *);
using PGCInitLib = GC_ERROR (*)();
using PGCCloseLib = GC_ERROR (*)();
using PGCReadPort = GC_ERROR (*)(PORT_HANDLE, std::uint64_t, void *, std::size_t *);
using PGCWritePort = GC_ERROR (*)(PORT_HANDLE, std::uint64_t, const void *, std::size_t *);
using PGCGetPortURL = GC_ERROR (*)(PORT_HANDLE, char *, std::size_t *);
using PGCGetPortInfo = GC_ERROR (*)(PORT_HANDLE, PORT_INFO_CMD, INFO_DATATYPE *, void *, std::size_t *);
using PGCRegisterEvent = GC_ERROR (*)(EVENTSRC_HANDLE, EVENT_TYPE, EVENT_HANDLE *);
using PGCUnregisterEvent = GC_ERROR (*)(EVENTSRC_HANDLE, EVENT_TYPE);
using PEventGetData = GC_ERROR (*)(EVENT_HANDLE, void *, std::size_t *, std::uint64_t);
using PEventGetDataInfo = GC_ERROR (*)(EVENT_HANDLE, const void *, std::size_t, EVENT_DATA_INFO_CMD,
                                       INFO_DATATYPE *, void *, std::size_t *);
using PEventGetInfo = GC_ERROR (*)(EVENT_HANDLE, EVENT_INFO_CMD, INFO_DATATYPE *, void *, std::size_t *);
using PEventFlush = GC_ERROR (*)(EVENT_HANDLE);
using PEventKill = GC_ERROR (*)(EVENT_HANDLE);
using PTLOpen = GC_ERROR (*)(TL_HANDLE *);
using PTLClose = GC_ERROR (*)(TL_HANDLE);
using PTLGetInfo = GC_ERROR (*)(TL_HANDLE, TL_INFO_CMD, INFO_DATATYPE *, void *, std::size_t *);
using PTLGetNumInterfaces = GC_ERROR (*)(TL_HANDLE, std::uint32_t *);
using PTLGetInterfaceID = GC_ERROR (*)(TL_HANDLE, std::uint32_t, char *, std::size_t *);
using PTLGetInterfaceInfo = GC_ERROR (*)(TL_HANDLE, const char *, INTERFACE_INFO_CMD, INFO_DATATYPE *, void *,
                                         std::size_t *);
using PTLOpenInterface = GC_ERROR (*)(TL_HANDLE, const char *, IF_HANDLE *);
using PTLUpdateInterfaceList = GC_ERROR (*)(TL_HANDLE, bool8_t *, std::uint64_t);
using PIFClose = GC_ERROR (*)(IF_HANDLE);
using PIFGetInfo = GC_ERROR (*)(IF_HANDLE, INTERFACE_INFO_CMD, INFO_DATATYPE *, void *, std::size_t *);
using PIFGetNumDevices = GC_ERROR (*)(IF_HANDLE, std::uint32_t *);
using PIFGetDeviceID = GC_ERROR (*)(IF_HANDLE, std::uint32_t, char *, std::size_t *);
using PIFUpdateDeviceList = GC_ERROR (*)(IF_HANDLE, bool8_t *, std::uint64_t);
using PIFGetDeviceInfo = GC_ERROR (*)(IF_HANDLE, const char *, DEVICE_INFO_CMD, INFO_DATATYPE *, void *,
                                      std::size_t *);
using PIFOpenDevice = GC_ERROR (*)(IF_HANDLE, const char *, DEVICE_ACCESS_FLAGS, DEV_HANDLE *);
using PDevGetPort = GC_ERROR (*)(DEV_HANDLE, PORT_HANDLE *);
using PDevGetNumDataStreams = GC_ERROR (*)(DEV_HANDLE, std::uint32_t *);
using PDevGetDataStreamID = GC_ERROR (*)(DEV_HANDLE, std::uint32_t, char *, std::size_t *);
using PDevOpenDataStream = GC_ERROR (*)(DEV_HANDLE, const char *, DS_HANDLE *);
using PDevGetInfo = GC_ERROR (*)(DEV_HANDLE, DEVICE_INFO_CMD, INFO_DATATYPE *, void *, std::size_t *);
using PDevClose = GC_ERROR (*)(DEV_HANDLE);
using PDSAnnounceBuffer = GC_ERROR (*)(DS_HANDLE, void *, std::size_t, void *, BUFFER_HANDLE *);
using PDSAllocAndAnnounceBuffer = GC_ERROR (*)(DS_HANDLE, std::size_t, void *, BUFFER_HANDLE *);
using PDSFlushQueue = GC_ERROR (*)(DS_HANDLE, ACQ_QUEUE_TYPE);
using PDSStartAcquisition = GC_ERROR (*)(DS_HANDLE, ACQ_START_FLAGS, std::uint64_t);
using PDSStopAcquisition = GC_ERROR (*)(DS_HANDLE, ACQ_STOP_FLAGS);
using PDSGetInfo = GC_ERROR (*)(DS_HANDLE, STREAM_INFO_CMD, INFO_DATATYPE *, void *, std::size_t *);
using PDSGetBufferID = GC_ERROR (*)(DS_HANDLE, std::uint32_t, BUFFER_HANDLE *);
using PDSClose = GC_ERROR (*)(DS_HANDLE);
using PDSRevokeBuffer = GC_ERROR (*)(DS_HANDLE, BUFFER_HANDLE, void **, void **);
using PDSQueueBuffer = GC_ERROR (*)(DS_HANDLE, BUFFER_HANDLE);
using PDSGetBufferInfo = GC_ERROR (*)(DS_HANDLE, BUFFER_HANDLE, BUFFER_INFO_CMD, INFO_DATATYPE *, void *,
                                      std::size_t *);
using PGCGetNumPortURLs = GC_ERROR (*)(PORT_HANDLE, std::uint32_t *);
using PGCGetPortURLInfo = GC_ERROR (*)(PORT_HANDLE, std::uint32_t, URL_INFO_CMD, INFO_DATATYPE *, void *,
                                       std::size_t *);
using PGCReadPortStacked = GC_ERROR (*)(PORT_HANDLE, PORT_REGISTER_STACK_ENTRY *, std::size_t *);
using PGCWritePortStacked = GC_ERROR (*)(PORT_HANDLE, PORT_REGISTER_STACK_ENTRY *, std::size_t *);
using PDSGetBufferChunkData = GC_ERROR (*)(DS_HANDLE, BUFFER_HANDLE, SINGLE_CHUNK_DATA *, std::size_t *);
using PIFGetParentTL = GC_ERROR (*)(IF_HANDLE, TL_HANDLE *);
using PDevGetParentIF = GC_ERROR (*)(DEV_HANDLE, IF_HANDLE *);
using PDSGetParentDev = GC_ERROR (*)(DS_HANDLE, DEV_HANDLE *);
using PDSGetNumBufferParts = GC_ERROR (*)(DS_HANDLE, BUFFER_HANDLE, std::uint32_t *);
using PDSGetBufferPartInfo = GC_ERROR (*)(DS_HANDLE, BUFFER_HANDLE, std::uint32_t, BUFFER_PART_INFO_CMD,
                                          INFO_DATATYPE *, void *, std::size_t *);

/// Answers of URL_INFO_SCHEME.
enum URL_SCHEME_LIST : std::int32_t
{
    URL_SCHEME_LOCAL = 0, // the camera's register space
    URL_SCHEME_HTTP = 1,
    URL_SCHEME_FILE = 2, // a file of the host
};

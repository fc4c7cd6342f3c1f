// SPDX-License-Identifier: MIT
#include "GenTLLibrary.h"

#include "ConsoleIO.h"
#include "GenTL.h"
#include "GenTL_Interface.h"
#include "LastError.h"
#include "Reconciliation.h"
#include "TLInterface.h"
#include "TextBuffer.h"

#include <algorithm>
#include <exception>
#include <utility>

using GenICam_Interfaces::GenTL_Interface;

namespace {

// Bytes, whatever the producer says that it needs.
constexpr std::size_t LongestVendor = 65'536;

// The interfaces of one library, for reconcile.
struct InterfaceLevel
{
    static constexpr const char *updateFailure = "ERROR: TLUpdateInterfaceList() failed with code ";
    static constexpr const char *countFailure = "ERROR: TLGetNumInterfaces() failed with code ";
    static constexpr const char *countRefusal = "ERROR: TLGetNumInterfaces() delivered ";
    static constexpr const char *identifierFailure = "ERROR: TLGetInterfaceID(";
    static constexpr bool clearsEachTime = false;

    GC_ERROR update(bool8_t *changed, std::uint64_t timeout)
    {
        return gentl->TLUpdateInterfaceList(parent->tlHandle(), changed, timeout);
    }
    GC_ERROR count(std::uint32_t *number) { return gentl->TLGetNumInterfaces(parent->tlHandle(), number); }
    GC_ERROR identifier(std::uint32_t index, char *buffer, std::size_t *size)
    {
        return gentl->TLGetInterfaceID(parent->tlHandle(), index, buffer, size);
    }
    TLInterface *create(std::string id)
    {
        auto *child = new TLInterface(parent, std::move(id));
        if (openNew)
            child->open();
        return child;
    }
    void destroy(TLInterface *child)
    {
        child->retire(retired);
        retired.emplace_back(child);
    }

    GenTLLibrary *parent;
    std::shared_ptr<GenTL_Interface> gentl;
    bool openNew;
    Roster &roster;
    RetiredObjects &retired;
};

} // namespace

GenTLLibrary::GenTLLibrary() = default;

GenTLLibrary::GenTLLibrary(const std::string &path)
{
    initLibrary(path);
}

GenTLLibrary::~GenTLLibrary()
{
    for (TLInterface *child : interfaces_)
        delete child;
    interfaces_.clear();
    closeProducer();
}

void GenTLLibrary::initLibrary(const std::string &path)
{
    path_ = path;
    if (!gentl_) {
        try {
            gentl_ = std::make_shared<GenTL_Interface>(path_);
        } catch (const std::exception &failure) {
            console::printLine("ERROR: Creating the GenTL_Interface instance failed.");
            console::printLine("       Msg: ", failure.what());
            gentl_.reset();
            return;
        }
    }
    const GC_ERROR code = gentl_->GCInitLib();
    if (code != GC_ERR_SUCCESS) {
        console::printLine("ERROR: GCInitLib() failed with code ", code, "!");
        gentl_.reset();
    }
}

void GenTLLibrary::openTL()
{
    if (!gentl_)
        return;
    TL_HANDLE handle = nullptr;
    const GC_ERROR code = gentl_->TLOpen(&handle);
    if (code != GC_ERR_SUCCESS) {
        console::printLine("ERROR: TLOpen() failed with code ", code, "!");
        reportLastError(gentl_);
        return;
    }
    tlHandle_ = handle;
    tlOpen = true;
}

void GenTLLibrary::updateInterfaces(bool openNew, RetiredObjects &retired)
{
    if (!gentl_)
        return;
    if (reconcile(interfaces_, InterfaceLevel{this, gentl_, openNew, roster, retired}) && interfaces_.empty())
        console::printLine("No interfaces detected!");
}

void GenTLLibrary::retire(RetiredObjects &retired)
{
    for (TLInterface *child : interfaces_) {
        child->retire(retired);
        retired.emplace_back(child);
    }
    interfaces_.clear();
    closeProducer();
}

// Ends the session, once: the producer is let go with it.
void GenTLLibrary::closeProducer()
{
    if (!gentl_)
        return;
    if (tlOpen) {
        const GC_ERROR code = gentl_->TLClose(tlHandle_);
        if (code != GC_ERR_SUCCESS)
            reportFailedClose(gentl_, "WARNING: TLClose() failed with code ", code);
    }
    tlHandle_ = nullptr;
    tlOpen = false;
    const GC_ERROR code = gentl_->GCCloseLib();
    if (code != GC_ERR_SUCCESS) {
        gentl_->keepLoaded();
        console::printLine("WARNING: GCCloseLib() failed with code ", code, "!");
    }
    gentl_.reset();
}

std::string GenTLLibrary::vendor() const
{
    if (!gentl_)
        return {};
    INFO_DATATYPE type = INFO_DATATYPE_UNKNOWN;
    std::size_t size = TextBuffer::size();
    GC_ERROR code = gentl_->GCGetInfo(TL_INFO_VENDOR, &type, nullptr, &size);
    if (code != GC_ERR_SUCCESS) {
        console::printLine("WARNING: GCGetInfo(TL_INFO_VENDOR) (size inquiry) failed with code ", code, "!");
        reportLastError(gentl_);
        return {};
    }
    size = std::min(size, LongestVendor);
    std::vector<char> text(size, '\0');
    code = gentl_->GCGetInfo(TL_INFO_VENDOR, &type, text.data(), &size);
    if (code != GC_ERR_SUCCESS) {
        console::printLine("WARNING: GCGetInfo(TL_INFO_VENDOR) failed with code ", code, "!");
        reportLastError(gentl_);
        return {};
    }
    if (type != INFO_DATATYPE_STRING) {
        console::printLine("WARNING: GCGetInfo(TL_INFO_VENDOR) delivered an unexpected data type ", type,
                           "!");
        return {};
    }
    return std::string(text.begin(), std::find(text.begin(), text.end(), '\0'));
}

std::string GenTLLibrary::version() const
{
    if (!gentl_)
        return {};
    TextBuffer text;
    INFO_DATATYPE type = INFO_DATATYPE_UNKNOWN;
    std::size_t size = TextBuffer::size();
    const GC_ERROR code = gentl_->GCGetInfo(TL_INFO_VERSION, &type, text.data(), &size);
    if (code != GC_ERR_SUCCESS) {
        console::printLine("WARNING: GCGetInfo(TL_INFO_VERSION) failed with code ", code, "!");
        reportLastError(gentl_);
        return {};
    }
    return std::string(text.text());
}

std::string GenTLLibrary::getGenTLVersionString() const
{
    return gentl_ ? gentl_->getGenTLVersionString() : std::string();
}

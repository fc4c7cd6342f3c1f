// SPDX-License-Identifier: MIT
// Loading a producer: the file, its version, its functions.
#include "GenTL_Interface.h"

#include "FunctionGroups.h"
#include "ModuleFile.h"
#include "Platform.h"

#include <stdexcept>

namespace GenICam_Interfaces {

namespace {

[[noreturn]] void throwFailure(const std::string &what, const std::string &code)
{
    throw std::runtime_error(what + code + ".");
}

/// The minor number up to which the functions of the versions 1.1 to 1.5 are looked up. Only the minor
/// number counts once the major one is not zero, so that a producer of version 2.0 gets none of them. One
/// that does not tell its version is asked for all that came up to 1.4.
std::uint32_t lastResolvedMinor(const GenTL_Interface &gentl)
{
    if (!gentl.genTLVersionKnown())
        return 4;
    return gentl.genTLVersionMajor() == 0 ? 0 : gentl.genTLVersionMinor();
}

} // namespace

GenTL_Interface::GenTL_Interface(const std::string &ctiPath) : ctiPath(ctiPath)
{
    clearLastError();
    load();
}

GenTL_Interface::~GenTL_Interface()
{
    clear(functionsOfStart(*this));
    clear(functionsOf10(*this));
    clear(functionsOf11(*this));
    clear(functionsOf13(*this));
    clear(functionsOf14(*this));
    clear(functionsOf15(*this));
    if (moduleHandle && !staysLoaded)
        platform::releaseModule(moduleHandle);
}

std::string GenTL_Interface::getGenTLVersionString() const
{
    if (!genTLVersionKnown_)
        return "V (query not implemented)";
    return "V" + std::to_string(genTLVersionMajor_) + "." + std::to_string(genTLVersionMinor_);
}

// A failure leaves the module loaded on purpose: a producer that failed half-way may have threads running
// in it, and pulling its code away from under them would end the process.
void GenTL_Interface::load()
{
    std::string fault = platform::moduleFileFault(ctiPath);
    if (fault.empty()) {
        moduleHandle = platform::loadModule(ctiPath);
        if (!moduleHandle)
            fault = platform::lastError();
    }
    if (!moduleHandle)
        throwFailure("Loading cti " + ctiPath + " failed! Code: ", fault);
    require(functionsOfStart(*this));
    queryVersion();
    resolve(functionsOf10(*this));
    resolveLaterGroups();
}

// The library is initialised for the version query alone; the owner initialises it anew for its own use.
void GenTL_Interface::queryVersion()
{
    genTLVersionKnown_ = true;
    if (const GC_ERROR code = GCInitLib(); code != GC_ERR_SUCCESS)
        throwFailure("Initializing " + ctiPath + " failed! Code: ", std::to_string(code));
    queryVersionNumber(TL_INFO_GENTL_VER_MAJOR,
                       " for TL_INFO_GENTL_VER_MAJOR failed! Code: ", genTLVersionMajor_);
    queryVersionNumber(TL_INFO_GENTL_VER_MINOR,
                       " for TL_INFO_GENTL_VER_MINOR failed! Code: ", genTLVersionMinor_);
    if (const GC_ERROR code = GCCloseLib(); code != GC_ERR_SUCCESS)
        throwFailure("Closing " + ctiPath + " failed! Code: ", std::to_string(code));
}

void GenTL_Interface::queryVersionNumber(TL_INFO_CMD command, const char *queryFailed, std::uint32_t &number)
{
    INFO_DATATYPE type = INFO_DATATYPE_UNKNOWN;
    std::size_t size = sizeof number;
    const GC_ERROR code = GCGetInfo(command, &type, &number, &size);
    if (code == GC_ERR_SUCCESS)
        return;
    genTLVersionKnown_ = false;
    if (code != GC_ERR_NOT_IMPLEMENTED) {
        GCCloseLib();
        throwFailure("Querying " + ctiPath + queryFailed, std::to_string(code));
    }
    number = 0;
}

void GenTL_Interface::resolveLaterGroups()
{
    const std::uint32_t minor = lastResolvedMinor(*this);
    if (minor >= 1)
        resolve(functionsOf11(*this));
    if (minor >= 3)
        resolve(functionsOf13(*this));
    if (minor >= 4)
        resolve(functionsOf14(*this));
    if (minor >= 5)
        resolve(functionsOf15(*this));
}

template <class Function>
bool GenTL_Interface::getFunction(Function &function)
{
    const platform::Function address = platform::findFunction(moduleHandle, function.name());
    if (!address)
        return false;
    function.entry = reinterpret_cast<decltype(function.entry)>(address);
    return true;
}

template <class Group>
void GenTL_Interface::require(const Group &group)
{
    const auto requireOne = [&](auto &function) {
        if (getFunction(function))
            return;
        const std::string code = platform::lastError();
        throw std::runtime_error(std::string("Computing address for function ") + function.name() +
                                 " of cti " + ctiPath + " failed! Code: " + code +
                                 ". Cti claims to support GenTL " + getGenTLVersionString() + ".");
    };
    std::apply([&](auto &...functions) { (requireOne(functions), ...); }, group);
}

template <class Group>
void GenTL_Interface::resolve(const Group &group)
{
    if (genTLVersionKnown_) {
        require(group);
        return;
    }
    const auto resolveOne = [&](auto &function) {
        if (!getFunction(function))
            function.setAbsent();
    };
    std::apply([&](auto &...functions) { (resolveOne(functions), ...); }, group);
}

template <class Group>
void GenTL_Interface::clear(const Group &group)
{
    std::apply([](auto &...functions) { ((functions.entry = nullptr), ...); }, group);
}

} // namespace GenICam_Interfaces

// SPDX-License-Identifier: MIT
// The way from a port to its node map: where the description lies, its bytes, the node map, the connection.
#include "GenTL_Interface.h"
#include "GenTL_PortInterface.h"
#include "GenericException.h"
#include "ProducerText.h"
#include "ZeroedBuffer.h"
#include "gcstring.h"

#include <algorithm>
#include <array>
#include <stdexcept>

namespace GenICam_Interfaces {

namespace {

std::string fetchingFailed(const char *start, const std::string &url)
{
    return start + url + "' failed also.";
}

/// \throws std::runtime_error  \p step has thrown an exception of the node map, whose words it has
template <class Step>
void loadFrom(bool isZipped, const Step &step)
{
    try {
        step();
    } catch (const GenICam_3_2_TVN::GenericException &failure) {
        const std::string what = isZipped ? "Loading xml from zip file failed by GenICam exception. Msg: "
                                          : "Loading xml from string data failed by GenICam exception. Msg: ";
        throw std::runtime_error(what + failure.GetDescription());
    }
}

} // namespace

void GenTL_PortInterface::loadDescription()
{
    requirePortURLs();
    const DescriptionFile file = findDescription();
    // Before its length, which the producer dictates, costs anything.
    loadFrom(file.isZipped(), [&] { GenApi_3_2_TVN::requireDescriptionSize(file.length); });

    const ZeroedBuffer xmlBuffer(file.length);
    std::size_t readSize = file.length;
    const GC_ERROR code = genTLInterface->GCReadPort(portHandle, file.address, xmlBuffer.data(), &readSize);
    if (code != GC_ERR_SUCCESS)
        reportGenTLError("GCReadPort", code, "");

    // What came back counts, but a producer that claims more than it was asked for is not believed.
    createNodeMap(file, xmlBuffer.data(), std::min(readSize, xmlBuffer.size()));
    connectNodeMap();
}

void GenTL_PortInterface::requirePortURLs() const
{
    const std::uint32_t major = genTLInterface->genTLVersionMajor();
    const bool tooOld = major == 0 || (major == 1 && genTLInterface->genTLVersionMinor() == 0);
    if (genTLInterface->genTLVersionKnown() && tooOld)
        throw std::runtime_error(
            "GenTL_PortInterface requires a GenTL_Interface that supportes at least GenTL version 1.1! "
            "GenTL_Interface reports to support GenTL " +
            genTLInterface->getGenTLVersionString() + ".");
}

GenTL_PortInterface::DescriptionFile GenTL_PortInterface::findDescription() const
{
    DescriptionFile file;
    findURL(file);
    findScheme(file);
    findAddress(file);
    findLength(file);
    findFileName(file);

    // A URL that says local overrules a producer that answers otherwise.
    if (file.scheme != URL_SCHEME_LOCAL &&
        (!getSchemeFromURL(file.url, file.scheme) || file.scheme != URL_SCHEME_LOCAL))
        throw std::runtime_error("URL scheme " + std::to_string(file.scheme) + " not supported.");
    if (file.length == 0 || file.fileName.empty())
        throw std::runtime_error("The GenTL reports invalid URL port information: XML file size: " +
                                 std::to_string(file.length) + ", XML file name: '" + file.fileName + "'.");
    return file;
}

void GenTL_PortInterface::findURL(DescriptionFile &file) const
{
    std::array<char, 512> url{};
    const GC_ERROR code = queryURLInfo(URL_INFO_URL, INFO_DATATYPE_STRING, url.data(), url.size());
    if (code != GC_ERR_SUCCESS)
        reportURLInfoError("URL_INFO_URL", code, "");
    file.url = producerText(url.data(), url.size());
}

void GenTL_PortInterface::findScheme(DescriptionFile &file) const
{
    const GC_ERROR code =
        queryURLInfo(URL_INFO_SCHEME, INFO_DATATYPE_INT32, &file.scheme, sizeof file.scheme);
    if (code != GC_ERR_SUCCESS && !getSchemeFromURL(file.url, file.scheme))
        reportURLInfoError("URL_INFO_SCHEME", code, "Fetching the scheme from the URL string failed also.");
}

void GenTL_PortInterface::findAddress(DescriptionFile &file) const
{
    const GC_ERROR code = queryURLInfo(URL_INFO_FILE_REGISTER_ADDRESS, INFO_DATATYPE_UINT64, &file.address,
                                       sizeof file.address);
    if (code != GC_ERR_SUCCESS && !getAddressFromURL(file.url, file.address))
        reportURLInfoError("URL_INFO_FILE_REGISTER_ADDRESS", code,
                           fetchingFailed("Fetching the address from the URL string '", file.url));
}

void GenTL_PortInterface::findLength(DescriptionFile &file) const
{
    const GC_ERROR code =
        queryURLInfo(URL_INFO_FILE_SIZE, INFO_DATATYPE_UINT64, &file.length, sizeof file.length);
    if (code != GC_ERR_SUCCESS && !getLengthFromURL(file.url, file.length))
        reportURLInfoError("URL_INFO_FILE_SIZE", code,
                           fetchingFailed("Fetching the length from the URL string '", file.url));
}

void GenTL_PortInterface::findFileName(DescriptionFile &file) const
{
    std::array<char, 256> name{};
    const GC_ERROR code = queryURLInfo(URL_INFO_FILENAME, INFO_DATATYPE_STRING, name.data(), name.size());
    if (code == GC_ERR_SUCCESS) {
        file.fileName = producerText(name.data(), name.size());
        return;
    }
    if (!getFileNameFromURL(file.url, file.fileName) || file.fileName.size() >= name.size())
        reportURLInfoError("URL_INFO_FILENAME", code,
                           fetchingFailed("Fetching the filename from the URL string '", file.url));
}

void GenTL_PortInterface::createNodeMap(const DescriptionFile &file, const char *xml, std::size_t size)
{
    loadFrom(file.isZipped(), [&] {
        if (file.isZipped())
            nodeMapRef._LoadXMLFromZIPData(xml, size);
        else
            nodeMapRef._LoadXMLFromString(GenICam_3_2_TVN::gcstring(xml, size));
    });
}

void GenTL_PortInterface::connectNodeMap()
{
    const std::string portName = getPortName();
    if (!nodeMapRef._Connect(this, GenICam_3_2_TVN::gcstring(portName.c_str())))
        throw std::runtime_error("Connecting NodeMapRef with port failed!");
}

GC_ERROR GenTL_PortInterface::queryURLInfo(URL_INFO_CMD command, INFO_DATATYPE type, void *buffer,
                                           std::size_t size) const
{
    return genTLInterface->GCGetPortURLInfo(portHandle, urlIndex, command, &type, buffer, &size);
}

void GenTL_PortInterface::reportURLInfoError(std::string_view command, GC_ERROR code,
                                             std::string_view detail) const
{
    reportGenTLError("GCGetPortURLInfo(" + std::to_string(urlIndex) + "," + std::string(command) + ")", code,
                     detail);
}

} // namespace GenICam_Interfaces

// SPDX-License-Identifier: MIT
// A GenTL port with the node map of its device: the constructor finds the device's description (an XML file
// in its registers, plain or zipped), reads it in one piece, has a node map made of it and connects that to
// the port. From then on the device's features are reached by name.
//
// Only a description in the device's own register space works; one at a web address or in a file of the
// host is refused. Threads: as for the base.
#pragma once

#include "CNodeMapRef.h"
#include "GenTL_PortInterfaceBase.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace GenICam_Interfaces {

class GenTL_PortInterface : public GenTL_PortInterfaceBase
{
public:
    /// Reads the description and connects the node map; all of it or nothing.
    /// \param urlIndex  which of the port's descriptions to take, 0 for the first; no other is tried
    /// \throws std::runtime_error  the port does not answer, the description can't be found, read or used, is stated to
    ///         be larger than the node map takes, or has no port of this port's name
    /// \throws GenICam_3_2_TVN::GenericException  connecting the node map failed
    GenTL_PortInterface(const PORT_HANDLE &portHandle, std::shared_ptr<GenTL_Interface> genTLInterface,
                        std::uint32_t urlIndex);

    /// The same over a producer that the caller keeps alive for as long as this object lives.
    GenTL_PortInterface(const PORT_HANDLE &portHandle, GenTL_Interface *genTLInterface,
                        std::uint32_t urlIndex);

    GenTL_PortInterface(const GenTL_PortInterface &) = delete;
    GenTL_PortInterface &operator=(const GenTL_PortInterface &) = delete;

    /// Ends the node map before the share of the producer, which may unload it.
    ~GenTL_PortInterface() override;

    /// Looks a feature of the device up.
    /// \return the node, which lives as long as this object, or null if there is none of that name
    [[nodiscard]] GenApi_3_2_TVN::INode *getNode(const std::string &name) const;

private:
    /// Where the device keeps its description.
    struct DescriptionFile
    {
        std::string url;
        std::int32_t scheme = -1; ///< a URL_SCHEME_LIST number
        std::uint64_t address = 0;
        std::uint64_t length = 0; ///< bytes
        std::string fileName;

        [[nodiscard]] bool isZipped() const { return fileName.find(".zip") != std::string::npos; }
    };

    void loadDescription();
    void requirePortURLs() const;
    [[nodiscard]] DescriptionFile findDescription() const;
    void findURL(DescriptionFile &file) const;
    void findScheme(DescriptionFile &file) const;
    void findAddress(DescriptionFile &file) const;
    void findLength(DescriptionFile &file) const;
    void findFileName(DescriptionFile &file) const;
    void createNodeMap(const DescriptionFile &file, const char *xml, std::size_t size);
    void connectNodeMap();

    [[nodiscard]] GC_ERROR queryURLInfo(URL_INFO_CMD command, INFO_DATATYPE type, void *buffer,
                                        std::size_t size) const;
    [[noreturn]] void reportURLInfoError(std::string_view command, GC_ERROR code,
                                         std::string_view detail) const;

    // What a URL tells by itself, for producers that do not answer the query. False, and the output
    // untouched, if the text does not yield the value.
    static bool getSchemeFromURL(const std::string &url, std::int32_t &scheme);
    static bool getAddressFromURL(const std::string &url, std::uint64_t &address);
    static bool getLengthFromURL(const std::string &url, std::uint64_t &length);
    static bool getFileNameFromURL(const std::string &url, std::string &fileName);
    static std::vector<std::string> splitByChar(const std::string &text, char delimiter);

    std::uint32_t urlIndex;

public:
    /// The device's node map, connected to this port. Its device name is "Device".
    GenApi_3_2_TVN::CNodeMapRef nodeMapRef;
};

} // namespace GenICam_Interfaces

// SPDX-License-Identifier: MIT
// From the bytes of a description to a node map. Equal descriptions are parsed once in a process and shared.
#pragma once

#include "INodeMap.h"
#include "gcstring.h"

#include <cstddef>
#include <cstdint>
#include <memory>

namespace GenApi_3_2_TVN {

class Description;

enum EContentType_t : int
{
    ContentType_Xml = 0,
    ContentType_ZippedXml = 1 ///< a zip archive with one XML file in it
};

enum ECacheUsage_t : int
{
    CacheUsage_Automatic = 0, ///< share the description with other loads of the same bytes
    CacheUsage_Ignore = 1     ///< parse a copy of its own
};

/// Bytes of a description, plain or unpacked, and of an archive. Real ones reach 5 MB; parsed, a byte costs up to thirty.
inline constexpr std::size_t largestDescription = std::size_t{32} << 20;

/// For whoever knows the length of a description before its bytes: refuses one that could not be loaded.
/// \throws InvalidArgumentException  \p size passes largestDescription
void requireDescriptionSize(std::uint64_t size);

/// Holds one parsed description and makes node maps of it. Factories may be used on several threads at once,
/// each on one.
class CNodeMapFactory
{
public:
    /// A factory without a description, which can only tell the schema versions.
    CNodeMapFactory();

    /// Parses the description, or finds it among those in use. A byte-order mark before it and zero bytes
    /// behind it are passed over. The bytes are not referred to afterwards.
    /// \param size           bytes at \p data
    /// \param parseFormulas  refuse a description with a faulty formula here, not at the formula's first use
    /// \throws GenericException  the bytes are no description; the text says what is wrong and where
    CNodeMapFactory(EContentType_t contentType, const void *data, std::size_t size,
                    ECacheUsage_t cacheUsage = CacheUsage_Automatic, bool parseFormulas = false);
    ~CNodeMapFactory();

    CNodeMapFactory(const CNodeMapFactory &) = delete;
    CNodeMapFactory &operator=(const CNodeMapFactory &) = delete;

    /// \param enableCaching  see INodeMap::EnableCaching
    /// \return the new node map, the caller's, who ends it through IDestroy; it outlives the factory
    /// \throws LogicalErrorException  the factory has no description
    INodeMap *CreateNodeMap(const GenICam_3_2_TVN::gcstring &deviceName, bool enableCaching = true);

    /// Fills \p versions with the versions of the description format that the layer reads, as "major.minor".
    void GetSupportedSchemaVersions(GenICam_3_2_TVN::gcstring_vector &versions) const;

private:
    std::shared_ptr<const Description> description;
};

} // namespace GenApi_3_2_TVN

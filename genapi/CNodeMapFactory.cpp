// SPDX-License-Identifier: MIT
// See the header.
#include "CNodeMapFactory.h"

#include "DescriptionCache.h"
#include "NodeMap.h"
#include "Raise.h"

#include <string_view>

namespace GenApi_3_2_TVN {
namespace {

constexpr const char *sourceFileName = "GenApi/NodeMapFactory";

void requireFormulas(const std::shared_ptr<const Description> &description)
{
    GenICam_3_2_TVN::gcstring_vector errors;
    if (!NodeMap{description, "Device", true}.ParseSwissKnifes(&errors))
        raise<GenICam_3_2_TVN::PropertyException>(sourceFileName, errors.front().c_str());
}

} // namespace

void requireDescriptionSize(std::uint64_t size)
{
    if (size > largestDescription)
        raise<GenICam_3_2_TVN::InvalidArgumentException>(
            sourceFileName,
            "The description is larger than " + std::to_string(largestDescription >> 20) + " MiB");
}

CNodeMapFactory::CNodeMapFactory() = default;
CNodeMapFactory::~CNodeMapFactory() = default;

CNodeMapFactory::CNodeMapFactory(EContentType_t contentType, const void *data, std::size_t size,
                                 ECacheUsage_t cacheUsage, bool parseFormulas)
{
    const std::string_view source{static_cast<const char *>(data), data != nullptr ? size : 0};
    description = cacheUsage == CacheUsage_Ignore ? std::make_shared<const Description>(contentType, source)
                                                  : sharedDescription(contentType, source);
    if (parseFormulas)
        requireFormulas(description);
}

INodeMap *CNodeMapFactory::CreateNodeMap(const GenICam_3_2_TVN::gcstring &deviceName, bool enableCaching)
{
    if (description == nullptr)
        raise<GenICam_3_2_TVN::LogicalErrorException>(sourceFileName, "The factory has no description");
    return new NodeMap(description, deviceName, enableCaching);
}

void CNodeMapFactory::GetSupportedSchemaVersions(GenICam_3_2_TVN::gcstring_vector &versions) const
{
    versions = {"1.0", "1.1"};
}

} // namespace GenApi_3_2_TVN

// SPDX-License-Identifier: MIT
// See the header. Parsing happens outside the lock, and so does the comparison that finds a description in
// use. Only a new one is compared under it, with those of its size.
#include "DescriptionCache.h"

#include <cstddef>
#include <mutex>
#include <vector>

namespace GenApi_3_2_TVN {
namespace {

class DescriptionCache
{
public:
    std::shared_ptr<const Description> find(EContentType_t contentType, std::string_view source)
    {
        for (const auto &candidate : candidates(source.size())) {
            if (candidate->isMadeOf(contentType, source))
                return candidate;
        }
        return nullptr;
    }

    /// Adds \p made, or answers the equal one that another thread has added meanwhile.
    std::shared_ptr<const Description> add(std::shared_ptr<const Description> made,
                                           EContentType_t contentType, std::string_view source)
    {
        const std::lock_guard lock{mutex};
        std::erase_if(entries, [](const Entry &entry) { return entry.description.expired(); });
        for (const Entry &entry : entries) {
            if (entry.sourceSize != source.size())
                continue;
            auto other = entry.description.lock();
            if (other != nullptr && other->isMadeOf(contentType, source))
                return other;
        }
        entries.push_back({source.size(), made});
        return made;
    }

private:
    struct Entry
    {
        std::size_t sourceSize;
        std::weak_ptr<const Description> description;
    };

    std::vector<std::shared_ptr<const Description>> candidates(std::size_t sourceSize)
    {
        std::vector<std::shared_ptr<const Description>> found;
        const std::lock_guard lock{mutex};
        for (const Entry &entry : entries) {
            if (entry.sourceSize != sourceSize)
                continue;
            if (auto description = entry.description.lock())
                found.push_back(std::move(description));
        }
        return found;
    }

    std::mutex mutex;
    std::vector<Entry> entries; // guarded by mutex
};

} // namespace

std::shared_ptr<const Description> sharedDescription(EContentType_t contentType, std::string_view source)
{
    static DescriptionCache cache;
    if (auto inUse = cache.find(contentType, source))
        return inUse;
    return cache.add(std::make_shared<const Description>(contentType, source), contentType, source);
}

} // namespace GenApi_3_2_TVN

// SPDX-License-Identifier: MIT
// The step that keeps a list of children (a library's interfaces, an interface's devices) as the producer
// reports it: new identifiers get new objects, identifiers that have gone lose theirs, everything else stays
// as it is.
#pragma once

#include "ConsoleIO.h"
#include "GenTL.h"
#include "LastError.h"
#include "TextBuffer.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

/// Which of the known children the producer still reports. In a quiet pass each stands where it stood, so a
/// child is first looked for at its own place; the index by identifier is made when one is not.
template <class Child>
class KnownChildren
{
public:
    explicit KnownChildren(const std::vector<Child *> &children)
        : known(children), reported(children.size(), false)
    {}

    /// Marks the child that has \p identifier. \return false when there is none
    bool markReported(std::size_t place, std::string_view identifier)
    {
        if (place < known.size() && known[place]->identifier() == identifier) {
            reported[place] = true;
            return true;
        }
        if (index.empty()) {
            for (std::size_t i = 0; i < known.size(); ++i)
                index.emplace(known[i]->identifier(), i);
        }
        const auto found = index.find(identifier);
        if (found == index.end())
            return false;
        reported[found->second] = true;
        return true;
    }

    /// The places of the children whose identifier was not reported, ascending.
    std::vector<std::size_t> gone() const
    {
        std::vector<std::size_t> places;
        for (std::size_t i = 0; i < known.size(); ++i) {
            if (!reported[i])
                places.push_back(i);
        }
        if (places.empty())
            return places;
        // A producer may have reported one identifier twice, and now once: all that bear it stay.
        std::unordered_set<std::string_view> present;
        for (std::size_t i = 0; i < known.size(); ++i) {
            if (reported[i])
                present.insert(known[i]->identifier());
        }
        std::erase_if(places, [&](std::size_t i) { return present.contains(known[i]->identifier()); });
        return places;
    }

private:
    const std::vector<Child *> known; // a copy: the list grows meanwhile
    std::vector<bool> reported;
    std::unordered_map<std::string_view, std::size_t> index;
};

/// How long a producer may take to refresh a list, in milliseconds.
inline constexpr std::uint64_t ListRefreshTimeout = 200;

/// Brings \p children up to date.
/// \param level  what differs between the levels:
///     GC_ERROR update(bool8_t *changed, std::uint64_t timeout), GC_ERROR count(std::uint32_t *),
///     GC_ERROR identifier(std::uint32_t index, char *buffer, std::size_t *size): the three GenTL calls;
///     updateFailure, countFailure, identifierFailure: their messages up to the code, or up to the index;
///     clearsEachTime: whether the buffer is cleared before each identifier or only once; gentl;
///     Child *create(std::string id); void destroy(Child *)
/// \return false after a failure, which is printed. The list is then as it was, but for children that were
/// new.
template <class Child, class Level>
bool reconcile(std::vector<Child *> &children, Level &&level)
{
    KnownChildren<Child> known(children);
    const auto failed = [&](std::string_view start, GC_ERROR code) {
        console::printLine(start, code, "!");
        reportLastError(level.gentl);
        return false;
    };

    bool8_t changed = 0; // never looked at: the list is read again every time
    if (const GC_ERROR code = level.update(&changed, ListRefreshTimeout); code != GC_ERR_SUCCESS)
        return failed(level.updateFailure, code);
    std::uint32_t count = 0;
    if (const GC_ERROR code = level.count(&count); code != GC_ERR_SUCCESS)
        return failed(level.countFailure, code);

    TextBuffer buffer;
    for (std::uint32_t i = 0; i < count; ++i) {
        if (level.clearsEachTime)
            buffer.clear();
        std::size_t size = TextBuffer::size();
        if (const GC_ERROR code = level.identifier(i, buffer.data(), &size); code != GC_ERR_SUCCESS)
            return failed(console::compose(level.identifierFailure, i, ") failed with code "), code);
        if (!known.markReported(i, buffer.text()))
            children.push_back(level.create(std::string(buffer.text())));
    }

    const std::vector<std::size_t> gone = known.gone();
    for (auto place = gone.rbegin(); place != gone.rend(); ++place) {
        level.destroy(children[*place]);
        children.erase(children.begin() + static_cast<std::ptrdiff_t>(*place));
    }
    return true;
}

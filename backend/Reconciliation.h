// SPDX-License-Identifier: MIT
// The step that keeps a list of children (a library's interfaces, an interface's devices) as the producer
// reports it: new identifiers get new objects, identifiers that have gone lose theirs, everything else stays
// as it is.
#pragma once

#include "ConsoleIO.h"
#include "GenTL.h"
#include "LastError.h"
#include "RollCall.h"
#include "Roster.h"
#include "TextBuffer.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// How long a producer may take to refresh a list, in milliseconds.
inline constexpr std::uint64_t ListRefreshTimeout = 200;

/// How many children a producer is believed to have. Each becomes an object, and each device is opened once.
inline constexpr std::uint32_t LongestList = 65'536;

/// Brings \p children up to date.
/// \param level  what differs between the levels: GC_ERROR update(bool8_t *changed, std::uint64_t timeout),
///     GC_ERROR count(std::uint32_t *), GC_ERROR identifier(std::uint32_t index, char *buffer, std::size_t
///     *size): the three GenTL calls; updateFailure, countFailure, countRefusal, identifierFailure: their
///     messages up to the code, the count or the index; clearsEachTime: whether the buffer is cleared before
///     each identifier or only once; gentl; roster: a Roster, kept between calls; Child *create(std::string
///     id); void destroy(Child *)
/// \return false after a failure, which is printed. The list is then as it was, but for children that were
///     new.
template <class Child, class Level>
bool reconcile(std::vector<Child *> &children, Level &&level)
{
    if (level.roster.identifiers().size() != children.size())
        level.roster.write(children); // there are new ones, or some have gone
    RollCall<std::string_view> known(level.roster.identifiers());
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
    if (count > LongestList) {
        console::printLine(level.countRefusal, count, ", and no more than ", LongestList, " are believed!");
        return false;
    }

    TextBuffer buffer;
    for (std::uint32_t i = 0; i < count; ++i) {
        if (level.clearsEachTime)
            buffer.clear();
        std::size_t size = TextBuffer::size();
        if (const GC_ERROR code = level.identifier(i, buffer.data(), &size); code != GC_ERR_SUCCESS)
            return failed(console::compose(level.identifierFailure, i, ") failed with code "), code);
        if (!known.answer(buffer))
            children.push_back(level.create(std::string(buffer.text())));
    }

    const std::vector<std::size_t> gone = known.missing();
    if (!gone.empty())
        level.roster.clear(); // as many may have come
    for (std::size_t n = gone.size(); n-- > 0;) {
        const auto place = children.begin() + static_cast<std::ptrdiff_t>(gone[n]);
        level.destroy(*place);
        children.erase(place);
    }
    return true;
}

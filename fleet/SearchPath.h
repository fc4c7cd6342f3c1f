// SPDX-License-Identifier: MIT
// What each entry of GENICAM_GENTL64_PATH is. Most producers that are not found are not found because of it.
#pragma once

#include <string>
#include <vector>

namespace fleet {

enum class EntryState
{
    Ok,
    Missing,
    Unreadable,
    NotAFolder,
    Empty,     // no producer in it
    Separator, // a comma or a blank stands where a separator should
    Quoted,
    Tilde
};

struct SearchEntry
{
    std::string text; ///< as it stands in the variable
    EntryState state = EntryState::Ok;
    std::string advice; ///< a sentence; empty where all is well
};

/// The entries of the variable, in order. Nothing is loaded.
std::vector<SearchEntry> searchEntries();

const char *wordOf(EntryState state);

} // namespace fleet

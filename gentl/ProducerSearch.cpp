// SPDX-License-Identifier: MIT
// The search for producer files. What differs between platforms stands behind Platform.h.
#include "ProducerSearch.h"

#include "Platform.h"

namespace GenICam_Interfaces {

namespace {

constexpr const char *searchVariable = "GENICAM_GENTL64_PATH";
constexpr std::string_view ctiSuffix = ".cti";

/// Bytes; with the joiner, a wildcard and the terminating zero it makes the 260 of the classic longest path.
constexpr std::size_t longestDirectory = 257;

} // namespace

std::vector<std::string> getFilesInDirectory(const std::string &directory)
{
    if (directory.size() > longestDirectory)
        return {};
    return platform::listFiles(directory);
}

std::vector<std::string> findCtiFiles(const std::string &directory)
{
    std::vector<std::string> ctiFiles;
    for (const std::string &name : getFilesInDirectory(directory)) {
        if (endsWith(name, ctiSuffix))
            ctiFiles.push_back(directory + platform::pathJoiner + name);
    }
    return ctiFiles;
}

std::vector<std::string> getGenTLPaths()
{
    std::string paths = platform::environmentVariable(searchVariable);
    for (char &character : paths) {
        if (platform::listSeparators.find(character) != std::string_view::npos)
            character = platform::listSeparators.front();
    }
    return splitString(paths, platform::listSeparators.front(), false);
}

std::string_view getGenTLPathSeparators()
{
    return platform::listSeparators;
}

std::vector<std::string> findCtiFilesInGenTLPaths()
{
    std::vector<std::string> ctiFiles;
    for (const std::string &directory : getGenTLPaths()) {
        const std::vector<std::string> found = findCtiFiles(directory);
        ctiFiles.insert(ctiFiles.end(), found.begin(), found.end());
    }
    return ctiFiles;
}

std::vector<std::string> splitString(std::string_view text, char delimiter, bool keepEmpty)
{
    std::vector<std::string> pieces;
    for (;;) {
        const std::size_t end = text.find(delimiter);
        const std::string_view piece = text.substr(0, end);
        if (keepEmpty || !piece.empty())
            pieces.emplace_back(piece);
        if (end == std::string_view::npos)
            return pieces;
        text.remove_prefix(end + 1);
    }
}

bool endsWith(std::string_view text, std::string_view suffix)
{
    return text.ends_with(suffix);
}

} // namespace GenICam_Interfaces

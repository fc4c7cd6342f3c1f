// SPDX-License-Identifier: MIT
#include "SearchPath.h"

#include "ProducerFiles.h"

#include <QDir>
#include <QFileInfo>
#include <array>
#include <string_view>

namespace fleet {

namespace {

constexpr std::array stateWords{"ok",    "missing",   "unreadable", "not_a_folder",
                                "empty", "separator", "quoted",     "tilde"};

QFileInfo infoOf(std::string_view path)
{
    return QFileInfo(QString::fromUtf8(path.data(), static_cast<int>(path.size())));
}

/// The place of a comma or a blank in \p text that stands between two folders which exist, of two or more.
std::size_t wrongSeparator(std::string_view text)
{
    constexpr std::string_view suspects = ", \t";
    for (std::size_t at = text.find_first_of(suspects); at != std::string_view::npos;
         at = text.find_first_of(suspects, at + 1)) {
        const std::size_t next = text.find_first_not_of(suspects, at);
        if (next == std::string_view::npos || !infoOf(text.substr(0, at)).isDir())
            continue;
        const std::string_view rest = text.substr(next);
        if (infoOf(rest).isDir() || wrongSeparator(rest) != std::string_view::npos)
            return at;
    }
    return std::string_view::npos;
}

SearchEntry judgeMissing(const std::string &text)
{
    if (text.front() == '"' || text.front() == '\'' || text.back() == '"' || text.back() == '\'')
        return {text, EntryState::Quoted, "Take the quotation marks out of the variable's value."};
    if (text.front() == '~')
        return {text, EntryState::Tilde, "Write the home folder out: only a shell knows what ~ is."};
    if (wrongSeparator(text) != std::string_view::npos)
        return {text, EntryState::Separator,
                std::string("Separate the folders by '") + QDir::listSeparator().toLatin1() + "'."};
    return {text, EntryState::Missing, "Mend the folder's name, or install the driver that brings it."};
}

SearchEntry judge(const std::string &text)
{
    const QFileInfo info = infoOf(text);
    if (!info.exists())
        return judgeMissing(text);
    if (!info.isDir())
        return {text, EntryState::NotAFolder, "Name the folder that the file lies in."};
    if (!info.isReadable() || !info.isExecutable())
        return {text, EntryState::Unreadable, "Let this user read the folder."};
    if (producerFilesIn(text).empty())
        return {text, EntryState::Empty, "No file in it ends in .cti: name the folder that has them."};
    return {text, EntryState::Ok, {}};
}

} // namespace

std::vector<SearchEntry> searchEntries()
{
    std::vector<SearchEntry> entries;
    for (const std::string &text : environmentFolders())
        entries.push_back(judge(text));
    return entries;
}

const char *wordOf(EntryState state)
{
    return stateWords.at(static_cast<std::size_t>(state));
}

} // namespace fleet

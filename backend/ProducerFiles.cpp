// SPDX-License-Identifier: MIT
#include "ProducerFiles.h"

#include "ProducerSearch.h"

#include <algorithm>
#include <utility>

std::vector<std::string> environmentFolders()
{
    return GenICam_Interfaces::getGenTLPaths();
}

std::string environmentSeparators()
{
    std::string words;
    for (const char separator : GenICam_Interfaces::getGenTLPathSeparators())
        words += std::string(words.empty() ? "\"" : " or \"") + separator + '"';
    return words;
}

std::vector<std::string> producerFilesIn(const std::string &folder)
{
    return GenICam_Interfaces::findCtiFiles(folder);
}

std::vector<std::string> environmentProducerFiles()
{
    std::vector<std::string> files;
    for (std::string &file : GenICam_Interfaces::findCtiFilesInGenTLPaths()) {
        if (std::ranges::find(files, file) == files.end())
            files.push_back(std::move(file));
    }
    return files;
}

// SPDX-License-Identifier: MIT
// The producers that the environment names, for those who do not search the current folder too.
#pragma once

#include <string>
#include <vector>

/// The entries of GENICAM_GENTL64_PATH, in their order, as they stand there.
std::vector<std::string> environmentFolders();

/// What separates the entries, in words: "\";\"", or with an "or" between several.
std::string environmentSeparators();

/// The .cti files in \p folder, in the order of the file system.
std::vector<std::string> producerFilesIn(const std::string &folder);

/// Those in all of environmentFolders; one that is found twice stands there once.
std::vector<std::string> environmentProducerFiles();

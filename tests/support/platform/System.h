// SPDX-License-Identifier: MIT
// What the tests ask of the operating system beyond the standard library. Each platform has a source of its own.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace testsystem {

/// Sets an environment variable of this process, for the programs and modules that it starts and loads too.
/// \param value  nothing: unset
void setVariable(const std::string &name, const std::optional<std::string> &value);

/// Makes a folder of a name that nobody else has, below the one for temporary files.
/// \throws std::runtime_error  there can be none
std::filesystem::path makeFreshFolder();

/// The bytes of a block of std::malloc, at least those that were asked for.
std::size_t blockSize(void *block);

/// What can be read and has no byte.
extern const char *const nullDevice;

/// The program's own standard output into \p file from now on.
/// \return the one before, for restoreOutput
int divertOutput(std::FILE *file);
void restoreOutput(int before);

/// The same of standard input, which comes from nullDevice.
int emptyInput();
void restoreInput(int before);

/// Makes files in the current folder that are none that a loader may open: one of each kind that there is on this
/// platform, folders among them.
/// \return their names, each with the suffix .cti
std::vector<std::string> makeIrregularFiles();

/// Takes a producer away from a search. Windows keeps the file of a module that is loaded, under another name.
void takeProducerAway(const std::string &file);

/// When a file was changed, in the system's unit.
std::int64_t changeTime(const std::filesystem::path &file);

/// The system's words for a file that is not there, and for the read of a folder.
std::string missingFileWords();
std::string readFolderWords();

/// Makes links in the current folder, one to \p file and one to nowhere, where users may make links.
/// \return their names, each with the suffix .cti
std::vector<std::string> makeLinks(const std::string &file);

/// What separates folders in a list of them: each of these characters.
extern const std::string_view listSeparators;
extern const std::string_view listSeparatorWords; ///< as a help text has them

/// Whether others than the file's owner are kept from it by the file's own rights. Windows leaves that to the folder.
bool isPrivate(const std::filesystem::path &file);

} // namespace testsystem

// SPDX-License-Identifier: MIT
// What the binding asks of the operating system: dynamic libraries, directories, the environment. Each
// platform has a source file of its own; CMake chooses. Nothing else in the tree tells platforms apart.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace GenICam_Interfaces::platform {

/// Stands between a directory and a file's name.
extern const char pathJoiner;

/// The characters that separate the directories of GENICAM_GENTL64_PATH.
extern const std::string_view listSeparators;

/// Any function; to be cast to its real type.
using Function = void (*)();

/// Loads a dynamic library with all that it depends on. A path without a folder means the file in the current
/// directory, although the loader by itself would search elsewhere.
/// \return null on failure; lastError tells why
void *loadModule(const std::string &path);

/// Looks an exported function up: in the module alone on Windows, elsewhere also in the libraries that the
/// module depends on.
/// \return null if \p name is not found there; lastError tells so
Function findFunction(void *module, const char *name);

/// Gives one load of the library up; with the last one it is unmapped.
void releaseModule(void *module);

/// What went wrong in this thread's last call of loadModule or findFunction, in the words of the platform:
/// a number on Windows, elsewhere a text that names the missing file or symbol. To be asked right behind
/// that call.
std::string lastError();

/// The bare names of the regular files of \p directory, links followed, in the order of the enumeration; a link
/// that leads nowhere counts as one. Empty, or cut short, if the directory can't be read.
std::vector<std::string> listFiles(const std::string &directory);

/// A copy of the variable's value, empty if it is not set.
std::string environmentVariable(const char *name);

} // namespace GenICam_Interfaces::platform

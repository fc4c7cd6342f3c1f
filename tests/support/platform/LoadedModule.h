// SPDX-License-Identifier: MIT
// The dynamic loader as the tests use it, and the words in which it refuses. Each platform has a source of its own.
#pragma once

#include <string>

namespace testsystem {

/// Loads a module.
/// \throws std::runtime_error  in the loader's words
void *loadModule(const std::string &path);

/// \return null if the module has no such symbol
void *findSymbol(void *module, const char *name);

void unloadModule(void *module);

/// Whether the module is in this process at present.
bool isLoaded(const std::string &path);

/// A symbol of the program itself, exported for the modules that it loads.
/// \return null if there is none
void *programSymbol(const char *name);

/// What the product is to print as the code of a failed load or look-up.
/// \param path  as the loader was given it
std::string missingFileCode(const std::string &path);
std::string directoryCode(const std::string &path);
std::string missingSymbolCode(const std::string &path, const std::string &symbol);

} // namespace testsystem

// SPDX-License-Identifier: MIT
// Which producer files (.cti) exist right now: in a directory, and in the directories that the environment
// variable GENICAM_GENTL64_PATH names. The functions know nothing of GenTL; whether a file can be loaded
// shows only when GenTL_Interface loads it.
//
// Names are byte strings in the process's narrow encoding, never normalised: a full name is the directory
// as it was given, one joiner (a backslash on Windows, a slash elsewhere) and the file's name, so "."
// yields "./camera.cti" and "/opt/gentl/" yields "/opt/gentl//camera.cti". Lists stay in the order of
// discovery; nothing is sorted and nothing is dropped for being there twice.
//
// No function keeps state, and none throws for a directory or a variable that is missing or unreadable: those
// contribute nothing. Thread: any.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace GenICam_Interfaces {

/// The bare names of the regular files of \p directory, in the order of the enumeration: directories, pipes and devices
/// are dropped. Links are followed; one that leads nowhere stays, so that its load tells of it.
/// A directory string longer than 257 bytes is not searched.
[[nodiscard]] std::vector<std::string> getFilesInDirectory(const std::string &directory);

/// The full names of the files of \p directory whose names end in ".cti", compared byte for byte: "x.CTI"
/// is not a producer, and a file named ".cti" is one.
[[nodiscard]] std::vector<std::string> findCtiFiles(const std::string &directory);

/// The directories that GENICAM_GENTL64_PATH names, in its order. The variable is read anew at each call.
/// They are separated by ';', and outside Windows by ':' too (the GenTL convention there). Blanks and
/// quotation marks are part of a name.
[[nodiscard]] std::vector<std::string> getGenTLPaths();

/// What separates them, each of these characters.
[[nodiscard]] std::string_view getGenTLPathSeparators();

/// The producer files of each directory of getGenTLPaths, one directory behind the other.
[[nodiscard]] std::vector<std::string> findCtiFilesInGenTLPaths();

/// The pieces of \p text between the \p delimiter characters. Empty pieces count only with \p keepEmpty; then
/// there is one piece more than there are delimiters.
[[nodiscard]] std::vector<std::string> splitString(std::string_view text, char delimiter, bool keepEmpty);

/// Whether the last bytes of \p text are \p suffix.
[[nodiscard]] bool endsWith(std::string_view text, std::string_view suffix);

} // namespace GenICam_Interfaces

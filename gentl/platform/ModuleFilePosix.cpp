// SPDX-License-Identifier: MIT
#include "ModuleFile.h"

#include <elf.h>
#include <link.h>

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <limits>
#include <optional>
#include <system_error>

namespace fs = std::filesystem;

namespace GenICam_Interfaces::platform {

namespace {

using Header = ElfW(Ehdr);
using Segment = ElfW(Phdr);

constexpr unsigned char NativeClass = sizeof(void *) == 8 ? ELFCLASS64 : ELFCLASS32;
constexpr unsigned char NativeOrder = std::endian::native == std::endian::little ? ELFDATA2LSB : ELFDATA2MSB;

// An offset that the file itself states may be anything.
std::uint64_t saturatingSum(std::uint64_t first, std::uint64_t second)
{
    const std::uint64_t sum = first + second;
    return sum < first ? std::numeric_limits<std::uint64_t>::max() : sum;
}

template <class Structure>
bool readAt(std::ifstream &file, std::uint64_t offset, Structure &target)
{
    file.seekg(static_cast<std::streamoff>(offset));
    return !file.read(reinterpret_cast<char *>(&target), sizeof target).fail();
}

// How many bytes the file must have for its header, its program headers and the segments that are mapped; nothing when
// it is no module of this machine's kind. What lies within the file is all that is read.
std::optional<std::uint64_t> neededSize(std::ifstream &file, std::uint64_t size)
{
    unsigned char identity[EI_NIDENT]{};
    if (size < sizeof identity || !readAt(file, 0, identity) || std::memcmp(identity, ELFMAG, SELFMAG) != 0 ||
        identity[EI_CLASS] != NativeClass || identity[EI_DATA] != NativeOrder)
        return std::nullopt;
    Header header{};
    if (size < sizeof header)
        return sizeof header;
    if (!readAt(file, 0, header) || header.e_phentsize != sizeof(Segment))
        return std::nullopt;
    std::uint64_t needed = saturatingSum(header.e_phoff, std::uint64_t{header.e_phnum} * sizeof(Segment));
    if (needed > size)
        return needed;
    for (std::uint64_t i = 0; i < header.e_phnum; ++i) {
        Segment segment{};
        if (!readAt(file, header.e_phoff + i * sizeof segment, segment))
            return std::nullopt;
        // One without bytes in the file, of zeroed data alone, may stand behind its end.
        if (segment.p_type == PT_LOAD && segment.p_filesz > 0)
            needed = std::max(needed, saturatingSum(segment.p_offset, segment.p_filesz));
    }
    return needed;
}

std::string truncationFault(const std::string &path)
{
    std::error_code error;
    const std::uint64_t size = fs::file_size(path, error);
    std::ifstream file(path, std::ios::binary);
    if (error || !file)
        return {};
    const std::uint64_t needed = neededSize(file, size).value_or(0);
    if (needed <= size)
        return {};
    return path + ": the file is truncated, it has " + std::to_string(size) + " of at least " +
           std::to_string(needed) + " bytes";
}

} // namespace

std::string moduleFileFault(const std::string &path)
{
    std::error_code error;
    const fs::file_type type = fs::status(path, error).type();
    if (error)
        return {};
    return type == fs::file_type::regular ? truncationFault(path) : path + ": not a regular file";
}

} // namespace GenICam_Interfaces::platform

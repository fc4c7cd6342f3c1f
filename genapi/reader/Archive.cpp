// SPDX-License-Identifier: MIT
// See the header. Neither the sizes nor the counts that an archive states are believed: records are counted in its
// bytes, and the description's bytes as they come out.
#include "Archive.h"

#include "CNodeMapFactory.h"
#include "Limits.h"
#include "Raise.h"

#include <zip.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <memory>
#include <optional>

namespace GenApi_3_2_TVN {
namespace {

// Each file and each end of an archive has a record that begins so.
constexpr std::string_view fileSignature = "PK\1\2";
constexpr std::string_view endSignature = "PK\5\6";

struct DiscardArchive
{
    void operator()(zip_t *archive) const { zip_discard(archive); }
};
struct CloseFile
{
    void operator()(zip_file_t *file) const { zip_fclose(file); }
};
using OpenArchive = std::unique_ptr<zip_t, DiscardArchive>;
using OpenFile = std::unique_ptr<zip_file_t, CloseFile>;

[[noreturn]] void refuse(const std::string &text)
{
    raise<GenICam_3_2_TVN::InvalidArgumentException>("GenApi/Archive", "The zipped description " + text);
}

void requireFew(std::string_view bytes, std::string_view signature, std::size_t most, const char *what)
{
    std::size_t count = 0;
    for (std::size_t place = bytes.find(signature); place != std::string_view::npos;
         place = bytes.find(signature, place + signature.size()))
        if (++count > most)
            refuse("holds more than " + std::to_string(most) + " " + what);
}

/// \p bytes without what stands behind the archive, where memory of cameras is filled up with zeros: libzip looks for
/// the end of an archive in the last 64 KiB only. The record that ends one may itself end with zeros, and with a comment.
std::string_view withoutPadding(std::string_view bytes)
{
    constexpr std::size_t recordLength = 22;
    const std::size_t content = bytes.find_last_not_of('\0') + 1;
    const std::size_t record = bytes.rfind(endSignature, content);
    if (record == std::string_view::npos || bytes.size() - record < recordLength)
        return bytes;
    const auto byteAt = [&](std::size_t place) {
        return std::size_t{static_cast<unsigned char>(bytes[place])};
    };
    const std::size_t comment = byteAt(record + recordLength - 2) + 256 * byteAt(record + recordLength - 1);
    return bytes.substr(0, std::max(content, record + recordLength + comment));
}

OpenArchive openArchive(std::string_view bytes)
{
    zip_error_t error;
    zip_error_init(&error);
    const std::unique_ptr<zip_error_t, void (*)(zip_error_t *)> endError{&error, zip_error_fini};

    zip_source_t *const source = zip_source_buffer_create(bytes.data(), bytes.size(), 0, &error);
    zip_t *const archive = source != nullptr ? zip_open_from_source(source, ZIP_RDONLY, &error) : nullptr;
    if (archive != nullptr)
        return OpenArchive{archive};
    zip_source_free(source);
    refuse(std::string{"can't be opened: "} + zip_error_strerror(&error));
}

bool isXmlName(std::string_view name)
{
    constexpr std::string_view suffix = ".xml";
    return name.size() >= suffix.size() &&
           std::equal(suffix.begin(), suffix.end(), name.end() - suffix.size(), [](char expected, char byte) {
               return expected == std::tolower(static_cast<unsigned char>(byte));
           });
}

/// What macOS packs beside each file.
bool isCompanion(std::string_view name)
{
    const std::size_t slash = name.rfind('/');
    const std::string_view ownName = slash == std::string_view::npos ? name : name.substr(slash + 1);
    return name.starts_with("__MACOSX/") || ownName.starts_with("._");
}

zip_uint64_t findDescription(zip_t *archive)
{
    std::optional<zip_uint64_t> onlyFile;
    std::optional<zip_uint64_t> onlyXml;
    std::size_t files = 0;
    std::size_t xmlFiles = 0;
    const zip_int64_t entries = zip_get_num_entries(archive, 0);
    for (zip_int64_t entry = 0; entry < entries; ++entry) {
        const auto index = static_cast<zip_uint64_t>(entry);
        const char *const name = zip_get_name(archive, index, ZIP_FL_ENC_RAW);
        if (name == nullptr || std::string_view{name}.ends_with('/') || isCompanion(name))
            continue;
        ++files;
        onlyFile = index;
        if (!isXmlName(name))
            continue;
        ++xmlFiles;
        onlyXml = index;
    }
    if (xmlFiles == 1)
        return *onlyXml;
    if (xmlFiles > 1)
        refuse("holds " + std::to_string(xmlFiles) + " XML files where one is expected");
    if (files != 1)
        refuse("holds no XML file");
    return *onlyFile;
}

} // namespace

std::string unpackDescription(std::string_view bytes)
{
    requireFew(bytes, fileSignature, limits::archiveFiles, "files");
    requireFew(bytes, endSignature, limits::archiveEnds, "ends");
    const OpenArchive archive = openArchive(withoutPadding(bytes));
    const zip_uint64_t index = findDescription(archive.get());
    const OpenFile file{zip_fopen_index(archive.get(), index, 0)};
    if (file == nullptr)
        refuse(std::string{"can't be unpacked: "} + zip_strerror(archive.get()));

    std::string description;
    std::array<char, 32768> chunk;
    for (;;) {
        const zip_int64_t count = zip_fread(file.get(), chunk.data(), chunk.size());
        if (count < 0)
            refuse(std::string{"can't be unpacked: "} + zip_file_strerror(file.get()));
        if (count == 0)
            return description;
        if (description.size() + static_cast<std::size_t>(count) > largestDescription)
            refuse("unpacks to more than " + std::to_string(largestDescription >> 20) + " MiB");
        description.append(chunk.data(), static_cast<std::size_t>(count));
    }
}

} // namespace GenApi_3_2_TVN

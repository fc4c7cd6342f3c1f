// SPDX-License-Identifier: MIT
// See the header. Neither the sizes nor the counts that an archive states are believed: records are counted in its
// bytes, and the description's bytes as they come out.
#include "Archive.h"

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

/// Each file and each end of an archive has a record with a signature of its own.
void requireFew(std::string_view bytes, std::string_view signature, std::size_t most, const char *what)
{
    std::size_t count = 0;
    for (std::size_t place = bytes.find(signature); place != std::string_view::npos;
         place = bytes.find(signature, place + signature.size()))
        if (++count > most)
            refuse("holds more than " + std::to_string(most) + " " + what);
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
        if (name == nullptr || std::string_view{name}.ends_with('/'))
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
    requireFew(bytes, "PK\1\2", limits::archiveFiles, "files");
    requireFew(bytes, "PK\5\6", limits::archiveEnds, "ends");
    const OpenArchive archive = openArchive(bytes);
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
        if (description.size() + static_cast<std::size_t>(count) > limits::descriptionSize)
            refuse("unpacks to more than " + std::to_string(limits::descriptionSize >> 20) + " MiB");
        description.append(chunk.data(), static_cast<std::size_t>(count));
    }
}

} // namespace GenApi_3_2_TVN

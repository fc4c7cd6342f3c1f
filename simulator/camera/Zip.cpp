// SPDX-License-Identifier: MIT
#include "Zip.h"

#include <cstdint>

namespace simulator {

namespace {

constexpr std::uint16_t zipVersion = 10; // 1.0 reads stored files
constexpr std::uint16_t dosDate = (2024 - 1980) << 9 | 1 << 5 | 1;

/// The CRC of zip archives: polynomial 0x04c11db7, reflected.
std::uint32_t crc32(std::string_view bytes)
{
    std::uint32_t crc = ~std::uint32_t{0};
    for (const char byte : bytes) {
        crc ^= static_cast<unsigned char>(byte);
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc >> 1) ^ ((crc & 1) ? 0xedb88320 : 0);
    }
    return ~crc;
}

/// Little-endian fields, one after the other.
class Fields
{
public:
    Fields &u16(std::size_t value) { return number(value, 2); }
    Fields &u32(std::size_t value) { return number(value, 4); }
    Fields &bytes(std::string_view value)
    {
        text += value;
        return *this;
    }
    const std::string &str() const { return text; }

private:
    Fields &number(std::size_t value, int size)
    {
        for (int index = 0; index < size; ++index)
            text += static_cast<char>(value >> (8 * index) & 0xff);
        return *this;
    }

    std::string text;
};

/// The fields that a file's own header and its entry in the directory have in common.
std::string commonFields(std::string_view name, std::string_view content)
{
    return Fields()
        .u16(zipVersion)
        .u16(0) // flags
        .u16(0) // stored
        .u16(0) // time
        .u16(dosDate)
        .u32(crc32(content))
        .u32(content.size()) // packed
        .u32(content.size())
        .u16(name.size())
        .u16(0) // no extra field
        .str();
}

} // namespace

std::string zipOf(std::string_view name, std::string_view content)
{
    const std::string common = commonFields(name, content);
    const std::string file = Fields().bytes("PK\3\4").bytes(common).bytes(name).bytes(content).str();
    const std::string directory = Fields()
                                      .bytes("PK\1\2")
                                      .u16(zipVersion)
                                      .bytes(common)
                                      .u16(0) // no comment
                                      .u16(0) // first disk
                                      .u16(0) // internal attributes
                                      .u32(0) // external attributes
                                      .u32(0) // where the file's header stands
                                      .bytes(name)
                                      .str();
    const std::string end = Fields()
                                .bytes("PK\5\6")
                                .u16(0) // this disk
                                .u16(0) // the directory's disk
                                .u16(1) // entries on this disk
                                .u16(1) // entries
                                .u32(directory.size())
                                .u32(file.size())
                                .u16(0) // no comment
                                .str();
    return file + directory + end;
}

} // namespace simulator

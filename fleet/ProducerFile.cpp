// SPDX-License-Identifier: MIT
#include "ProducerFile.h"

#include <QRegularExpression>
#include <array>
#include <cstddef>
#include <fstream>

namespace fleet {

namespace {

constexpr std::array stateWords{"ok",         "no_library", "32_bit", "truncated", "missing_function",
                                "not_loaded", "no_cameras", "failed"};

enum class FileKind
{
    Library64,
    Library32,
    Other
};

// ELF tells its width in the fifth byte; a Windows library tells its machine behind the offset at byte 60.
FileKind kindOf(const std::string &path)
{
    std::array<char, 64> head{};
    std::ifstream file(path, std::ios::binary);
    file.read(head.data(), head.size());
    const std::string_view bytes(head.data(), static_cast<std::size_t>(file.gcount()));
    if (bytes.starts_with("\x7f"
                          "ELF") &&
        bytes.size() > 4)
        return bytes[4] == 1 ? FileKind::Library32 : FileKind::Library64;
    if (!bytes.starts_with("MZ") || bytes.size() < head.size())
        return FileKind::Other;
    const auto byteAt = [&](std::size_t at) {
        return static_cast<std::size_t>(static_cast<unsigned char>(bytes[at]));
    };
    file.seekg(static_cast<std::streamoff>(byteAt(60) | byteAt(61) << 8U | byteAt(62) << 16U));
    std::array<char, 6> signature{};
    file.read(signature.data(), signature.size());
    const bool is32Bit = signature[4] == '\x4c' && signature[5] == '\x01'; // IMAGE_FILE_MACHINE_I386
    return is32Bit ? FileKind::Library32 : FileKind::Library64;
}

ProducerVerdict judgeUnloaded(const Producer &producer)
{
    const QString words = QString::fromStdString(producer.failure ? producer.failure->text : std::string());
    static const QRegularExpression missing(QStringLiteral("Computing address for function (\\w+) of cti"));
    if (const auto match = missing.match(words); match.hasMatch())
        return {ProducerState::MissingFunction, match.captured(1).toStdString(),
                "Its GenTL version promises this function: a newer driver may have it. Tell its maker."};
    if (words.contains(QStringLiteral("truncated")))
        return {ProducerState::Truncated, {}, "Install the driver again: the file was cut short."};
    switch (kindOf(producer.file)) {
    case FileKind::Library32:
        return {ProducerState::OtherBits, {}, "Install the 64-bit driver."};
    case FileKind::Other:
        return {ProducerState::NoLibrary,
                {},
                "The file is no library: install the driver again, or take the file away."};
    case FileKind::Library64:
        break;
    }
    return {
        ProducerState::NotLoaded, {}, "Its reason names what is missing: install that, or the driver again."};
}

} // namespace

ProducerVerdict judgeProducer(const Producer &producer)
{
    if (!producer.isLoaded)
        return judgeUnloaded(producer);
    if (producer.failure)
        return {ProducerState::Failed,
                {},
                "Look whether another program uses the driver, and restart its services."};
    if (producer.cameras == 0)
        return {ProducerState::NoCameras,
                {},
                "Check power and cables, and that the cameras' addresses belong to the networks of the "
                "interfaces."};
    return {};
}

const char *wordOf(ProducerState state)
{
    return stateWords.at(static_cast<std::size_t>(state));
}

} // namespace fleet

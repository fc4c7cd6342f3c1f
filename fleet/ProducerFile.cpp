// SPDX-License-Identifier: MIT
#include "ProducerFile.h"

#include <QByteArray>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QString>
#include <QSysInfo>
#include <QtEndian>
#include <array>
#include <cstddef>
#include <optional>

namespace fleet {

namespace {

constexpr std::array stateWords{"ok",         "no_library", "32_bit", "truncated", "missing_function",
                                "not_loaded", "no_cameras", "failed"};

/// What a library says of itself at its beginning.
struct Library
{
    bool isForWindows = false;
    bool is32Bit = false;
    QString processor; ///< in the words of QSysInfo; empty where it is none that this program is made for
};

Library readElf(const QByteArray &head)
{
    const auto machine = qFromLittleEndian<quint16>(head.constData() + 18); // e_machine
    return {.isForWindows = false,
            .is32Bit = head[4] == 1,                                 // ELFCLASS32
            .processor = machine == 62    ? QStringLiteral("x86_64") // EM_X86_64
                         : machine == 183 ? QStringLiteral("arm64")  // EM_AARCH64
                                          : QString()};
}

// A library of Windows names its machine behind a signature, whose place stands at byte 60.
Library readPortableExecutable(QFile &file, const QByteArray &head)
{
    QByteArray header;
    if (file.seek(qFromLittleEndian<quint32>(head.constData() + 60)))
        header = file.read(6);
    const auto machine = header.size() < 6 ? quint16{0} : qFromLittleEndian<quint16>(header.constData() + 4);
    return {.isForWindows = true,
            .is32Bit = machine == 0x014c,                               // IMAGE_FILE_MACHINE_I386
            .processor = machine == 0x8664   ? QStringLiteral("x86_64") // IMAGE_FILE_MACHINE_AMD64
                         : machine == 0xaa64 ? QStringLiteral("arm64")  // IMAGE_FILE_MACHINE_ARM64
                                             : QString()};
}

std::optional<Library> readLibrary(const std::string &path)
{
    QFile file(QString::fromStdString(path));
    // Opening a named pipe would wait for a writer.
    if (!QFileInfo(file).isFile() || !file.open(QIODevice::ReadOnly))
        return std::nullopt;
    const QByteArray head = file.read(64);
    if (head.startsWith("\x7f"
                        "ELF") &&
        head.size() >= 20)
        return readElf(head);
    if (head.startsWith("MZ") && head.size() == 64)
        return readPortableExecutable(file, head);
    return std::nullopt;
}

// Of Windows' loader the binding has a number alone; other loaders name what they lack in words.
std::string adviceByReason(const QString &reason)
{
    static const QRegularExpression loading(QStringLiteral("Loading cti .* failed! Code: (\\d+)\\.$"),
                                            QRegularExpression::DotMatchesEverythingOption);
    switch (loading.match(reason).captured(1).toInt()) {
    case 5: // ERROR_ACCESS_DENIED
        return "Windows denies access: look at the file's permissions, and whether a virus scanner holds it.";
    case 126: // ERROR_MOD_NOT_FOUND
        return "A library that it needs is missing: install the driver again, with what its maker asks for.";
    case 127: // ERROR_PROC_NOT_FOUND
        return "A library that it needs is there in a wrong version: install the driver again.";
    case 193: // ERROR_BAD_EXE_FORMAT
        return "It, or a library that it needs, is damaged or not 64-bit: install the 64-bit driver again.";
    default:
        return "Its reason names what is missing: install that, or the driver again.";
    }
}

ProducerVerdict judgeFile(const std::string &path, const QString &reason)
{
    const std::optional<Library> library = readLibrary(path);
    if (!library)
        return {ProducerState::NoLibrary,
                {},
                "The file is no library: install the driver again, or take the file away."};
    if (library->isForWindows != (QSysInfo::kernelType() == QLatin1String("winnt")))
        return {ProducerState::NoLibrary,
                {},
                std::string("It is of a driver for ") + (library->isForWindows ? "Windows" : "Linux") +
                    ": install the one for this system."};
    if (library->is32Bit)
        return {ProducerState::OtherBits, {}, "Install the 64-bit driver."};
    const QString native = QSysInfo::buildCpuArchitecture();
    if (!library->processor.isEmpty() && library->processor != native)
        return {ProducerState::NotLoaded,
                {},
                "It is of a driver for " + library->processor.toStdString() + ": install the one for " +
                    native.toStdString() + "."};
    return {ProducerState::NotLoaded, {}, adviceByReason(reason)};
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
    return judgeFile(producer.file, words);
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

// SPDX-License-Identifier: MIT
// The store in a TOML file. Locks stand in a file beside it: number 0 guards the state, and each held camera
// has a number of its own made from its identifier, which the system frees when the holder dies. Passwords
// stand there as hexadecimal bytes, since a password need not be text.
#include "CameraStore.h"
#include "GenTLError.h"
#include "PrivateFile.h"
#include "TableReader.h"

#include <charconv>
#include <chrono>
#include <limits>
#include <sstream>
#include <thread>

namespace simulator {

namespace {

constexpr std::uint64_t stateNumber = 0;

/// FNV-1a of the identifier, within 1 to 2^61.
std::uint64_t numberOfCamera(const std::string &id)
{
    std::uint64_t hash = 0xcbf29ce484222325;
    for (const char byte : id)
        hash = (hash ^ static_cast<unsigned char>(byte)) * 0x100000001b3;
    return 1 + (hash >> 3);
}

std::string toHex(std::string_view bytes)
{
    constexpr char digits[] = "0123456789abcdef";
    std::string result;
    for (const char byte : bytes) {
        result += digits[static_cast<unsigned char>(byte) >> 4];
        result += digits[static_cast<unsigned char>(byte) & 0xf];
    }
    return result;
}

std::string fromHex(TableReader &reader, const char *key)
{
    const std::string digits = reader.requiredText(key);
    std::string bytes;
    for (std::size_t position = 0; position < digits.size(); position += 2) {
        unsigned char byte = 0;
        const char *const begin = digits.data() + position;
        const auto [end, error] =
            std::from_chars(begin, digits.data() + std::min(position + 2, digits.size()), byte, 16);
        if (error != std::errc() || end != begin + 2)
            reader.reject(key, "pairs of hexadecimal digits are expected");
        bytes += static_cast<char>(byte);
    }
    return bytes;
}

CameraState readState(const toml::table &table, const std::string &file, std::string_view id)
{
    constexpr std::int64_t most = std::numeric_limits<std::int64_t>::max();
    TableReader reader(table, file, "camera \"" + std::string(id) + '"');
    CameraState state;
    state.password = fromHex(reader, "password");
    state.isLocked = reader.integer("locked", 0, 0, 1) == 1;
    state.isDefaultPassword = reader.integer("default_password", 0, 0, 1) == 1;
    state.availableAtMs = reader.integer("available_at_ms", 0, 0, most);
    reader.rejectUnknownKeys();
    return state;
}

CameraStates parseStates(const std::string &content, const std::string &file)
{
    const toml::table root = toml::parse(content, file);
    CameraStates states;
    for (const auto &[id, node] : root) {
        if (!node.is_table())
            throw GenTLError(GC_ERR_IO, place(file, node.source()) + "not the state of a camera");
        states[std::string(id.str())] = readState(*node.as_table(), file, id.str());
    }
    return states;
}

std::string formatStates(const CameraStates &states)
{
    toml::table root;
    for (const auto &[id, state] : states)
        root.insert(id, toml::table{{"password", toHex(state.password)},
                                    {"locked", state.isLocked ? 1 : 0},
                                    {"default_password", state.isDefaultPassword ? 1 : 0},
                                    {"available_at_ms", state.availableAtMs}});
    std::ostringstream content;
    content << "# Kept by the simulated cameras: lock states and, in hexadecimal, passwords.\n"
            << root << '\n';
    return content.str();
}

class FileHold : public CameraHold
{
public:
    explicit FileHold(NumberLock lock) : lock(std::move(lock)) {}

private:
    NumberLock lock;
};

class StateFile : public CameraStore
{
public:
    explicit StateFile(std::string path) : path(std::move(path)), lockPath(this->path + ".lock") {}

    // The file is replaced whole, so that a reader needs the lock only where it would be in the way.
    CameraStates load() override
    {
        std::optional<NumberLock> lock;
        if (!canReplaceWhileRead)
            lock.emplace(takeStateLock());
        return read();
    }

    CameraState stateOf(const CameraSettings &settings) override
    {
        return simulator::stateOf(settings, load());
    }

    void update(const CameraSettings &settings, const std::function<bool(CameraState &)> &change) override
    {
        const NumberLock lock = takeStateLock();
        CameraStates states = read();
        CameraState state = simulator::stateOf(settings, states);
        if (!change(state))
            return;
        states[settings.id] = std::move(state);
        replaceFile(path, formatStates(states));
    }

    std::unique_ptr<CameraHold> hold(const std::string &id) override
    {
        std::optional<NumberLock> lock = NumberLock::tryTake(lockPath, numberOfCamera(id));
        return lock ? std::make_unique<FileHold>(std::move(*lock)) : nullptr;
    }

    bool isHeld(const std::string &id) override { return NumberLock::isTaken(lockPath, numberOfCamera(id)); }

private:
    CameraStates read() const
    {
        const std::optional<std::string> content = readFile(path);
        if (!content)
            return {};
        constexpr char wayOut[] = "; delete the state file to start afresh";
        try {
            return parseStates(*content, path);
        } catch (const toml::parse_error &error) {
            throw GenTLError(GC_ERR_IO,
                             place(path, error.source()) + std::string(error.description()) + wayOut);
        } catch (const GenTLError &error) {
            throw GenTLError(GC_ERR_IO, error.what() + std::string(wayOut));
        }
    }

    /// A change takes a moment; a process that was stopped within one must not hang all others.
    NumberLock takeStateLock() const
    {
        constexpr std::chrono::milliseconds pause(1);
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(5);
        do {
            if (std::optional<NumberLock> lock = NumberLock::tryTake(lockPath, stateNumber))
                return std::move(*lock);
            std::this_thread::sleep_for(pause);
        } while (std::chrono::steady_clock::now() < deadline);
        throw GenTLError(GC_ERR_TIMEOUT, path + ": another process has kept it locked for 5 seconds");
    }

    std::string path;
    std::string lockPath;
};

} // namespace

std::unique_ptr<CameraStore> makeStateFile(const std::string &path)
{
    return std::make_unique<StateFile>(path);
}

} // namespace simulator

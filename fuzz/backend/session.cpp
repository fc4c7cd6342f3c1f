// SPDX-License-Identifier: MIT
// Fuzzes what a producer answers in a whole session of the back end. A line of an input is an act of the user, a line
// of standard input for the prompts ("input hunter22"), or a lie of the producer (Liar.h). The session begins with a
// search and a pass and ends with two passes more. What has been opened must be closed in the end.
#include "AccessStatus.h"
#include "BackEnd.h"
#include "Capture.h"
#include "Device.h"
#include "FuzzTarget.h"
#include "GenTLLibrary.h"
#include "GenericException.h"
#include "Liar.h"
#include "LoadedModule.h"
#include "RemoteNode.h"
#include "System.h"
#include "TLInterface.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

/// A length that no memory holds gives null, as it does without the sanitizer; less is enough to try that.
extern "C" const char *__asan_default_options()
{
    return "allocator_may_return_null=1:max_allocation_size_mb=64";
}

namespace {

constexpr int mostActs = 50;

Liar *liar = nullptr;

std::string producer(const std::string &name)
{
    return LIARS "/" + name + "/" + name + ".cti";
}

/// The modules stay mapped, so that a session loads and unloads them cheaply.
bool keepProducers()
{
    for (const char *name : {"full", "old", "bare"})
        testsystem::loadModule(producer(name));
    return true;
}

/// A user, and what the window does for one.
class Session
{
public:
    void search(Words names)
    {
        std::string folders;
        for (std::string_view name = names.next(); !name.empty(); name = names.next())
            folders += LIARS "/" + std::string(name) + ";";
        testsystem::setVariable("GENICAM_GENTL64_PATH", folders);
        backEnd->discoverLibraries(true);
        std::ranges::move(backEnd->takeRetired(), std::back_inserter(vanished));
    }

    /// What vanishes is freed behind the pass after that.
    void pass(Words)
    {
        backEnd->updateDevices();
        std::ranges::move(backEnd->takeRetired(), std::back_inserter(vanished));
        for (const auto &object : announced) {
            if (object.get() == current)
                current = nullptr;
        }
        backEnd->freeRetired(std::exchange(announced, std::exchange(vanished, {})));
    }

    void select(Words number)
    {
        const std::vector<Device *> devices = backEnd->devices();
        const std::uint64_t place = number.nextNumber().value_or(0);
        current = place < devices.size() ? devices[place] : nullptr;
        backEnd->selectDevice(current);
    }

    void close(Words)
    {
        if (current)
            current->close(false);
    }

    void lock(Words) { backEnd->lock(); }
    void unlock(Words password) { backEnd->unlock(std::string(password.next()), false); }
    void change(Words passwords)
    {
        const std::string before(passwords.next());
        backEnd->changePassword(before, std::string(passwords.next()));
    }
    void reset(Words) { backEnd->factoryResetSelected(); }

    void show(Words)
    {
        backEnd->printLibraries();
        backEnd->printDevices(true);
        backEnd->selectedIsLocked();
        backEnd->selectedIsDefaultPassword();
        for (const Device *device : backEnd->devices()) {
            device->displayName();
            device->tlType();
            accessStatusName(device->accessStatus());
        }
    }

    void node(Words name)
    {
        if (!current)
            return;
        try {
            RemoteNode node = current->remoteNode(std::string(name.rest()));
            node.valueAsInteger();
            node.valueAsDouble();
            node.valueAsString();
            node.execute();
            node.setValue(std::int32_t{1});
            node.setValue(std::int64_t{-1});
            node.setValue(1.5);
        } catch (const std::exception &failure) {
            require(*failure.what() != '\0', "an error without words");
        } catch (const GenICam_3_2_TVN::GenericException &failure) {
            require(*failure.GetDescription() != '\0', "an error without words");
        }
    }

    /// What a library tells of itself.
    void library(Words name)
    {
        GenTLLibrary library(producer(std::string(name.next())));
        RetiredObjects retired;
        library.openTL();
        library.updateInterfaces(true, retired);
        library.vendor();
        library.version();
        library.getGenTLVersionString();
        for (const TLInterface *interface : library.interfaces())
            interface->displayName();
    }

    /// The dialogue, with a back end of its own.
    void console(Words presets)
    {
        BackEnd dialogue;
        for (std::string_view key = presets.next(); !key.empty(); key = presets.next()) {
            if (key == "library")
                dialogue.setPresetLibrary(producer(std::string(presets.next())));
            else if (key == "serial")
                dialogue.setPresetSerial(std::string(presets.next()));
            else if (key == "password")
                dialogue.setPresetPassword(std::string(presets.next()));
            else if (key == "new")
                dialogue.setPresetNewPassword(std::string(presets.next()));
            else if (key == "lock")
                dialogue.setPresetLock(true);
            else if (key == "unlock")
                dialogue.setPresetUnlock(true);
            else if (key == "reset")
                dialogue.setPresetFactoryReset(true);
        }
        dialogue.runConsole();
    }

private:
    std::unique_ptr<BackEnd> backEnd = std::make_unique<BackEnd>();
    Device *current = nullptr; // whose panel is shown
    RetiredObjects vanished;
    RetiredObjects announced; // with the pass before
};

using Act = void (Session::*)(Words);
const std::map<std::string_view, Act> acts{
    {"search", &Session::search}, {"pass", &Session::pass},       {"select", &Session::select},
    {"close", &Session::close},   {"lock", &Session::lock},       {"unlock", &Session::unlock},
    {"change", &Session::change}, {"reset", &Session::reset},     {"show", &Session::show},
    {"node", &Session::node},     {"library", &Session::library}, {"console", &Session::console}};

} // namespace

Liar *torvaneFuzzLiar()
{
    return liar;
}

int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    [[maybe_unused]] static const bool isKept = keepProducers();
    Liar theLiar;
    liar = &theLiar;
    std::vector<std::pair<Act, Words>> script{{&Session::search, Words{"full"}}, {&Session::pass, Words{""}}};
    std::string input;
    Words lines{{reinterpret_cast<const char *>(bytes), size}};
    for (std::string_view line = lines.next('\n'); !line.empty(); line = lines.next('\n')) {
        Words words{line};
        const std::string_view word = words.next();
        if (const auto act = acts.find(word); act != acts.end() && script.size() < mostActs)
            script.emplace_back(act->second, words);
        else if (word == "input")
            input.append(words.rest()) += '\n';
        else if (!word.empty() && word.front() < 'a') // the names of GenTL begin with a capital
            theLiar.tell(line);
    }
    script.insert(script.end(), 2, {&Session::pass, Words{""}});
    {
        const FeedInput feed{input};
        Session session;
        for (const auto &[act, words] : script)
            (session.*act)(words);
    }
    theLiar.requireAllClosed();
    return 0;
}

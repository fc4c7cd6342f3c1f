// SPDX-License-Identifier: MIT
// The one object through which a user interface reaches cameras. It keeps a tree of producers, their
// interfaces and their devices in step with what the producers report, a flat list of all devices beside it,
// and one selected device, on which the password operations act. A complete console dialogue stands on the
// same operations.
//
// It speaks to the user by lines on standard output and to its callers by plain results.
//
// Threads: updateDevices, devices and takeRetired run on one thread, the selection and the password
// operations on another one beside them, without a lock. What both touch is atomic, and an object that a pass
// takes out of the tree is closed at once but freed later, see takeRetired. The console dialogue has one
// thread for all.
#pragma once

#include "PasswordCheck.h"
#include "RetiredObjects.h"

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

class Device;
class GenTLLibrary;

class BackEnd
{
public:
    /// The answer of selectIndex for a cancelled question.
    static constexpr std::uint64_t IndexCancelled = ~std::uint64_t{0};

    BackEnd();
    BackEnd(const BackEnd &) = delete;
    BackEnd &operator=(const BackEnd &) = delete;
    /// Closes and frees everything, children first.
    ~BackEnd();

    // The tree (BackEndTree.cpp).

    /// Searches for producer files, loads the new ones and lets go of those that are gone. A producer that
    /// fails is printed and kept without function.
    /// \param searchEnvironment  search the folders of GENICAM_GENTL64_PATH too; all callers pass true
    /// \return false if no producer file was found anywhere; nothing has changed then
    bool discoverLibraries(bool searchEnvironment);

    /// One pass over the tree: follows interfaces and devices that come and go, and probes each new device.
    /// Failures are printed and tried again in the next pass.
    void updateDevices();

    /// A copy of the flat list, in order of first sight. The pointers are good until the objects are freed,
    /// see takeRetired.
    std::vector<Device *> devices() const;

    /// What has vanished from the tree since the last call, closed and switched off. Whoever shows devices on
    /// another thread takes them after each pass and hands them to freeRetired on that thread when it has
    /// learned of the pass after that. What nobody takes is freed at the end of the next pass.
    RetiredObjects takeRetired();

    /// Frees \p objects, and deselects the one that is still selected.
    /// Thread: the one of the selection.
    void freeRetired(RetiredObjects objects);

    /// Ends everything: destroys the tree and frees what has been retired. The flat list and the selection
    /// are left as they are, so this is only for the end of life.
    void closeLibraries();

    // The selected device (BackEndPassword.cpp).

    /// Selects \p device and opens it with control access. It stays selected if that fails.
    void selectDevice(Device *device);
    /// Whether a device is selected that is not open, so that the operations below refuse it.
    bool selectedIsClosed() const;
    /// The lock flag of the selected device; true when none is selected.
    bool selectedIsLocked() const;
    /// Whether the selected device is on its factory password; false when none is selected.
    bool selectedIsDefaultPassword() const;
    /// The passwords that proved themselves on the selected device in this run, oldest first.
    std::vector<std::string> selectedPasswordHistory() const;
    /// In bytes.
    std::uint64_t minPasswordLength() const { return minPasswordLength_; }
    /// In bytes.
    std::uint64_t maxPasswordLength() const { return maxPasswordLength_; }

    // The password operations (BackEndPassword.cpp). Each proves its outcome by reading the lock state back,
    // and prints it. They do nothing when no device is selected, and on one that is not open or has no lock they
    // only print so. Passwords are bytes; an empty one is asked for on standard input, with retries.

    /// \return whether the device reads back as locked
    bool lock();
    /// \param forChange  prove the password whatever the lock's present state
    /// \return the password that opened the lock; empty on any failure, refusal or cancel
    std::string unlock(std::string given, bool forChange);
    /// \return 0: changed and proved. 1: the old password was not proved. 2: the new password did not open
    ///     the lock. -1: nothing was changed (no device to operate, both the same, or cancelled)
    int changePassword(std::string oldPassword, std::string newPassword);
    /// Resets the selected device, drops it from the flat list and deselects it. It stays in the tree until
    /// it vanishes, and comes back to the list when a pass meets it again.
    void factoryResetSelected();

    /// Judges a new password by the rules that the camera is not asked about. Needs a selected device, whose
    /// history is one of them.
    /// \param code  always set
    /// \param message  may be null; set to the user's words when a rule fails
    bool checkNewPassword(const std::string &candidate, PasswordCheck &code, std::string *message) const;

    /// Asks for one password on standard input, in plain text.
    /// \param withRuleCheck  go on asking until the rules pass
    /// \return empty when cancelled, and at the end of the input
    std::string promptPassword(bool withRuleCheck);

    // The console dialogue (BackEndConsole.cpp).

    // Values given in advance; what is not given is asked for.
    void setPresetLibrary(const std::string &path) { presetLibrary = path; }
    void setUnusedPreset(const std::string &text) { unusedPreset = text; }
    void setPresetSerial(const std::string &serial) { presetSerial = serial; }
    void setPresetFactoryReset(bool reset) { presetFactoryReset = reset; }
    void setPresetUnlock(bool unlock) { presetUnlock = unlock; }
    void setPresetLock(bool lock) { presetLock = lock; }
    void setPresetPassword(const std::string &password) { presetPassword = password; }
    void setPresetNewPassword(const std::string &password) { presetNewPassword = password; }

    /// The whole dialogue, from the choice of a device to the menu of operations. Wipes the preset passwords.
    /// \return an exit status: 0 for a finished or cancelled run, 1 for one that could not begin
    int runConsole();
    /// Searches for producers and prints them.
    void listLibraries();
    /// Searches for producers and devices and prints the devices.
    void listDevices();
    void printLibraries() const;
    /// \param numbered  with a number before each device, for selectIndex
    void printDevices(bool numbered) const;

    /// Asks for a number from \p minimum to \p maximum on standard input. With no choice, \p minimum is the
    /// answer.
    /// \return IndexCancelled for "c", for "q" and at the end of the input
    std::uint64_t selectIndex(const std::uint64_t &maximum, const std::uint64_t &minimum);
    /// Asks for one of \p keys on standard input. With no choice, 0 is the answer.
    /// \return the place of the key; at the end of the input that of "q", or 0 without such a key
    std::uint64_t selectOption(std::vector<std::string> keys);

private:
    struct Pass;
    enum class PromptResult
    {
        Entered,
        Cancelled,
        InputEnded
    };

    void editDevices(const std::function<void(std::vector<Device *> &)> &edit);
    bool updateLibrary(GenTLLibrary &library, Pass &pass);
    void meetDevice(Device &device, Pass &pass);
    void followTree(const Pass &pass);
    Device *operableDevice() const;
    PromptResult askPassword(bool withRuleCheck, std::string &password);
    bool askNewPassword(const std::string &oldPassword, std::string &newPassword);
    bool proveNewPassword(Device &device, const std::string &newPassword);
    int runWithDevices();
    std::optional<int> selectConsoleDevice();
    void printSummary(const Device &device) const;
    void runPresets(const Device &device);
    void unlockOnce(const std::string &given);
    void runMenu(Device &device);
    void runMenuEntry(Device &device, std::uint64_t index);

    std::string presetLibrary;
    std::string unusedPreset; // nothing reads it
    std::string presetSerial;
    bool presetFactoryReset = false;
    bool presetUnlock = false;
    bool presetLock = false;
    std::string presetPassword;
    std::string presetNewPassword;
    const std::uint64_t maxUnlockRetries = 3;
    const std::uint64_t minPasswordLength_ = 3;          // bytes
    const std::uint64_t maxPasswordLength_ = 0x7fffffff; // bytes
    std::vector<GenTLLibrary *> libraries;               // owned, in order of creation
    // Replaced as a whole, so that a reader always has a list that stays as it is.
    std::atomic<std::shared_ptr<const std::vector<Device *>>> devices_;
    std::atomic<Device *> selectedDevice = nullptr;
    RetiredObjects retired;
};

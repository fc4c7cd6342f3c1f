// SPDX-License-Identifier: MIT
// The operations of a device that report: a failure is the caller's to judge, and none of them takes it for an answer.
#include "Device.h"
#include "GenTL.h"
#include "GenTL_PortInterface.h"
#include "PasswordRegisters.h"
#include "PortFailure.h"
#include "RegisterFailure.h"

namespace {

template <class Access>
auto reporting(bool isWrite, Access access)
{
    try {
        return access();
    } catch (const GenICam_Interfaces::PortFailure &failure) {
        throw RegisterFailure(failure.what(), failure.code(), isWrite);
    } catch (const std::exception &failure) {
        throw RegisterFailure(failure.what(), GC_ERR_SUCCESS, isWrite);
    }
}

} // namespace

std::int32_t Device::openForReading()
{
    return openForUser(DEVICE_ACCESS_READONLY);
}

std::int32_t Device::openForControl()
{
    return openForUser(DEVICE_ACCESS_CONTROL);
}

bool Device::readLocked() const
{
    return reporting(false, [&] { return readRegister(RegLockState) == LockStateLocked; });
}

bool Device::readFactoryPassword() const
{
    return reporting(false, [&] { return readRegister(RegPasswordState) == PasswordStateDefault; });
}

void Device::sendLock()
{
    reporting(true, [&] { writeRegister(RegCommand, CmdLock); });
}

void Device::sendFactoryReset()
{
    reporting(true, [&] { writeRegister(RegCommand, CmdFactoryReset); });
}

void Device::sendNewPassword(const std::string &newText)
{
    reporting(true, [&] { writePassword(RegNewPassword, newText); });
}

void Device::sendUnlock(const std::string &candidate)
{
    reporting(true, [&] { writePassword(RegUnlockPassword, candidate); });
}

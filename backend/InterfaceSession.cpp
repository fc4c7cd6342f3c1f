// SPDX-License-Identifier: MIT
#include "InterfaceSession.h"

#include "GenTL.h"
#include "GenTL_Interface.h"
#include "LastError.h"

#include <utility>

InterfaceSession::InterfaceSession(std::shared_ptr<GenICam_Interfaces::GenTL_Interface> gentl, void *handle)
    : gentl(std::move(gentl)), handle_(handle)
{}

InterfaceSession::~InterfaceSession()
{
    const GC_ERROR code = gentl->IFClose(handle_);
    if (code != GC_ERR_SUCCESS)
        reportFailedClose(gentl, "WARNING: IFClose() failed with code ", code);
}

// SPDX-License-Identifier: MIT
#include "LastError.h"

#include "ConsoleIO.h"
#include "GenTL.h"
#include "GenTL_Interface.h"
#include "TextBuffer.h"

void reportLastError(std::shared_ptr<GenICam_Interfaces::GenTL_Interface> gentl)
{
    TextBuffer text;
    GC_ERROR lastCode = GC_ERR_SUCCESS;
    std::size_t size = text.size();
    const GC_ERROR code = gentl->GCGetLastError(&lastCode, text.data(), &size);
    if (code != GC_ERR_SUCCESS)
        console::printLine("WARNING: Inquiring last error failed with code ", code, "!");
    else
        console::printLine("         Msg: ", text.text());
}

void reportFailedClose(const std::shared_ptr<GenICam_Interfaces::GenTL_Interface> &gentl, const char *line,
                       GC_ERROR code)
{
    gentl->keepLoaded();
    console::printLine(line, code, "!");
    reportLastError(gentl);
}

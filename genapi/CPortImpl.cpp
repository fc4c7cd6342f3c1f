// SPDX-License-Identifier: MIT
// See the header.
#include "CPortImpl.h"

namespace GenApi_3_2_TVN {

void CPortImpl::SetPortImpl(IPort *port)
{
    m_ptrPort = CPointer<INode>{port};
}

EYesNo CPortImpl::GetSwapEndianess()
{
    return No;
}

void CPortImpl::Replay(IPortWriteList *writeList, bool invalidate)
{
    if (writeList != nullptr)
        writeList->Replay(this);
    if (invalidate && m_ptrPort)
        m_ptrPort->InvalidateNode();
}

} // namespace GenApi_3_2_TVN

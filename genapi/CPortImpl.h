// SPDX-License-Identifier: MIT
// What a port implementation gets for nothing: it keeps its node and replays recorded writes. Reads, writes
// and the access mode are left to the derived class.
#pragma once

#include "CPointer.h"
#include "IPort.h"

namespace GenApi_3_2_TVN {

class CPortImpl : public IPortConstruct, public IPortReplay
{
public:
    /// Keeps the node that \p port is; a port that is no node, or null, leaves none.
    void SetPortImpl(IPort *port) override;
    /// Always No.
    EYesNo GetSwapEndianess() override;
    void Replay(IPortWriteList *writeList, bool invalidate) override;

protected:
    CPointer<INode> m_ptrPort;
};

} // namespace GenApi_3_2_TVN

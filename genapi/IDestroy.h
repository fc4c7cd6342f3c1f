// SPDX-License-Identifier: MIT
// How the owner of a node map ends it: by a dynamic cast from INodeMap.
#pragma once

namespace GenApi_3_2_TVN {

class IDestroy
{
public:
    /// Ends the object and all that it owns; no pointer to it may be used afterwards.
    virtual void Destroy() = 0;

protected:
    ~IDestroy() = default;
};

} // namespace GenApi_3_2_TVN
